#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>

namespace registry {

// The registry's root keys, by their standard handle values as 32-bit integers.
inline constexpr std::int32_t kHKeyClassesRoot = static_cast<std::int32_t>(0x80000000u);
inline constexpr std::int32_t kHKeyCurrentUser = static_cast<std::int32_t>(0x80000001u);
inline constexpr std::int32_t kHKeyLocalMachine = static_cast<std::int32_t>(0x80000002u);
inline constexpr std::int32_t kHKeyUsers = static_cast<std::int32_t>(0x80000003u);
inline constexpr std::int32_t kHKeyPerformanceData = static_cast<std::int32_t>(0x80000004u);
inline constexpr std::int32_t kHKeyCurrentConfig = static_cast<std::int32_t>(0x80000005u);
inline constexpr std::int32_t kHKeyDynData = static_cast<std::int32_t>(0x80000006u);

// The registry's value types.
inline constexpr std::int32_t kRegNone = 0;
inline constexpr std::int32_t kRegSz = 1;
inline constexpr std::int32_t kRegExpandSz = 2;
inline constexpr std::int32_t kRegBinary = 3;
inline constexpr std::int32_t kRegDword = 4;
inline constexpr std::int32_t kRegDwordBigEndian = 5;
inline constexpr std::int32_t kRegMultiSz = 7;

// The full name of a root key ("HKEY_LOCAL_MACHINE"); empty for a value that is no root.
QString RootName(std::int32_t root);
// A root key by its full or short name ("HKEY_LOCAL_MACHINE", "HKLM"), in any case.
std::optional<std::int32_t> RootFromName(const QString& name);

// One stored value: its type and its bytes, as the registry keeps them.
struct RegistryValue {
    std::int32_t type = kRegNone;
    QByteArray data;
    bool operator==(const RegistryValue&) const = default;
};

// Text as the registry stores it: UTF-16, little-endian, with a terminating zero.
QByteArray TextData(const QString& text);
// The stored text less its terminating zero.
QString DataText(const QByteArray& data);
// A 32-bit integer as the registry stores it: four bytes, little-endian.
QByteArray DwordData(std::uint32_t value);
// The first four stored bytes as a little-endian integer (missing bytes read as zero).
std::uint32_t DataDword(const QByteArray& data);
// The number that a 32-bit integer value of type 4 or 5 (bytes big-endian) stands for.
std::uint32_t DwordNumber(const RegistryValue& value);
// The 32 bits of a number from the signed 32-bit minimum to the unsigned maximum.
std::optional<std::uint32_t> DwordBits(qlonglong number);
// A value of type 4 or 5 that stands for the number.
RegistryValue DwordValue(std::int32_t type, std::uint32_t number);

// The keys and typed values below the root keys. Sections are key paths below
// a root, their parts separated by "\". Every operation reports failure by its
// result and never throws.
class RegistryBackend {
public:
    enum class DeleteValueResult { Deleted, KeyNotOpened, ValueNotDeleted };

    virtual ~RegistryBackend() = default;

    virtual bool KeyExists(std::int32_t root, const QString& section) = 0;
    virtual bool CreateKey(std::int32_t root, const QString& section) = 0;
    // Deletes a key that has no subkeys.
    virtual bool DeleteKey(std::int32_t root, const QString& section) = 0;
    virtual DeleteValueResult DeleteValue(std::int32_t root, const QString& section,
                                          const QString& name) = 0;
    // Nothing when the key or the value is missing or cannot be read.
    virtual std::optional<RegistryValue> QueryValue(std::int32_t root, const QString& section,
                                                    const QString& name) = 0;
    // Stores a value under an existing key.
    virtual bool SetValue(std::int32_t root, const QString& section, const QString& name,
                          const RegistryValue& value) = 0;
    // The names of the key's values and subkeys; nothing when the key cannot be opened.
    virtual std::optional<QStringList> ValueNames(std::int32_t root, const QString& section) = 0;
    virtual std::optional<QStringList> SubkeyNames(std::int32_t root, const QString& section) = 0;
};

// The platform's registry: the Windows registry on Windows, elsewhere the
// file-backed hive in its default folder.
std::shared_ptr<RegistryBackend> DefaultRegistryBackend();

} // namespace registry
