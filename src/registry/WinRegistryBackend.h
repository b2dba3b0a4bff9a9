#pragma once

#ifdef _WIN32

#include "registry/RegistryBackend.h"

namespace registry {

// The Windows registry, through the wide-character registry functions.
class WinRegistryBackend : public RegistryBackend {
public:
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
};

} // namespace registry

#endif
