#pragma once

#include "addin/host/AddInCommandsEvents.h"
#include "addin/host/ApplicationEvents.h"
#include "addin/host/DocumentEvents.h"
#include "addin/host/IDTExtensibility2.h"
#include "addin/host/SimulationEvents.h"
#include "addin/host/TechnologyUtilityEvents.h"
#include "addin/SimulationHooks.h"

#include <QString>
#include <array>
#include <memory>

namespace marelon {

// The add-in's connection to the host: registers the six commands, places
// their buttons and help entries, listens to the host's events and releases
// everything again at shutdown.
class Connect final : public host::IDTExtensibility2,
                      public host::ApplicationEvents,
                      public host::AddInCommandsEvents,
                      public host::DocumentEvents,
                      public host::SimulationEvents,
                      public host::TechnologyUtilityEvents {
public:
    // The group the add-in's commands are registered under.
    static inline const QString kCommandGroup = QStringLiteral("Marelon");
    // The host's command that generates NC code.
    static constexpr int kGenerateNcCode = 3320;

    Connect() = default;
    // A connection the host never disconnected is released here.
    ~Connect() override;

    // ---- IDTExtensibility2
    void OnConnection(std::shared_ptr<host::Application> Application, int ConnectMode, const QVariant& AddInInst,
                      QVariantList& custom) override;
    void OnDisconnection(int RemoveMode, QVariantList& custom) override;
    void OnAddInsUpdate(QVariantList& custom) override;
    void OnStartupComplete(QVariantList& custom) override;
    void OnBeginShutdown(QVariantList& custom) override;

    void Shutdown();
    void CleanUpToolbars();
    void InitialWorkPlanes();
    std::shared_ptr<host::CustomProperty> GetCustomProperty(host::GraphicObject& GraphicObj,
                                                            const QString& PropertyName, int PropertyType);
    QVariant GetZ2UpperLimit();

    // ---- command callbacks and host events
    void AddIn_OnCommand(int cookie, int nCmdId);
    void AddIn_OnCommandUI(int cookie, int nCmdId, bool& Enabled, bool& Checked);
    void Application_AfterDocumentOpen(const QString& FileName);
    void Application_AfterNewDocumentOpen();
    void Application_AfterTemplateOpen(const QString& FileName);
    void Application_BeforeCommandRun(int nCmdId, int nAuxId, bool& bOverride);
    void Application_BeforeQuit();
    void Document_AfterDocumentSave();
    void MySimul_OnBegin();
    void MySimul_OnOperationStart(std::shared_ptr<host::Operation> Operation);
    void MySimul_OnSimulateOperation(std::shared_ptr<host::Operation> Operation);
    void MyTechUtil_OnEdit(std::shared_ptr<host::Technology> Technology, int editType, bool& bOverride,
                           int& resultCode);

    // Where a command's button goes (the connection's table).
    struct ButtonPlacement;

    bool IsConnected() const { return connected_; }
    bool IsReleased() const { return released_; }
    int Cookie() const { return cookie_; }
    // What the host returned when command id (1 to 6) was registered.
    int CommandHandle(int id) const { return commandHandles_.at(id); }

private:
    // The sinks' events, each handed to its handler above.
    void OnCommand(int cookie, int nCmdId) override { AddIn_OnCommand(cookie, nCmdId); }
    void OnCommandUI(int cookie, int nCmdId, bool& Enabled, bool& Checked) override
    {
        AddIn_OnCommandUI(cookie, nCmdId, Enabled, Checked);
    }
    void AfterDocumentOpen(const QString& FileName) override { Application_AfterDocumentOpen(FileName); }
    void AfterNewDocumentOpen() override { Application_AfterNewDocumentOpen(); }
    void AfterTemplateOpen(const QString& FileName) override { Application_AfterTemplateOpen(FileName); }
    void BeforeCommandRun(int nCmdId, int nAuxId, bool& bOverride) override
    {
        Application_BeforeCommandRun(nCmdId, nAuxId, bOverride);
    }
    void BeforeQuit() override { Application_BeforeQuit(); }
    void AfterDocumentSave() override { Document_AfterDocumentSave(); }
    void OnBegin() override { MySimul_OnBegin(); }
    void OnOperationStart(std::shared_ptr<host::Operation> Operation) override
    {
        MySimul_OnOperationStart(std::move(Operation));
    }
    void OnSimulateOperation(std::shared_ptr<host::Operation> Operation) override
    {
        MySimul_OnSimulateOperation(std::move(Operation));
    }
    void OnEdit(std::shared_ptr<host::Technology> Technology, int editType, bool& bOverride, int& resultCode) override
    {
        MyTechUtil_OnEdit(std::move(Technology), editType, bOverride, resultCode);
    }

    // Connected and not yet released: the event handlers act only then.
    bool active() const { return connected_ && !released_; }

    void CreateLocalizer();
    void AddCommands();
    void PlaceButton(const ButtonPlacement& button);
    std::shared_ptr<host::CommandBarControl> AddButton(const ButtonPlacement& button);
    QString WriteBitmaps(int id);
    void AddHelpEntries();
    void RemoveHelpEntries();
    void LoadDataPage();
    void ReleaseReferences();

    void FollowActiveDocument();
    void RequireDocument() const;
    void OpenedAsNew(bool withWorkPlanes);
    void FollowWithDataPage();

    std::shared_ptr<host::Application> application_;
    std::shared_ptr<host::Document> document_;
    std::shared_ptr<host::AddInCommands> addIn_;
    std::shared_ptr<host::TechnologyUtility> myTechUtil_;
    std::shared_ptr<host::Simulation> mySimul_;
    int cookie_ = 0;
    std::array<int, 7> commandHandles_{}; // by command id 1 to 6
    std::shared_ptr<host::CommandBar> mainBar_;
    std::shared_ptr<host::CommandBar> secondaryBar_;
    std::shared_ptr<host::MenuControls> helpMenu_;
    std::shared_ptr<host::Localizer> localizer_;
    SimulationHooks simulationHooks_;
    bool connected_ = false;
    bool released_ = false;
};

} // namespace marelon
