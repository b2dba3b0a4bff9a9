#pragma once

#include <QList>
#include <QString>

#include <utility>

namespace marelon {

// The application name under which the add-in keeps all its settings.
inline const QString kAppName = QStringLiteral("Marelon Add-In");

// The per-user application settings: text values addressed by (application,
// section, key). On Windows they live in the registry of the current user
// (HKEY_CURRENT_USER\Software\Marelon\<application>\<section>, value <key>);
// elsewhere, and wherever $MARELON_SETTINGS_DIR is set, in the INI file
// "<application>.ini" of SettingsFolder(), one group per section.

// $MARELON_SETTINGS_DIR when set, else "Marelon" in the user's configuration folder.
QString SettingsFolder();

// Where the application's settings live, as a user would look for them: the
// INI file, or on Windows the registry key.
QString SettingsLocation(const QString& app);

// The stored text, or defaultValue when the key is missing or its value
// cannot be read as text (an unreadable or damaged store included).
QString GetSetting(const QString& app, const QString& section, const QString& key,
                   const QString& defaultValue);

// Stores the text; false when the store cannot be written.
bool SaveSetting(const QString& app, const QString& section, const QString& key,
                 const QString& value);
// Stores several (key, text) values of one section at once, in one write of the store.
bool SaveSettings(const QString& app, const QString& section, const QList<std::pair<QString, QString>>& values);

} // namespace marelon
