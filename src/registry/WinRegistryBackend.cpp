#ifdef _WIN32

#include "registry/WinRegistryBackend.h"

#include <windows.h>

#include <vector>

namespace registry {

namespace {

HKEY RootHandle(std::int32_t root)
{
    // The standard roots are sign-extended 32-bit values, as windows.h defines them.
    return reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(root)));
}

LPCWSTR Wide(const QString& text)
{
    return reinterpret_cast<LPCWSTR>(text.utf16());
}

// A key opened for the given access, closed when it goes out of scope.
class OpenKey {
public:
    OpenKey(std::int32_t root, const QString& section, REGSAM access)
        : opened_(RegOpenKeyExW(RootHandle(root), Wide(section), 0, access, &key_) == ERROR_SUCCESS)
    {
    }
    ~OpenKey()
    {
        if (opened_)
            RegCloseKey(key_);
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;

    explicit operator bool() const { return opened_; }
    HKEY get() const { return key_; }

private:
    HKEY key_ = nullptr;
    bool opened_;
};

// The names that enumerate(index, buffer, length) yields for index 0, 1, ...
// until it reports no more items; nothing when it fails otherwise.
template <typename Enumerate>
std::optional<QStringList> EnumerateNames(DWORD maxLength, Enumerate enumerate)
{
    QStringList names;
    std::vector<wchar_t> buffer(maxLength + 1);
    for (DWORD index = 0;; ++index) {
        DWORD length = static_cast<DWORD>(buffer.size());
        const LSTATUS status = enumerate(index, buffer.data(), &length);
        if (status == ERROR_NO_MORE_ITEMS)
            return names;
        if (status != ERROR_SUCCESS)
            return std::nullopt;
        names.append(QString::fromWCharArray(buffer.data(), static_cast<qsizetype>(length)));
    }
}

} // namespace

bool WinRegistryBackend::KeyExists(std::int32_t root, const QString& section)
{
    return static_cast<bool>(OpenKey(root, section, KEY_READ));
}

bool WinRegistryBackend::CreateKey(std::int32_t root, const QString& section)
{
    HKEY key = nullptr;
    if (RegCreateKeyExW(RootHandle(root), Wide(section), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

bool WinRegistryBackend::DeleteKey(std::int32_t root, const QString& section)
{
    return RegDeleteKeyW(RootHandle(root), Wide(section)) == ERROR_SUCCESS;
}

RegistryBackend::DeleteValueResult WinRegistryBackend::DeleteValue(std::int32_t root,
                                                                   const QString& section,
                                                                   const QString& name)
{
    const OpenKey key(root, section, KEY_SET_VALUE);
    if (!key)
        return DeleteValueResult::KeyNotOpened;
    return RegDeleteValueW(key.get(), Wide(name)) == ERROR_SUCCESS
        ? DeleteValueResult::Deleted
        : DeleteValueResult::ValueNotDeleted;
}

std::optional<RegistryValue> WinRegistryBackend::QueryValue(std::int32_t root, const QString& section,
                                                            const QString& name)
{
    const OpenKey key(root, section, KEY_READ);
    DWORD type = 0;
    DWORD size = 0;
    if (!key || RegQueryValueExW(key.get(), Wide(name), nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
        return std::nullopt;
    QByteArray data(static_cast<qsizetype>(size), '\0');
    if (RegQueryValueExW(key.get(), Wide(name), nullptr, &type,
                         reinterpret_cast<LPBYTE>(data.data()), &size) != ERROR_SUCCESS)
        return std::nullopt;
    data.truncate(static_cast<qsizetype>(size));
    return RegistryValue{static_cast<std::int32_t>(type), data};
}

bool WinRegistryBackend::SetValue(std::int32_t root, const QString& section, const QString& name,
                                  const RegistryValue& value)
{
    const OpenKey key(root, section, KEY_SET_VALUE);
    return key
        && RegSetValueExW(key.get(), Wide(name), 0, static_cast<DWORD>(value.type),
                          reinterpret_cast<const BYTE*>(value.data.constData()),
                          static_cast<DWORD>(value.data.size())) == ERROR_SUCCESS;
}

std::optional<QStringList> WinRegistryBackend::ValueNames(std::int32_t root, const QString& section)
{
    const OpenKey key(root, section, KEY_READ);
    DWORD maxLength = 0;
    if (!key || RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                 nullptr, &maxLength, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
        return std::nullopt;
    return EnumerateNames(maxLength, [&](DWORD index, wchar_t* buffer, DWORD* length) {
        return RegEnumValueW(key.get(), index, buffer, length, nullptr, nullptr, nullptr, nullptr);
    });
}

std::optional<QStringList> WinRegistryBackend::SubkeyNames(std::int32_t root, const QString& section)
{
    const OpenKey key(root, section, KEY_READ);
    DWORD maxLength = 0;
    if (!key || RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, nullptr, &maxLength, nullptr,
                                 nullptr, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
        return std::nullopt;
    return EnumerateNames(maxLength, [&](DWORD index, wchar_t* buffer, DWORD* length) {
        return RegEnumKeyExW(key.get(), index, buffer, length, nullptr, nullptr, nullptr, nullptr);
    });
}

} // namespace registry

#endif
