#include "registry/FileRegistryHive.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>
#include <limits>

// The file of one root key is its top key as a JSON object:
//   { "keys":   { "<subkey>": { "keys": {...}, "values": {...} }, ... },
//     "values": { "<name>": { "type": 4, "number": 1 }, ... } }
// A value keeps its type and its data: "text" for a text type, "number" for a
// 32-bit integer type, else "bytes" in hexadecimal.

namespace registry {

namespace {

const QString kKeys = QStringLiteral("keys");
const QString kValues = QStringLiteral("values");
const QString kType = QStringLiteral("type");
const QString kText = QStringLiteral("text");
const QString kNumber = QStringLiteral("number");
const QString kBytes = QStringLiteral("bytes");

bool IsTextType(std::int32_t type)
{
    return type == kRegSz || type == kRegExpandSz || type == kRegMultiSz;
}

bool IsDwordType(std::int32_t type)
{
    return type == kRegDword || type == kRegDwordBigEndian;
}

QJsonObject EncodeValue(const RegistryValue& value)
{
    QJsonObject json{{kType, value.type}};
    if (IsTextType(value.type) && TextData(DataText(value.data)) == value.data)
        json.insert(kText, DataText(value.data));
    else if (IsDwordType(value.type) && value.data.size() == 4)
        json.insert(kNumber, static_cast<double>(DwordNumber(value)));
    else
        json.insert(kBytes, QString::fromLatin1(value.data.toHex()));
    return json;
}

bool IsWholeIn(const QJsonValue& json, double low, double high)
{
    const double number = json.toDouble();
    return json.isDouble() && std::floor(number) == number && number >= low && number <= high;
}

bool IsHex(const QString& text)
{
    static const QString digits = QStringLiteral("0123456789abcdefABCDEF");
    return text.size() % 2 == 0
        && std::all_of(text.begin(), text.end(), [](QChar c) { return digits.contains(c); });
}

std::optional<RegistryValue> DecodeValue(const QJsonValue& json)
{
    const QJsonObject object = json.toObject();
    if (!IsWholeIn(object.value(kType), 0, std::numeric_limits<std::int32_t>::max()))
        return std::nullopt;
    RegistryValue value{object.value(kType).toInt(), {}};
    const QJsonValue text = object.value(kText);
    const QJsonValue number = object.value(kNumber);
    const QJsonValue bytes = object.value(kBytes);
    if (IsTextType(value.type) && text.isString()) {
        value.data = TextData(text.toString());
    } else if (IsDwordType(value.type) && IsWholeIn(number, std::numeric_limits<std::int32_t>::min(),
                                                    std::numeric_limits<std::uint32_t>::max())) {
        value = DwordValue(value.type, *DwordBits(static_cast<qlonglong>(number.toDouble())));
    } else if (bytes.isString() && IsHex(bytes.toString())) {
        value.data = QByteArray::fromHex(bytes.toString().toLatin1());
    } else {
        return std::nullopt;
    }
    return value;
}

bool IsValidKey(const QJsonObject& key)
{
    const QJsonValue keys = key.value(kKeys);
    const QJsonValue values = key.value(kValues);
    if ((!keys.isUndefined() && !keys.isObject()) || (!values.isUndefined() && !values.isObject()))
        return false;
    for (const QJsonValue subkey : keys.toObject()) {
        if (!subkey.isObject() || !IsValidKey(subkey.toObject()))
            return false;
    }
    for (const QJsonValue value : values.toObject()) {
        if (!DecodeValue(value))
            return false;
    }
    return true;
}

// The name under which a member is stored, matched regardless of case.
std::optional<QString> StoredName(const QJsonObject& members, const QString& name)
{
    for (auto it = members.begin(); it != members.end(); ++it) {
        if (it.key().compare(name, Qt::CaseInsensitive) == 0)
            return it.key();
    }
    return std::nullopt;
}

QStringList KeyPath(const QString& section)
{
    return section.split(QLatin1Char('\\'), Qt::SkipEmptyParts);
}

// Runs edit on the key at path[from..] below key, creating the missing keys
// when asked; false when a key is missing or the edit fails.
bool EditPath(QJsonObject& key, const QStringList& path, qsizetype from, bool create,
              const std::function<bool(QJsonObject&)>& edit)
{
    if (from == path.size())
        return edit(key);
    QJsonObject subkeys = key.value(kKeys).toObject();
    const std::optional<QString> stored = StoredName(subkeys, path[from]);
    if (!stored && !create)
        return false;
    const QString name = stored.value_or(path[from]);
    QJsonObject subkey = subkeys.value(name).toObject();
    if (!EditPath(subkey, path, from + 1, create, edit))
        return false;
    subkeys.insert(name, subkey);
    key.insert(kKeys, subkeys);
    return true;
}

} // namespace

FileRegistryHive::FileRegistryHive(QString folder)
    : folder_(std::move(folder))
{
}

QString FileRegistryHive::DefaultFolder()
{
    const QString relocated = qEnvironmentVariable("MARELON_REGISTRY_DIR");
    if (!relocated.isEmpty())
        return relocated;
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/Marelon/registry");
}

QString FileRegistryHive::FilePath(std::int32_t root) const
{
    const QString name = RootName(root);
    return name.isEmpty() ? QString() : folder_ + QLatin1Char('/') + name + QStringLiteral(".json");
}

std::optional<QJsonObject> FileRegistryHive::Load(std::int32_t root) const
{
    const QString path = FilePath(root);
    if (path.isEmpty())
        return std::nullopt;
    if (!QFileInfo::exists(path))
        return QJsonObject();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (error.error != QJsonParseError::NoError || !document.isObject()
        || !IsValidKey(document.object()))
        return std::nullopt;
    return document.object();
}

bool FileRegistryHive::Save(std::int32_t root, const QJsonObject& hive) const
{
    if (!QDir().mkpath(folder_))
        return false;
    QSaveFile file(FilePath(root));
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(hive).toJson()) >= 0
        && file.commit();
}

std::optional<QJsonObject> FileRegistryHive::FindKey(std::int32_t root, const QString& section) const
{
    std::optional<QJsonObject> key = Load(root);
    for (const QString& part : KeyPath(section)) {
        if (!key)
            break;
        const QJsonObject subkeys = key->value(kKeys).toObject();
        const std::optional<QString> stored = StoredName(subkeys, part);
        key = stored ? std::optional(subkeys.value(*stored).toObject()) : std::nullopt;
    }
    return key;
}

bool FileRegistryHive::EditKey(std::int32_t root, const QString& section, bool create,
                               const KeyEdit& edit)
{
    std::optional<QJsonObject> hive = Load(root);
    return hive && EditPath(*hive, KeyPath(section), 0, create, edit) && Save(root, *hive);
}

bool FileRegistryHive::KeyExists(std::int32_t root, const QString& section)
{
    return FindKey(root, section).has_value();
}

bool FileRegistryHive::CreateKey(std::int32_t root, const QString& section)
{
    return EditKey(root, section, true, [](QJsonObject&) { return true; });
}

bool FileRegistryHive::DeleteKey(std::int32_t root, const QString& section)
{
    QStringList path = KeyPath(section);
    if (path.isEmpty())
        return false;
    const QString name = path.takeLast();
    return EditKey(root, path.join(QLatin1Char('\\')), false, [&](QJsonObject& parent) {
        QJsonObject subkeys = parent.value(kKeys).toObject();
        const std::optional<QString> stored = StoredName(subkeys, name);
        if (!stored || !subkeys.value(*stored).toObject().value(kKeys).toObject().isEmpty())
            return false;
        subkeys.remove(*stored);
        parent.insert(kKeys, subkeys);
        return true;
    });
}

RegistryBackend::DeleteValueResult FileRegistryHive::DeleteValue(std::int32_t root,
                                                                 const QString& section,
                                                                 const QString& name)
{
    if (!KeyExists(root, section))
        return DeleteValueResult::KeyNotOpened;
    const bool deleted = EditKey(root, section, false, [&](QJsonObject& key) {
        QJsonObject values = key.value(kValues).toObject();
        const std::optional<QString> stored = StoredName(values, name);
        if (!stored)
            return false;
        values.remove(*stored);
        key.insert(kValues, values);
        return true;
    });
    return deleted ? DeleteValueResult::Deleted : DeleteValueResult::ValueNotDeleted;
}

std::optional<RegistryValue> FileRegistryHive::QueryValue(std::int32_t root, const QString& section,
                                                          const QString& name)
{
    const std::optional<QJsonObject> key = FindKey(root, section);
    if (!key)
        return std::nullopt;
    const QJsonObject values = key->value(kValues).toObject();
    const std::optional<QString> stored = StoredName(values, name);
    return stored ? DecodeValue(values.value(*stored)) : std::nullopt;
}

bool FileRegistryHive::SetValue(std::int32_t root, const QString& section, const QString& name,
                                const RegistryValue& value)
{
    return EditKey(root, section, false, [&](QJsonObject& key) {
        QJsonObject values = key.value(kValues).toObject();
        values.insert(StoredName(values, name).value_or(name), EncodeValue(value));
        key.insert(kValues, values);
        return true;
    });
}

std::optional<QStringList> FileRegistryHive::ValueNames(std::int32_t root, const QString& section)
{
    const std::optional<QJsonObject> key = FindKey(root, section);
    return key ? std::optional(key->value(kValues).toObject().keys()) : std::nullopt;
}

std::optional<QStringList> FileRegistryHive::SubkeyNames(std::int32_t root, const QString& section)
{
    const std::optional<QJsonObject> key = FindKey(root, section);
    return key ? std::optional(key->value(kKeys).toObject().keys()) : std::nullopt;
}

} // namespace registry
