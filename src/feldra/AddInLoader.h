#pragma once

#include "addin/host/IDTExtensibility2.h"
#include "feldra/AddInRegistry.h"

#include <QLibrary>
#include <QList>
#include <QString>
#include <memory>

namespace feldra {

class Host;

// Loads add-in modules into a host and connects them (each host has its own,
// Host::AddIns()): the module's exported
// factory creates the add-in for its ProgID, which then receives the
// application as the host shows it to that add-in. A module that cannot be
// loaded, has no factory, does not create the ProgID or fails to connect is
// recorded in the host log (callback "IDTExtensibility2.OnConnection") and
// left unloaded; the host goes on.
class AddInLoader {
public:
    explicit AddInLoader(Host& host) : host_(host) {}
    // Disconnects (host shutting down) and unloads whatever is still loaded.
    ~AddInLoader();
    AddInLoader(const AddInLoader&) = delete;
    AddInLoader& operator=(const AddInLoader&) = delete;

    bool Load(const QString& progId, const QString& modulePath, int connectMode = host::ext_cm_AfterStartup);
    // Loads every add-in of the registry (connect mode: start-up); returns how many connected.
    int LoadRegisteredAddIns(registry::RegistryBackend& registry);
    // The same for the add-ins of the user's registry and those registered for
    // every user of the machine (see RegisteredAddIns).
    int LoadRegisteredAddIns(registry::RegistryBackend& user, registry::RegistryBackend& machine,
                             const QString& executableFolder);
    // The user's registry and the machine's, beside the running executable.
    int LoadRegisteredAddIns();

    // Tells every loaded add-in that the host has finished starting, or begins to shut down.
    void StartupComplete();
    void BeginShutdown();

    // Disconnects the add-in, deletes it and unloads its module; false when it is not loaded.
    bool Unload(const QString& progId, int removeMode = host::ext_dm_UserClosed);
    void UnloadAll(int removeMode = host::ext_dm_HostShutdown);

    // Disconnects every loaded add-in and connects a new one from the same
    // module, as after start-up: it sets itself up again (its localiser in the
    // host's language among all). Returns how many connected again; one that
    // fails is recorded and unloaded.
    int ReconnectAll();

    QStringList LoadedProgIds() const;
    bool IsLoaded(const QString& progId) const;

private:
    struct LoadedAddIn {
        QString progId;
        std::unique_ptr<QLibrary> library;
        std::unique_ptr<host::IDTExtensibility2> addIn;
    };

    // Runs a call into the add-in; a failure is recorded under the callback's name.
    template <class Call>
    bool CallAddIn(const QString& callback, Call call);
    void Release(LoadedAddIn& loaded, int removeMode);
    void Disconnect(LoadedAddIn& loaded, int removeMode);
    bool Connect(LoadedAddIn& loaded, int connectMode);

    Host& host_;
    QList<std::shared_ptr<LoadedAddIn>> loaded_;
};

// Connects every add-in of the add-in registry to the host (its own loader,
// Host::AddIns()); returns how many connected.
int LoadRegisteredAddIns(Host& host);
int LoadRegisteredAddIns(Host& host, registry::RegistryBackend& registry);

} // namespace feldra
