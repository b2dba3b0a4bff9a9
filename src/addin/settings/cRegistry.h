#pragma once

#include "addin/settings/RegistryError.h"
#include "registry/RegistryBackend.h"

#include <QVariant>

namespace marelon {

// The platform registry's roots, value types and backends.
using namespace ::registry;

// Access to one registry value, or one key, addressed by the properties:
// ClassKey (the root), SectionKey (the key path below it), ValueKey (the value
// name), ValueType and Default. Reading Value never fails: a value that cannot
// be read gives Default. Changes that fail throw RegistryError.
class cRegistry {
public:
    // The platform's registry.
    cRegistry();
    explicit cRegistry(std::shared_ptr<RegistryBackend> backend);

    std::int32_t ClassKey() const { return classKey_; }
    void setClassKey(std::int32_t root) { classKey_ = root; }
    const QString& SectionKey() const { return sectionKey_; }
    void setSectionKey(const QString& section) { sectionKey_ = section; }
    const QString& ValueKey() const { return valueKey_; }
    void setValueKey(const QString& name) { valueKey_ = name; }
    std::int32_t ValueType() const { return valueType_; }
    void setValueType(std::int32_t type) { valueType_ = type; }
    const QVariant& Default() const { return default_; }
    void setDefault(const QVariant& value) { default_ = value; }

    // The addressed value by its stored type, which ValueType takes: text for
    // types 1, 2 (environment references expanded) and 7; a 32-bit integer for
    // type 4 and, byte order reversed, for type 5; bytes for any other type.
    QVariant Value();
    // Creates the section key, then stores by ValueType: for types 1 and 2
    // text as type 1, or as type 2 when it holds a "%name%" reference; for
    // type 3 a byte array (anything else is refused); for types 4 and 5 a
    // 32-bit integer as type 4. For any other type nothing is stored.
    void setValue(const QVariant& value);

    bool KeyExists();
    void CreateKey();
    void DeleteKey();
    void DeleteValue();
    // The names of the section key's values and subkeys; false when the key cannot be opened.
    bool EnumerateValues(QStringList& sKeyNames, int& iKeyCount);
    bool EnumerateSections(QStringList& sSect, int& iSectCount);

private:
    QString Root() const;
    void Store(const RegistryValue& stored, const QVariant& value);
    RegistryError WriteFailure(const QVariant& value) const;

    std::shared_ptr<RegistryBackend> backend_;
    std::int32_t classKey_ = kHKeyCurrentUser;
    QString sectionKey_;
    QString valueKey_;
    std::int32_t valueType_ = kRegSz;
    QVariant default_;
};

// A text with its environment references ("%NAME%") replaced by the
// variables' values; references to unset variables stay as they are.
QString ExpandEnvironmentReferences(const QString& text);

// True when a text holds a "%" followed, at least one character later, by a second "%".
bool HasEnvironmentReference(const QString& text);

} // namespace marelon
