#pragma once

#include "addin/host/Fwd.h"

#include <QVariant>
#include <QVariantList>
#include <memory>

namespace host {

// How the host connects an add-in (ConnectMode) and why it disconnects it (RemoveMode).
enum ConnectMode { ext_cm_AfterStartup = 0, ext_cm_Startup = 1, ext_cm_External = 2, ext_cm_CommandLine = 3 };
enum DisconnectMode { ext_dm_HostShutdown = 0, ext_dm_UserClosed = 1 };

// The add-in connection interface: what the host calls on an add-in it has
// loaded. custom is the host's array of extra arguments, by reference.
class IDTExtensibility2 {
public:
    virtual ~IDTExtensibility2() = default;
    virtual void OnConnection(std::shared_ptr<host::Application> Application, int ConnectMode,
                              const QVariant& AddInInst, QVariantList& custom) = 0;
    virtual void OnDisconnection(int RemoveMode, QVariantList& custom) = 0;
    virtual void OnAddInsUpdate(QVariantList& custom) = 0;
    virtual void OnStartupComplete(QVariantList& custom) = 0;
    virtual void OnBeginShutdown(QVariantList& custom) = 0;
};

// The factory that an add-in module exports under this name: a new add-in
// object for the ProgID, or null for a ProgID the module does not create.
// The host owns the object and deletes it before it unloads the module.
using CreateAddInFunction = IDTExtensibility2* (*)(const char* progId);
inline constexpr const char* kCreateAddInSymbol = "CreateAddIn";

} // namespace host
