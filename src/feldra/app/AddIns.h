#pragma once

#include <QString>

namespace feldra {

class Host;

// The application's use of the host's add-in registry and loader. Add-in
// modules register under a ProgID; at start the application connects every
// registered add-in.
namespace AddIns {

// False in a build without the add-in loader: registering then fails and
// nothing is loaded.
bool Available();

// The ProgID a module registers under when none is given: "Marelon.Connect"
// for ".../Marelon.so".
QString DefaultProgId(const QString& modulePath);

// Registers the module in the user's add-in registry; throws host::HostError.
void Register(const QString& progId, const QString& modulePath);

// Connects every registered add-in to the host.
void LoadRegistered(Host& host);

} // namespace AddIns
} // namespace feldra
