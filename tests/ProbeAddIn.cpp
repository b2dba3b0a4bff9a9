// A second add-in module for the loader's tests, "Probe.Connect": it does
// nothing but be loaded from a folder of its own.
#include "addin/host/IDTExtensibility2.h"

#include <QtGlobal>
#include <cstring>

namespace {

class ProbeAddIn final : public host::IDTExtensibility2 {
public:
    void OnConnection(std::shared_ptr<host::Application>, int, const QVariant&, QVariantList&) override {}
    void OnDisconnection(int, QVariantList&) override {}
    void OnAddInsUpdate(QVariantList&) override {}
    void OnStartupComplete(QVariantList&) override {}
    void OnBeginShutdown(QVariantList&) override {}
};

} // namespace

extern "C" Q_DECL_EXPORT host::IDTExtensibility2* CreateAddIn(const char* progId)
{
    if (!progId || std::strcmp(progId, "Probe.Connect") != 0)
        return nullptr;
    return new ProbeAddIn;
}
