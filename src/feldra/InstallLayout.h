#pragma once

#include <QString>

// Where the host finds its files, from the folder of its own executable, so
// that an installed tree works wherever it was put. Installed, the executable
// lies in <prefix>/bin and the host's files in <prefix>/share/feldra: the
// compiled help (Help/<language>/), the German catalogue (translations/), the
// templates, the example parts, and the add-ins registered for every user of
// the machine (registry/). In a build tree, which has no such folder, the
// executable's own folder holds what the build put there (the help).
namespace feldra {

// The host's install folder ("Application.InstallFolder"), ending with a
// separator: <executableFolder>/../share/feldra/ when it exists, else
// <executableFolder>/.
QString HostInstallFolder(const QString& executableFolder);

// The registry hive of the add-ins registered for every user of the machine:
// "registry" in the host's install folder. Read-only: the package puts it there.
QString MachineRegistryFolder(const QString& executableFolder);

} // namespace feldra
