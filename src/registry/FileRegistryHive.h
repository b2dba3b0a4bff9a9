#pragma once

#include "registry/RegistryBackend.h"

#include <QJsonObject>

#include <functional>

namespace registry {

// The registry kept in files, for platforms without one: one JSON file per
// root key ("HKEY_LOCAL_MACHINE.json") in one folder. Every operation reads
// the file afresh; every change rewrites it atomically. Key and value names
// are found regardless of case and keep the case they were created with.
//
// A file that cannot be read or parsed makes its root unusable: reads find
// nothing, changes fail and the file is left as it is.
class FileRegistryHive : public RegistryBackend {
public:
    explicit FileRegistryHive(QString folder);

    // $MARELON_REGISTRY_DIR when set, else "Marelon/registry" in the user's
    // configuration folder.
    static QString DefaultFolder();

    const QString& Folder() const { return folder_; }
    QString FilePath(std::int32_t root) const;

    bool KeyExists(std::int32_t root, const QString& section) override;
    bool CreateKey(std::int32_t root, const QString& section) override;
    bool DeleteKey(std::int32_t root, const QString& section) override;
    DeleteValueResult DeleteValue(std::int32_t root, const QString& section,
                                  const QString& name) override;
    std::optional<RegistryValue> QueryValue(std::int32_t root, const QString& section,
                                            const QString& name) override;
    bool SetValue(std::int32_t root, const QString& section, const QString& name,
                  const RegistryValue& value) override;
    std::optional<QStringList> ValueNames(std::int32_t root, const QString& section) override;
    std::optional<QStringList> SubkeyNames(std::int32_t root, const QString& section) override;

private:
    using KeyEdit = std::function<bool(QJsonObject& key)>;

    std::optional<QJsonObject> Load(std::int32_t root) const;
    bool Save(std::int32_t root, const QJsonObject& hive) const;
    std::optional<QJsonObject> FindKey(std::int32_t root, const QString& section) const;
    bool EditKey(std::int32_t root, const QString& section, bool create, const KeyEdit& edit);

    QString folder_;
};

} // namespace registry
