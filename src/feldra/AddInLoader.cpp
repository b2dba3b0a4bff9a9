#include "feldra/AddInLoader.h"

#include "addin/host/HostError.h"
#include "feldra/Host.h"
#include "feldra/InstallLayout.h"
#include "registry/FileRegistryHive.h"

#include <QCoreApplication>

#include <QFileInfo>

#include <exception>

namespace feldra {
namespace {

const QString kConnection = QStringLiteral("IDTExtensibility2.OnConnection");

} // namespace

AddInLoader::~AddInLoader()
{
    UnloadAll();
}

template <class Call>
bool AddInLoader::CallAddIn(const QString& callback, Call call)
{
    try {
        call();
        return true;
    } catch (const host::HostError& error) {
        host_.Log().RecordFailedCallback(callback, error.Operation(), error.Description());
    } catch (const std::exception& error) {
        host_.Log().RecordFailedCallback(callback, QString(), QString::fromUtf8(error.what()));
    }
    return false;
}

bool AddInLoader::Load(const QString& progId, const QString& modulePath, int connectMode)
{
    if (IsLoaded(progId))
        return true;
    auto loaded = std::make_shared<LoadedAddIn>();
    loaded->progId = progId;
    loaded->library = std::make_unique<QLibrary>(modulePath);
    auto fail = [&](const QString& description) {
        host_.Log().RecordFailedCallback(kConnection, QString(), progId + QStringLiteral(": ") + description);
        return false;
    };
    if (!loaded->library->load())
        return fail(loaded->library->errorString());
    const auto create = reinterpret_cast<host::CreateAddInFunction>(loaded->library->resolve(host::kCreateAddInSymbol));
    if (!create) {
        loaded->library->unload();
        return fail(QStringLiteral("the module has no add-in factory"));
    }
    loaded->addIn.reset(create(progId.toUtf8().constData()));
    if (!loaded->addIn) {
        loaded->library->unload();
        return fail(QStringLiteral("the module does not create this add-in"));
    }
    // Each add-in's folder is the folder of its own module: the add-in finds
    // the files delivered with it there (Marelon its holder libraries).
    host_.ApplicationFor(progId); // registers the add-in with the host
    for (AddInData& addIn : host_.App().addIns)
        if (addIn.progId == progId)
            addIn.folder = QFileInfo(modulePath).absolutePath() + QLatin1Char('/');
    if (!Connect(*loaded, connectMode)) {
        loaded->addIn.reset();
        loaded->library->unload();
        return false;
    }
    loaded_.append(loaded);
    return true;
}

bool AddInLoader::Connect(LoadedAddIn& loaded, int connectMode)
{
    QVariantList custom;
    return CallAddIn(kConnection, [&] {
        loaded.addIn->OnConnection(host_.ApplicationFor(loaded.progId), connectMode, QVariant(), custom);
    });
}

int AddInLoader::ReconnectAll()
{
    int connected = 0;
    for (const auto& loaded : QList(loaded_)) {
        Disconnect(*loaded, host::ext_dm_UserClosed);
        const auto create = reinterpret_cast<host::CreateAddInFunction>(loaded->library->resolve(host::kCreateAddInSymbol));
        loaded->addIn.reset(create(loaded->progId.toUtf8().constData()));
        if (loaded->addIn && Connect(*loaded, host::ext_cm_AfterStartup)) {
            ++connected;
            continue;
        }
        loaded->addIn.reset();
        loaded->library->unload();
        loaded_.removeAll(loaded);
    }
    return connected;
}

int AddInLoader::LoadRegisteredAddIns(registry::RegistryBackend& registry)
{
    int connected = 0;
    for (const RegisteredAddIn& addIn : RegisteredAddIns(registry))
        connected += Load(addIn.progId, addIn.modulePath, host::ext_cm_Startup) ? 1 : 0;
    return connected;
}

int AddInLoader::LoadRegisteredAddIns(registry::RegistryBackend& user, registry::RegistryBackend& machine,
                                      const QString& executableFolder)
{
    int connected = 0;
    for (const RegisteredAddIn& addIn : RegisteredAddIns(user, machine, executableFolder))
        connected += Load(addIn.progId, addIn.modulePath, host::ext_cm_Startup) ? 1 : 0;
    return connected;
}

int AddInLoader::LoadRegisteredAddIns()
{
    const QString executableFolder = QCoreApplication::applicationDirPath();
    registry::FileRegistryHive machine(MachineRegistryFolder(executableFolder));
    return LoadRegisteredAddIns(*registry::DefaultRegistryBackend(), machine, executableFolder);
}

void AddInLoader::StartupComplete()
{
    for (const auto& loaded : std::as_const(loaded_)) {
        QVariantList custom;
        CallAddIn(QStringLiteral("IDTExtensibility2.OnStartupComplete"),
                  [&] { loaded->addIn->OnStartupComplete(custom); });
    }
}

void AddInLoader::BeginShutdown()
{
    for (const auto& loaded : std::as_const(loaded_)) {
        QVariantList custom;
        CallAddIn(QStringLiteral("IDTExtensibility2.OnBeginShutdown"), [&] { loaded->addIn->OnBeginShutdown(custom); });
    }
}

void AddInLoader::Disconnect(LoadedAddIn& loaded, int removeMode)
{
    QVariantList custom;
    CallAddIn(QStringLiteral("IDTExtensibility2.OnDisconnection"),
              [&] { loaded.addIn->OnDisconnection(removeMode, custom); });
    loaded.addIn.reset(); // deleted by its own module's code, before that is unloaded
}

void AddInLoader::Release(LoadedAddIn& loaded, int removeMode)
{
    Disconnect(loaded, removeMode);
    loaded.library->unload();
}

bool AddInLoader::Unload(const QString& progId, int removeMode)
{
    for (qsizetype i = 0; i < loaded_.size(); ++i) {
        if (loaded_[i]->progId != progId)
            continue;
        const auto loaded = loaded_.takeAt(i);
        Release(*loaded, removeMode);
        return true;
    }
    return false;
}

void AddInLoader::UnloadAll(int removeMode)
{
    while (!loaded_.isEmpty()) {
        const auto loaded = loaded_.takeLast();
        Release(*loaded, removeMode);
    }
}

QStringList AddInLoader::LoadedProgIds() const
{
    QStringList progIds;
    for (const auto& loaded : loaded_)
        progIds.append(loaded->progId);
    return progIds;
}

bool AddInLoader::IsLoaded(const QString& progId) const
{
    return LoadedProgIds().contains(progId);
}

int LoadRegisteredAddIns(Host& host)
{
    return host.AddIns().LoadRegisteredAddIns();
}

int LoadRegisteredAddIns(Host& host, registry::RegistryBackend& registry)
{
    return host.AddIns().LoadRegisteredAddIns(registry);
}

} // namespace feldra
