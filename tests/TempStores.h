#pragma once

#include <QTemporaryDir>
#include <QtGlobal>

// Points the settings store, the registry hive and the add-in's per-user data
// folder at folders of a fresh temporary directory for as long as it lives.
class TempStores {
public:
    TempStores()
    {
        qputenv("MARELON_SETTINGS_DIR", SettingsDir().toLocal8Bit());
        qputenv("MARELON_REGISTRY_DIR", RegistryDir().toLocal8Bit());
        qputenv("MARELON_USER_DATA_DIR", UserDataDir().toLocal8Bit());
    }
    ~TempStores()
    {
        qunsetenv("MARELON_SETTINGS_DIR");
        qunsetenv("MARELON_REGISTRY_DIR");
        qunsetenv("MARELON_USER_DATA_DIR");
    }

    QString Path() const { return dir_.path(); }
    QString SettingsDir() const { return dir_.path() + QStringLiteral("/settings"); }
    QString RegistryDir() const { return dir_.path() + QStringLiteral("/registry"); }
    QString UserDataDir() const { return dir_.path() + QStringLiteral("/userdata"); }

private:
    QTemporaryDir dir_;
};
