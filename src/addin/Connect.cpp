#include "addin/Connect.h"

#include "addin/ContinueOnError.h"
#include "addin/TechnologyEditHook.h"
#include "autosync/frmAutoSync.h"
#include "addin/frmWarning.h"
#include "addin/host/AddInCommands.h"
#include "addin/host/Application.h"
#include "addin/host/CommandBar.h"
#include "addin/host/CommandBarControl.h"
#include "addin/host/CommandBars.h"
#include "addin/host/Configuration.h"
#include "addin/host/Document.h"
#include "addin/host/MainMenus.h"
#include "addin/host/MenuControl.h"
#include "addin/host/MenuControls.h"
#include "addin/host/Simulation.h"
#include "addin/host/TechnologyUtility.h"
#include "addin/host/WorkPlane.h"
#include "addin/host/WorkPlanes.h"
#include "addin/modGlobals.h"
#include "addin/settings/SettingsStore.h"
#include "addin/ui/HelpAccess.h"
#include "addin/ui/ModelessForm.h"
#include "addin/ui/UiServices.h"
#include "datapage/frmMarelonDataPage.h"
#include "numeric/NumberText.h"
#include "tooldata/frmToolData.h"

#include <QImage>
#include <stdexcept>

namespace marelon {

// Where a command's button goes: on which bar and where on it.
struct Connect::ButtonPlacement {
    enum Bar { MainBar, SecondaryBar };
    enum Position { AfterSeparatorAtEnd, BeforeLastControl, AtEnd };
    int id;
    Bar bar;
    Position position;
    QString caption;
    QString toolTip;
};

namespace {

using Placement = Connect::ButtonPlacement;

// The main command bar, the secondary command bar and the help menu popup.
constexpr int kMainBar = 23;
constexpr int kSecondaryBar = 2;
constexpr int kHelpMenu = 9;
constexpr int kCommandCount = 6;
constexpr int kButtonType = 1;
constexpr int kSeparatorEntry = 0;
constexpr int kCommandEntry = 1;

// The command table: each command's button, caption and tooltip (command 5
// has no button, only its help-menu entry; command 6, Auto Sync, follows
// G-Code List on the main bar).
const Placement kButtons[] = {
    {1, Placement::MainBar, Placement::AfterSeparatorAtEnd, QStringLiteral("Tool Data"),
     QStringLiteral("Sets tool shift and spindle rotation.")},
    {2, Placement::MainBar, Placement::BeforeLastControl, QStringLiteral("Data Page"),
     QStringLiteral("Generates data page settings for Marelon Swiss-style lathes.")},
    {3, Placement::SecondaryBar, Placement::AtEnd, QStringLiteral("Masks"), QStringLiteral("Mask Graphic Objects")},
    {4, Placement::MainBar, Placement::AtEnd, QStringLiteral("G-Code List"), QStringLiteral("Display Help about G codes")},
    {6, Placement::MainBar, Placement::AtEnd, QStringLiteral("Auto Sync"),
     QStringLiteral("Orders the operations and rebuilds the main and back spindle synchronisations.")},
};

const QString kAddInHelpEntry = QStringLiteral("Marelon Add-In Help");
const QString kGCodeHelpEntry = QStringLiteral("Marelon G-Code Help");

// A toolbar image's key: a prefix, the command id and its size.
QString BitmapKey(int id, int size)
{
    return QStringLiteral("TB%1_%2").arg(id).arg(size);
}

// A work plane of the lathe: its name and its U, V and W directions (W = U x V);
// every plane has its origin at zero.
struct LathePlane {
    QString name;
    double u[3];
    double v[3];
    double w[3];
};

const LathePlane kLathePlanes[] = {
    {QStringLiteral("Turning"), {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
    {QStringLiteral("Cross Gang"), {0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
    {QStringLiteral("Back Face"), {0, 1, 0}, {0, 0, 1}, {1, 0, 0}},
    {QStringLiteral("Cross Turret"), {0, 0, -1}, {1, 0, 0}, {0, -1, 0}},
    {QStringLiteral("Front Face"), {0, 1, 0}, {0, 0, -1}, {-1, 0, 0}},
};

// The host's standard planes that the lathe planes replace.
const QStringList kStandardPlanes{QStringLiteral("XYZ"), QStringLiteral("YZX"), QStringLiteral("ZXY")};

// Moves a sink from the source it listens to onto the next one.
template <class Source, class Sink>
void Readvise(std::shared_ptr<Source>& held, std::shared_ptr<Source> next, Sink* sink)
{
    if (held)
        held->Unadvise(sink);
    held = std::move(next);
    if (held)
        held->Advise(sink);
}

// Stops a sink listening to a source and drops the source, whatever fails.
template <class Source, class Sink>
void Release(std::shared_ptr<Source>& held, Sink* sink)
{
    if (held)
        ContinueOnError([&] { held->Unadvise(sink); });
    held.reset();
}

} // namespace

Connect::~Connect()
{
    if (released_)
        return;
    if (connected_)
        Shutdown();
    else
        ReleaseReferences(); // a connection that failed early: stop listening to the host
}

// ---- connection

void Connect::OnConnection(std::shared_ptr<host::Application> Application, int, const QVariant&, QVariantList&)
{
    application_ = std::move(Application);
    application_->Advise(static_cast<host::ApplicationEvents*>(this));
    HostInstallFolder() = application_->InstallFolder();
    CreateLocalizer();
    connected_ = true;
    released_ = false;
    addIn_ = application_->AddInCommands();
    addIn_->Advise(static_cast<host::AddInCommandsEvents*>(this));
    cookie_ = addIn_->Cookie();
    AddCommands();

    // From here on a failing host call is skipped and the connection goes on.
    ContinueOnError([&] { mainBar_ = application_->CommandBars()->Item(kMainBar); });
    ContinueOnError([&] { secondaryBar_ = application_->CommandBars()->Item(kSecondaryBar); });
    for (const Placement& button : kButtons)
        PlaceButton(button);
    AddHelpEntries();
    LoadDataPage();
}

void Connect::CreateLocalizer()
{
    localizer_ = application_->CreateLocalizer();
    localizer_->setLanguageCode(application_->Configuration()->LanguageCode());
    localizer_->Initialise();
    InstallUiServices(localizer_, application_->MessageBoxes());
}

void Connect::AddCommands()
{
    for (int id = 1; id <= kCommandCount; ++id)
        commandHandles_[id] = addIn_->AddCommand(cookie_, id, kCommandGroup);
}

void Connect::PlaceButton(const Placement& button)
{
    QString folder;
    ContinueOnError([&] { folder = WriteBitmaps(button.id); });
    const auto control = AddButton(button);
    if (!control)
        return;
    ContinueOnError([&] {
        control->SetBitmaps(folder + BitmapKey(button.id, 16) + QStringLiteral(".bmp"),
                            folder + BitmapKey(button.id, 32) + QStringLiteral(".bmp"));
    });
    ContinueOnError([&] { control->setVisible(true); });
    ContinueOnError([&] { control->setCaption(Tr(button.caption)); });
    ContinueOnError([&] { control->setToolTip(Tr(button.toolTip)); });
}

// Writes the command's small and large image into the host's temporary folder
// (a file that cannot be written is skipped) and returns that folder.
QString Connect::WriteBitmaps(int id)
{
    const QString folder = application_->TemporaryFolder();
    for (int size : {16, 32}) {
        const QString key = BitmapKey(id, size);
        QImage(QStringLiteral(":/toolbar/") + key + QStringLiteral(".png"))
            .save(folder + key + QStringLiteral(".bmp"), "BMP");
    }
    return folder;
}

// Adds the command's button to its bar and returns the new control (none when
// the host refused it). Each host call is skipped on its own when it fails: a
// refused separator still leaves the button where it belongs.
std::shared_ptr<host::CommandBarControl> Connect::AddButton(const Placement& button)
{
    const auto& bar = button.bar == Placement::MainBar ? mainBar_ : secondaryBar_;
    if (!bar)
        return nullptr;
    if (button.position == Placement::AfterSeparatorAtEnd)
        ContinueOnError([&] { bar->AddSeparator(); });
    const bool beforeLast = button.position == Placement::BeforeLastControl;
    int count = 0;
    ContinueOnError([&] { count = bar->ControlCount(); });
    ContinueOnError([&] {
        bar->AddControl(kButtonType, button.caption, commandHandles_[button.id], beforeLast ? count : count + 1);
    });
    std::shared_ptr<host::CommandBarControl> control;
    ContinueOnError([&] { control = bar->Control(bar->ControlCount() - (beforeLast ? 1 : 0)); });
    return control;
}

void Connect::AddHelpEntries()
{
    ContinueOnError([&] { helpMenu_ = application_->MainMenus()->Item(kHelpMenu); });
    if (!helpMenu_)
        return;
    RemoveHelpEntries(); // left over from an earlier connection
    ContinueOnError([&] { helpMenu_->Add(kSeparatorEntry); });
    ContinueOnError([&] { helpMenu_->Add(kCommandEntry, Tr(kAddInHelpEntry), commandHandles_[5]); });
    ContinueOnError([&] { helpMenu_->Add(kCommandEntry, Tr(kGCodeHelpEntry), commandHandles_[4]); });
}

// Removes the add-in's help entries and the separator left before them.
void Connect::RemoveHelpEntries()
{
    if (!helpMenu_)
        return;
    const QStringList captions{Tr(kAddInHelpEntry), Tr(kGCodeHelpEntry)};
    int count = 0;
    ContinueOnError([&] { count = helpMenu_->Count(); });
    for (int position = count; position >= 1; --position)
        ContinueOnError([&] {
            if (captions.contains(helpMenu_->Item(position)->Caption()))
                helpMenu_->Remove(position);
        });
    ContinueOnError([&] {
        const int last = helpMenu_->Count();
        if (last > 0 && !helpMenu_->Item(last)->HasCommand())
            helpMenu_->Remove(last);
    });
}

void Connect::LoadDataPage()
{
    Flags().dataPageAvailable = true;
    ContinueOnError([&] { SetHostWindow(application_->MainWindowHandle()); });
    if (!DataPageInstance())
        DataPageInstance() = new frmMarelonDataPage(application_);
}

void Connect::OnDisconnection(int, QVariantList&)
{
    if (connected_)
        Shutdown();
}

void Connect::OnBeginShutdown(QVariantList&)
{
    if (connected_)
        Shutdown();
}

void Connect::OnAddInsUpdate(QVariantList&) {}

void Connect::OnStartupComplete(QVariantList&) {}

// ---- release

void Connect::Shutdown()
{
    if (frmMarelonDataPage* page = DataPageInstance()) {
        HideModelessForm(page);
        page->Unload();
    }
    if (released_)
        return;
    CleanUpToolbars();
    ReleaseReferences();
    released_ = true;
}

void Connect::CleanUpToolbars()
{
    RemoveHelpEntries();
    if (addIn_)
        for (int id = 1; id <= kCommandCount; ++id)
            ContinueOnError([&] { addIn_->RemoveCommand(commandHandles_[id]); });
    if (application_)
        ContinueOnError([&] { application_->RefreshCommandBars(); });
}

void Connect::ReleaseReferences()
{
    delete DataPageInstance().data();
    RemoveUiServices();
    localizer_.reset();
    Release(addIn_, static_cast<host::AddInCommandsEvents*>(this));
    Release(myTechUtil_, static_cast<host::TechnologyUtilityEvents*>(this));
    Release(mySimul_, static_cast<host::SimulationEvents*>(this));
    Release(document_, static_cast<host::DocumentEvents*>(this));
    Release(application_, static_cast<host::ApplicationEvents*>(this));
    mainBar_.reset();
    secondaryBar_.reset();
    helpMenu_.reset();
}

// ---- commands

void Connect::AddIn_OnCommand(int cookie, int nCmdId)
{
    if (!active() || cookie != cookie_)
        return;
    if (nCmdId > 0)
        FollowActiveDocument();
    switch (nCmdId) {
    case 1: {
        application_->NotifyCommandStart(1);
        frmToolData toolData(application_);
        ShowForm(&toolData, true);
        break;
    }
    case 2:
        application_->NotifyCommandStart(1);
        ShowDataPage();
        break;
    case 3:
        application_->SendKeys(QStringLiteral("^m"));
        break;
    case 4:
        OpenHelpTopic(*application_, kGCodeHelpFile, QString());
        break;
    case 5:
        OpenHelpTopic(*application_, kAddInHelpFile, QStringLiteral("Index.htm"));
        break;
    case 6: {
        frmAutoSync autoSync(application_);
        ShowForm(&autoSync, true);
        break;
    }
    default:
        break;
    }
}

void Connect::AddIn_OnCommandUI(int cookie, int nCmdId, bool& Enabled, bool&)
{
    if (!active() || cookie != cookie_)
        return;
    const auto document = application_->ActiveDocument();
    if (!document) {
        Enabled = false;
        return;
    }
    const bool lathe = document->MachineType() == 1;
    switch (nCmdId) {
    case 1:
    case 4:
    case 6:
        Enabled = lathe;
        break;
    case 2:
        Enabled = lathe && Flags().dataPageAvailable;
        break;
    default:
        break;
    }
}

// ---- documents

void Connect::FollowActiveDocument()
{
    Readvise(document_, application_->ActiveDocument(), static_cast<host::DocumentEvents*>(this));
}

// The document events arrive for the active document only.
void Connect::RequireDocument() const
{
    if (!document_)
        throw std::runtime_error("The host has no active document.");
}

void Connect::Application_AfterDocumentOpen(const QString&)
{
    if (!active())
        return;
    FollowActiveDocument();
    RequireDocument();
    Readvise(myTechUtil_, document_->TechnologyUtility(), static_cast<host::TechnologyUtilityEvents*>(this));
    Flags().newDocument = false;
    Readvise(mySimul_, document_->Simulation(), static_cast<host::SimulationEvents*>(this));
    FollowWithDataPage();
}

// An open Data Page belongs to the part now active, as an undo or redo left it
// or as it was opened or made new; a part that is no lathe part has none.
void Connect::FollowWithDataPage()
{
    frmMarelonDataPage* page = DataPageInstance();
    if (!page || !page->isVisible())
        return;
    if (document_->MachineType() == 1)
        page->ShowPartAgain();
    else
        page->cmdCancel_Click();
}

void Connect::Application_AfterNewDocumentOpen()
{
    if (active())
        OpenedAsNew(true);
}

void Connect::Application_AfterTemplateOpen(const QString&)
{
    if (active())
        OpenedAsNew(false);
}

// A new document or a template: the Data Page for the add-in's machines, and
// the lathe work planes in a new document.
void Connect::OpenedAsNew(bool withWorkPlanes)
{
    FollowActiveDocument();
    RequireDocument();
    Readvise(myTechUtil_, document_->TechnologyUtility(), static_cast<host::TechnologyUtilityEvents*>(this));
    FollowWithDataPage();
    if (document_->MachineType() == 1)
        ShowDataPage();
    if (withWorkPlanes)
        InitialWorkPlanes();
    Flags().newDocument = true;
    Readvise(mySimul_, document_->Simulation(), static_cast<host::SimulationEvents*>(this));
}

void Connect::Document_AfterDocumentSave()
{
    if (active())
        Flags().newDocument = false;
}

void Connect::Application_BeforeCommandRun(int nCmdId, int, bool& bOverride)
{
    if (!active() || nCmdId != kGenerateNcCode)
        return;
    const QString dontShow = GetSetting(kAppName, kNcCodeDialogSection, kDontShowKey, QStringLiteral("0"));
    if (numeric::ToDouble(dontShow) != 0) // a setting that is no number fails the whole check
        return;
    frmWarning warning(application_);
    ShowForm(&warning, true);
    if (Flags().ncWarningCancel)
        bOverride = true;
}

void Connect::Application_BeforeQuit()
{
    if (connected_)
        Shutdown();
}

// ---- simulation and technology editing

void Connect::MySimul_OnBegin()
{
    if (active())
        simulationHooks_.OnBegin(*document_, *mySimul_);
}

void Connect::MySimul_OnOperationStart(std::shared_ptr<host::Operation> Operation)
{
    if (active())
        simulationHooks_.OnOperationStart(*document_, *Operation);
}

void Connect::MySimul_OnSimulateOperation(std::shared_ptr<host::Operation> Operation)
{
    if (active())
        simulationHooks_.OnSimulateOperation(*document_, *Operation);
}

void Connect::MyTechUtil_OnEdit(std::shared_ptr<host::Technology> Technology, int, bool&, int&)
{
    if (active())
        RelabelTechnology(*document_, *Technology);
}

std::shared_ptr<host::CustomProperty> Connect::GetCustomProperty(host::GraphicObject& GraphicObj,
                                                                 const QString& PropertyName, int PropertyType)
{
    return SimulationHooks::GetCustomProperty(GraphicObj, PropertyName, PropertyType);
}

QVariant Connect::GetZ2UpperLimit()
{
    RequireDocument();
    return SimulationHooks::GetZ2UpperLimit(*document_);
}

// ---- work planes

void Connect::InitialWorkPlanes()
{
    RequireDocument();
    if (document_->MachineType() != 1)
        return;
    const auto planes = document_->WorkPlanes();
    QStringList standard;
    for (int position = 1; position <= planes->Count(); ++position) {
        const QString name = planes->Item(position)->Name();
        if (kStandardPlanes.contains(name))
            standard.append(name);
    }
    for (const QString& name : std::as_const(standard))
        planes->Remove(name);

    for (const LathePlane& lathe : kLathePlanes) {
        const auto plane = planes->Add(Tr(lathe.name));
        plane->setU(lathe.u[0], lathe.u[1], lathe.u[2]);
        plane->setV(lathe.v[0], lathe.v[1], lathe.v[2]);
        plane->setW(lathe.w[0], lathe.w[1], lathe.w[2]);
        plane->setOrigin(0, 0, 0);
        plane->setFlag(0);
    }
    document_->setActiveWorkPlane(planes->Item(Tr(QStringLiteral("Turning"))));
}

} // namespace marelon
