#include "feldra/app/AddIns.h"

#include "addin/host/HostError.h"
#include "feldra/Host.h"

#include <QFileInfo>

// The add-in registry and loader are their own part of the host; until a build
// carries them the application runs without add-ins.
#if __has_include("feldra/AddInLoader.h")
#include "feldra/AddInLoader.h"
#include "feldra/AddInRegistry.h"
#define FELDRA_HAS_ADDIN_LOADER 1
#else
#define FELDRA_HAS_ADDIN_LOADER 0
#endif

namespace feldra::AddIns {

bool Available() { return FELDRA_HAS_ADDIN_LOADER; }

QString DefaultProgId(const QString& modulePath)
{
    return QFileInfo(modulePath).baseName() + QStringLiteral(".Connect");
}

void Register([[maybe_unused]] const QString& progId, [[maybe_unused]] const QString& modulePath)
{
#if FELDRA_HAS_ADDIN_LOADER
    RegisterAddIn(progId, QFileInfo(modulePath).absoluteFilePath());
#else
    throw host::HostError("AddIns.Register", "This Feldra build has no add-in loader.");
#endif
}

void LoadRegistered([[maybe_unused]] Host& host)
{
#if FELDRA_HAS_ADDIN_LOADER
    LoadRegisteredAddIns(host);
#endif
}

} // namespace feldra::AddIns
