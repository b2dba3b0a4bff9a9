// The add-in module's entry point: the host creates the add-in by its ProgID.
#include "addin/Connect.h"

#include <QtGlobal>
#include <cstring>

extern "C" Q_DECL_EXPORT host::IDTExtensibility2* CreateAddIn(const char* progId)
{
    if (!progId || std::strcmp(progId, "Marelon.Connect") != 0)
        return nullptr;
    return new marelon::Connect;
}
