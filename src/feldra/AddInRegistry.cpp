#include "feldra/AddInRegistry.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace feldra {
namespace {

constexpr std::int32_t kRoot = registry::kHKeyLocalMachine;

QString AddInKey(const QString& progId)
{
    return kAddInsKey + QLatin1Char('\\') + progId;
}

} // namespace

bool RegisterAddIn(const QString& progId, const QString& modulePath, registry::RegistryBackend& registry)
{
    if (progId.isEmpty() || progId.contains(QLatin1Char('\\')))
        return false;
    const QString key = AddInKey(progId);
    const QString path = QFileInfo(modulePath).absoluteFilePath();
    return registry.CreateKey(kRoot, key)
           && registry.SetValue(kRoot, key, kModulePathValue, {registry::kRegSz, registry::TextData(path)});
}

bool RegisterAddIn(const QString& progId, const QString& modulePath)
{
    return RegisterAddIn(progId, modulePath, *registry::DefaultRegistryBackend());
}

bool UnregisterAddIn(const QString& progId, registry::RegistryBackend& registry)
{
    const QString key = AddInKey(progId);
    if (registry.DeleteValue(kRoot, key, kModulePathValue) != registry::RegistryBackend::DeleteValueResult::Deleted)
        return false;
    if (registry.ValueNames(kRoot, key).value_or(QStringList{QStringLiteral("?")}).isEmpty()
        && registry.SubkeyNames(kRoot, key).value_or(QStringList{QStringLiteral("?")}).isEmpty())
        registry.DeleteKey(kRoot, key);
    return true;
}

bool UnregisterAddIn(const QString& progId)
{
    return UnregisterAddIn(progId, *registry::DefaultRegistryBackend());
}

QList<RegisteredAddIn> RegisteredAddIns(registry::RegistryBackend& registry)
{
    QList<RegisteredAddIn> addIns;
    for (const QString& progId : registry.SubkeyNames(kRoot, kAddInsKey).value_or(QStringList{})) {
        const auto path = registry.QueryValue(kRoot, AddInKey(progId), kModulePathValue);
        if (path && path->type == registry::kRegSz)
            addIns.append({progId, registry::DataText(path->data)});
    }
    return addIns;
}

QList<RegisteredAddIn> RegisteredAddIns(registry::RegistryBackend& user, registry::RegistryBackend& machine,
                                        const QString& executableFolder)
{
    QList<RegisteredAddIn> addIns = RegisteredAddIns(user);
    const auto named = [&addIns](const QString& progId) {
        for (const RegisteredAddIn& addIn : std::as_const(addIns))
            if (addIn.progId.compare(progId, Qt::CaseInsensitive) == 0)
                return true;
        return false;
    };
    for (RegisteredAddIn addIn : RegisteredAddIns(machine)) {
        if (named(addIn.progId))
            continue;
        addIn.modulePath = QDir::cleanPath(QDir(executableFolder).absoluteFilePath(addIn.modulePath));
        addIns.append(addIn);
    }
    return addIns;
}

} // namespace feldra
