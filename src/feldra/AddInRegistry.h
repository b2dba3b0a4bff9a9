#pragma once

#include "registry/RegistryBackend.h"

#include <QList>
#include <QString>

namespace feldra {

// The host's add-in registry: one key per add-in, named by its ProgID, below
// HKEY_LOCAL_MACHINE, "Software\Orvalen\FELDRA\AddIns\<ProgID>", holding the value "Path" (text): the add-in module's file. The add-in may
// keep values of its own under the same key (Marelon's "TovricVersion");
// registering and unregistering leave them alone.
inline const QString kAddInsKey = QStringLiteral("Software\\Orvalen\\FELDRA\\AddIns");
inline const QString kModulePathValue = QStringLiteral("Path");

struct RegisteredAddIn {
    QString progId;
    QString modulePath;
};

// Records the add-in's module (made absolute); false when the registry cannot be written.
bool RegisterAddIn(const QString& progId, const QString& modulePath, registry::RegistryBackend& registry);
bool RegisterAddIn(const QString& progId, const QString& modulePath);

// Removes the module path, and the add-in's key when nothing else is left in it;
// false when the add-in is not registered.
bool UnregisterAddIn(const QString& progId, registry::RegistryBackend& registry);
bool UnregisterAddIn(const QString& progId);

// Every add-in with a module path, in the registry's order.
QList<RegisteredAddIn> RegisteredAddIns(registry::RegistryBackend& registry);

// The add-ins of the user's registry, then those registered for every user of
// the machine (a registry the host only reads, see MachineRegistryFolder)
// that the user's does not name (ProgIDs compared regardless of case). A
// relative module path in the machine's registry is relative to
// executableFolder, the folder of the host's executable, so that an installed
// tree can be moved.
QList<RegisteredAddIn> RegisteredAddIns(registry::RegistryBackend& user, registry::RegistryBackend& machine,
                                        const QString& executableFolder);

} // namespace feldra
