// The process the interrupted-save test kills: it writes one kind of file in
// a folder, in its old or its new version, through the code the application
// saves with, and kills itself at the step or byte the environment names
// (KillPoints.h). Without a kill point it prints "<steps> <bytes>" of the
// save and exits with 0 when the save succeeded.
//
//   marelon_save_child document|holders|settings|registry <folder> old|new
#include "KillPoints.h"
#include "LargeDocument.h"
#include "addin/settings/SettingsStore.h"
#include "feldra/DocumentFile.h"
#include "registry/FileRegistryHive.h"
#include "tooldata/HolderLibrary.h"

#include <QDir>
#include <QList>
#include <QString>

#include <cstdio>
#include <functional>
#include <utility>

namespace {

// Every version of every kind has the same size of content, give or take:
// the new one differs from the old in every record.
QString text(const char* what, int i, bool newer)
{
    return QStringLiteral("%1 %2 (%3)").arg(QLatin1String(what)).arg(i).arg(newer ? u"new" : u"old");
}

std::function<bool()> documentSave(const QString& folder, bool newer)
{
    feldra::DocumentData document = LargeDocument(1);
    document.title = text("Part", 1, newer);
    if (newer)
        document.tools.removeLast(); // the new one is also shorter
    return [path = folder + QStringLiteral("/part.fdoc"), document] {
        try {
            feldra::SaveDocument(path, document);
            return true;
        } catch (const feldra::DocumentError&) {
            return false;
        }
    };
}

std::function<bool()> holdersSave(const QString& folder, bool newer)
{
    QList<marelon::HolderRecord> records;
    for (int i = 0; i < marelon::kHolderCapacity; ++i)
        records.append({QStringLiteral("GTF%1").arg(3100 + i), text("Gang holder", i, newer),
                        i * 0.01, newer ? 1.25 : 1.5, -0.5, int16_t(i % 3 - 1), 1, 2.5});
    return [path = folder + QStringLiteral("/L5-16-20 ToolHolders.txt"), records] {
        return marelon::WriteHolderFile(path, records);
    };
}

// The Data Page's defaults, a few hundred of them in one write of the store.
std::function<bool()> settingsSave(const QString& folder, bool newer)
{
    qputenv("MARELON_SETTINGS_DIR", folder.toLocal8Bit());
    QList<std::pair<QString, QString>> values;
    for (int i = 0; i < 500; ++i)
        values.append({QStringLiteral("Param%1").arg(800 + i), text("value", i, newer)});
    return [values] { return marelon::SaveSettings(marelon::kAppName, QStringLiteral("DataPage"), values); };
}

// The old hive holds 300 values; the new one changes one of them.
std::function<bool()> registrySave(const QString& folder, bool newer)
{
    auto hive = std::make_shared<registry::FileRegistryHive>(folder);
    const QString section = QStringLiteral("Software\\Marelon\\Marelon Add-In\\DataPage");
    auto set = [hive, section](int i, bool newValue) {
        return hive->SetValue(registry::kHKeyCurrentUser, section, QStringLiteral("Param%1").arg(800 + i),
                              {registry::kRegSz, registry::TextData(text("value", i, newValue))});
    };
    if (newer)
        return [set] { return set(150, true); };
    return [hive, section, set] {
        bool saved = hive->CreateKey(registry::kHKeyCurrentUser, section);
        for (int i = 0; i < 300; ++i)
            saved = saved && set(i, false);
        return saved;
    };
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    const QString kind = QString::fromLocal8Bit(argv[1]);
    const QString folder = QDir(QString::fromLocal8Bit(argv[2])).absolutePath();
    const bool newer = qstrcmp(argv[3], "new") == 0;
    std::function<bool()> save;
    if (kind == u"document")
        save = documentSave(folder, newer);
    else if (kind == u"holders")
        save = holdersSave(folder, newer);
    else if (kind == u"settings")
        save = settingsSave(folder, newer);
    else if (kind == u"registry")
        save = registrySave(folder, newer);
    else
        return 2;
    // Only the old version of the registry is made of many saves: the kill
    // points are those of the new one.
    if (!newer)
        return save() ? 0 : 1;
    killpoints::Arm();
    const bool saved = save();
    const killpoints::Counts counts = killpoints::Disarm();
    std::printf("%lld %lld\n", static_cast<long long>(counts.steps), static_cast<long long>(counts.bytes));
    return saved ? 0 : 1;
}
