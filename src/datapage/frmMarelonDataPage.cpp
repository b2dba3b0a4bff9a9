#include "datapage/frmMarelonDataPage.h"

#include "addin/host/Application.h"
#include "addin/host/Document.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/NCHeads.h"
#include "addin/modGlobals.h"
#include "addin/ui/HelpAccess.h"
#include "addin/ui/ModelessForm.h"
#include "addin/ui/UiServices.h"
#include "ui_frmMarelonDataPage.h"

#include <QCloseEvent>
#include <QComboBox>
#include <stdexcept>

namespace marelon {
namespace {

// Clears a list and fills it with the entries, translated unless told otherwise.
void FillList(QComboBox* list, const QStringList& entries, bool translate = true)
{
    list->clear();
    for (const QString& entry : entries)
        list->addItem(translate ? Tr(entry) : entry);
}

} // namespace

frmMarelonDataPage::frmMarelonDataPage(std::shared_ptr<host::Application> application, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmMarelonDataPage>()), application_(std::move(application))
{
    ui_->setupUi(this);
    connect(ui_->cmdCancel, &QPushButton::clicked, this, &frmMarelonDataPage::cmdCancel_Click);
    connect(ui_->cmdHelp, &QPushButton::clicked, this, &frmMarelonDataPage::cmdHelp_Click);
    Form_Load();
}

frmMarelonDataPage::~frmMarelonDataPage() = default;

void frmMarelonDataPage::Form_Load()
{
    TranslateForm(this);
    ParentToHost(this);
    setWindowTitle(Tr(QStringLiteral("Data Page")));
    ui_->MyTabs->setTabText(0, Tr(QStringLiteral("Part Data")));
    ui_->MyTabs->setTabText(1, Tr(QStringLiteral("Machine Data")));
    ui_->MyTabs->setTabText(2, Tr(QStringLiteral("Miscellaneous")));
}

void frmMarelonDataPage::InitOp()
{
    FillHeadList();
    FillFixedLists();
    ui_->MyTabs->setCurrentIndex(0);
}

// One entry per NC output head of the document: "Head-1", "Head-2", ...
void frmMarelonDataPage::FillHeadList()
{
    const auto document = application_->ActiveDocument();
    if (!document)
        throw std::runtime_error("The Data Page needs an active document.");
    const int count = document->MachineSetup()->Heads()->Count();
    ui_->cmbHeadComment->clear();
    for (int head = 1; head <= count; ++head)
        ui_->cmbHeadComment->addItem(Tr(QStringLiteral("Head")) + QLatin1Char('-') + QString::number(head));
}

void frmMarelonDataPage::FillFixedLists()
{
    FillList(ui_->cmbBarLoaderProgType, {QStringLiteral("Sub Program"), QStringLiteral("M Code")});
    FillList(ui_->CmbSpindleStop, {QStringLiteral("NO"), QStringLiteral("YES")});
    FillList(ui_->CmbPolarMode, {QStringLiteral("X and C"), QStringLiteral("X and Y")});
    FillList(ui_->StockTypeC,
             {QStringLiteral("Bar"), QStringLiteral("Tube"), QStringLiteral("Polygon"), QStringLiteral("Profile")});
    FillList(ui_->Sides, {QStringLiteral("4"), QStringLiteral("6"), QStringLiteral("8")}, false);
    FillList(ui_->NCCodeUnit, {QStringLiteral("Inch"), QStringLiteral("Metric")});
}

void frmMarelonDataPage::cmdCancel_Click()
{
    HideModelessForm(this);
    Flags().dataPageAvailable = true;
}

void frmMarelonDataPage::cmdHelp_Click()
{
    OpenHelpTopic(*application_, kAddInHelpFile, QStringLiteral("Index.htm"));
}

void frmMarelonDataPage::Form_QueryUnload(bool& cancel, UnloadMode unloadMode)
{
    if (unloadMode == vbFormControlMenu) {
        HideModelessForm(this);
        cancel = true;
    }
    Flags().dataPageAvailable = true;
}

void frmMarelonDataPage::closeEvent(QCloseEvent* event)
{
    bool cancel = false;
    Form_QueryUnload(cancel, vbFormControlMenu);
    event->setAccepted(!cancel);
}

// Escape hides a modeless dialog through the dialog host, without a close:
// once hidden and no longer hosted, the Data Page is closed as by Cancel.
void frmMarelonDataPage::hideEvent(QHideEvent* event)
{
    if (!IsFormRegistered(this))
        Flags().dataPageAvailable = true;
    QDialog::hideEvent(event);
}

void frmMarelonDataPage::Unload()
{
    bool cancel = false;
    Form_QueryUnload(cancel, vbFormCode);
}

} // namespace marelon
