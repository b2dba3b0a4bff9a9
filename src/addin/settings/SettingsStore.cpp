#include "addin/settings/SettingsStore.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

#include <memory>

namespace marelon {

namespace {

QString EnvironmentFolder()
{
    return qEnvironmentVariable("MARELON_SETTINGS_DIR");
}

std::unique_ptr<QSettings> OpenStore(const QString& app)
{
#ifdef _WIN32
    if (EnvironmentFolder().isEmpty())
        return std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                           QStringLiteral("Marelon"), app);
#endif
    return std::make_unique<QSettings>(SettingsFolder() + QLatin1Char('/') + app + QStringLiteral(".ini"),
                                       QSettings::IniFormat);
}

QString Address(const QString& section, const QString& key)
{
    return section + QLatin1Char('/') + key;
}

} // namespace

QString SettingsFolder()
{
    const QString relocated = EnvironmentFolder();
    if (!relocated.isEmpty())
        return relocated;
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/Marelon");
}

QString SettingsLocation(const QString& app)
{
    return QDir::toNativeSeparators(OpenStore(app)->fileName());
}

QString GetSetting(const QString& app, const QString& section, const QString& key,
                   const QString& defaultValue)
{
    const QVariant value = OpenStore(app)->value(Address(section, key));
    return value.typeId() == QMetaType::QString ? value.toString() : defaultValue;
}

bool SaveSetting(const QString& app, const QString& section, const QString& key,
                 const QString& value)
{
    return SaveSettings(app, section, {{key, value}});
}

bool SaveSettings(const QString& app, const QString& section, const QList<std::pair<QString, QString>>& values)
{
    const std::unique_ptr<QSettings> store = OpenStore(app);
    for (const auto& [key, value] : values)
        store->setValue(Address(section, key), value);
    store->sync();
    // A damaged file reports a format error that outlives the successful
    // rewrite; only an access error or a store that cannot be written fails.
    return store->isWritable() && store->status() != QSettings::AccessError;
}

} // namespace marelon
