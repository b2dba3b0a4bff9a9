#include "datapage/frmMarelonDataPage.h"

#include "addin/ContinueOnError.h"
#include "addin/host/Application.h"
#include "addin/host/Document.h"
#include "addin/host/GraphicObject.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/Operation.h"
#include "addin/host/Operations.h"
#include "addin/host/Technology.h"
#include "addin/host/Technology207.h"
#include "addin/modGlobals.h"
#include "addin/settings/MachineCodes.h"
#include "addin/ui/CarriedOverMark.h"
#include "addin/ui/HelpAccess.h"
#include "addin/ui/ListSelection.h"
#include "addin/ui/ModelessForm.h"
#include "addin/ui/TabStop.h"
#include "addin/ui/UiServices.h"
#include "datapage/BarLoader.h"
#include "datapage/DataPageOutput.h"
#include "datapage/DataPagePersistence.h"
#include "datapage/DataPageSettings.h"
#include "datapage/FieldUnits.h"
#include "datapage/MachineCatalogue.h"
#include "datapage/MachineSetups.h"
#include "datapage/ParameterUpdates.h"
#include "datapage/StockDefinition.h"
#include "numeric/Encode.h"
#include "numeric/NumberText.h"
#include "addin/ui/Validation.h"
#include "addin/ui/ControlHandler.h"
#include "ui_frmMarelonDataPage.h"

#include <QCloseEvent>
#include <QDir>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QScopeGuard>

#include <cmath>

namespace marelon {
namespace {

// Clears a list and fills it with the entries, translated unless told
// otherwise; a list just filled has no selection.
void FillList(QComboBox& list, const QStringList& entries, bool translate = true)
{
    list.clear();
    for (const QString& entry : entries)
        list.addItem(translate ? Tr(entry) : entry);
    list.setCurrentIndex(-1);
}

// The text boxes whose whole text is selected when they get the focus.
constexpr const char* kSelectOnFocus[] = {
    "CircleDiameter", "InsideDiameter", "PartLength", "StockDiameter", "StockLength", "Zamount",
    "txt813", "txt814", "txt815", "txt816", "txt817", "txt818", "txt819", "txt820", "txt821", "txt822", "txt824",
    "txt990", "txt991", "txt992", "txtBarLoaderSubNum", "TxtChamferDistX", "TxtChamferDistZ", "txtDwell",
    "TxtPullBackAmount", "TxtSpindleRPM", "txtStartupSpeed", "txtColletExt",
};

// The fields that check their expression when they are left, with nothing more to do.
constexpr const char* kCheckOnLeaving[] = {
    "PartLength", "StockLength", "Zamount", "txt814", "txt815", "txt818", "txt820", "txt821", "txt824",
};

// The controls whose leaving runs a handler of its own.
struct LeaveHandler {
    const char* control;
    void (frmMarelonDataPage::*handler)();
};
const LeaveHandler kLeaveHandlers[] = {
    {"StockDiameter", &frmMarelonDataPage::StockDiameter_LostFocus},
    {"InsideDiameter", &frmMarelonDataPage::InsideDiameter_LostFocus},
    {"CircleDiameter", &frmMarelonDataPage::CircleDiameter_LostFocus},
    {"Sides", &frmMarelonDataPage::Sides_LostFocus},
    {"BaseAngle", &frmMarelonDataPage::BaseAngle_LostFocus},
    {"ProgramNumber", &frmMarelonDataPage::ProgramNumber_LostFocus},
    {"txtColletExt", &frmMarelonDataPage::txtColletExt_LostFocus},
};

// The lists whose selection runs a click handler.
struct ListHandler {
    const char* list;
    void (frmMarelonDataPage::*handler)();
};
const ListHandler kListHandlers[] = {
    {"cmbMachineName", &frmMarelonDataPage::cmbMachineName_Click},
    {"cmbGangHolder", &frmMarelonDataPage::cmbGangHolder_Click},
    {"cmbFrontDrillHolder", &frmMarelonDataPage::cmbFrontDrillHolder_Click},
    {"cmbBackDrillHolder", &frmMarelonDataPage::cmbBackDrillHolder_Click},
    {"cmbBarLoaderProgType", &frmMarelonDataPage::cmbBarLoaderProgType_Click},
    {"cmbHeadComment", &frmMarelonDataPage::cmbHeadComment_Click},
    {"StockTypeC", &frmMarelonDataPage::StockTypeC_Click},
};

// The controls whose tab stops follow the tab shown.
constexpr const char* kMachineGroup[] = {
    "cmbMachineName", "cmdRefresh", "txt813", "txt814", "txt815", "txt816", "txt817", "txt818", "txt819", "txt820",
    "txt821", "txt822", "txt824", "txt990", "cmbGangHolder", "txt991", "cmbFrontDrillHolder", "txt992",
    "cmbBackDrillHolder", "cmb893", "cmbBackSpdlExt",
};
constexpr const char* kMiscellaneousGroup[] = {
    "chkToolBreak", "optMagazine", "optHydrostatic", "txtBarLoaderSubNum", "txtDwell", "txtStartupSpeed",
};

// The Machine Data slots whose meaning and values change with the model.
constexpr const char* kModelSlots[] = {"txt813", "txt816", "txt820", "txt821", "txt822", "txt824",
                                       "txt990", "txt991", "txt992"};

template <class Names>
bool Contains(const Names& names, const QString& name)
{
    return std::any_of(std::begin(names), std::end(names), [&](const char* n) { return name == QLatin1String(n); });
}

// A length the update routines give with its thousands grouped ("1,485.0000")
// without the grouping, so that the field's check, which reads "," as a
// decimal point, takes it as the number it is.
QString WithoutGrouping(const QString& text)
{
    return QString(text).remove(QLocale().groupSeparator());
}

bool IsEnter(const QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

// A number written back into a field by a handler: its shortest text.
QString NumberText(double value)
{
    return numeric::NumberToText(value);
}

} // namespace

frmMarelonDataPage::frmMarelonDataPage(std::shared_ptr<host::Application> application, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmMarelonDataPage>()), application_(std::move(application))
{
    ui_->setupUi(this);
    AddUnitLabels(*this);
    ConnectHandlers();
    Form_Load();
}

frmMarelonDataPage::~frmMarelonDataPage() = default;

void frmMarelonDataPage::ConnectHandlers()
{
    ConnectHandler(this, ui_->cmdOK, &QPushButton::clicked, &frmMarelonDataPage::cmdOK_Click);
    ConnectHandler(this, ui_->cmdCancel, &QPushButton::clicked, &frmMarelonDataPage::cmdCancel_Click);
    ConnectHandler(this, ui_->cmdHelp, &QPushButton::clicked, &frmMarelonDataPage::cmdHelp_Click);
    ConnectHandler(this, ui_->cmdRefresh, &QPushButton::clicked, &frmMarelonDataPage::cmdRefresh_Click);
    ConnectHandler(this, ui_->CmdUpd816, &QPushButton::clicked, &frmMarelonDataPage::CmdUpd816_Click);
    ConnectHandler(this, ui_->CmdUpd818, &QPushButton::clicked, &frmMarelonDataPage::CmdUpd818_Click);
    ConnectHandler(this, ui_->CmdUpd821, &QPushButton::clicked, &frmMarelonDataPage::CmdUpd821_Click);
    ConnectHandler(this, ui_->CmdUpdColletExt, &QPushButton::clicked, &frmMarelonDataPage::CmdUpdColletExt_Click);
    ConnectHandler(this, ui_->SelectButton, &QPushButton::clicked, &frmMarelonDataPage::SelectButton_Click);
    ConnectOptionChange(*ui_->optMagazine, &frmMarelonDataPage::optMagazine_Click);
    ConnectOptionChange(*ui_->optHydrostatic, &frmMarelonDataPage::optHydrostatic_Click);
    ConnectOptionChange(*ui_->ODCircle, &frmMarelonDataPage::ODCircle_Click);
    ConnectOptionChange(*ui_->IDCircle, &frmMarelonDataPage::IDCircle_Click);
    ConnectHandler(this, ui_->Comments, &QLineEdit::textChanged, &frmMarelonDataPage::Comments_Change);
    for (const ListHandler& list : kListHandlers) {
        auto* combo = findChild<QComboBox*>(QLatin1String(list.list));
        connect(combo, &QComboBox::activated, this, [this, handler = list.handler] {
            RunControlHandler([this, handler] { (this->*handler)(); });
        });
    }
    connect(ui_->MyTabs, &QTabWidget::currentChanged, this, [this, previous = int(kPartData)](int tab) mutable {
        RunControlHandler([this, previous] { MyTabs_Click(previous); });
        previous = tab;
    });
    for (const char* name : kModelSlots) {
        auto* slot = findChild<QLineEdit*>(QLatin1String(name));
        connect(slot, &QLineEdit::textChanged, this, [this, slot] { TakeSlotValue(*slot); });
        connect(slot, &QLineEdit::returnPressed, this, [this, slot] { TakeSlotValue(*slot); });
    }
    for (QLineEdit* edit : findChildren<QLineEdit*>())
        edit->installEventFilter(this);
    // No button is pressed by an Enter meant for a field.
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
        button->setDefault(false);
    }
    ui_->Sides->installEventFilter(this);
    connect(ui_->txt814, &QLineEdit::textChanged, this, [this] { MarkBarCapacity(); });
}

// An option's handler runs when the option becomes the chosen one, by a
// click, an arrow key or code; a click on the option already chosen changes
// nothing and runs nothing.
void frmMarelonDataPage::ConnectOptionChange(QRadioButton& option, void (frmMarelonDataPage::*handler)())
{
    connect(&option, &QAbstractButton::toggled, this, [this, handler](bool chosen) {
        if (chosen)
            RunControlHandler([this, handler] { (this->*handler)(); });
    });
}

// Focus in: select the text. Focus out to another control: the field's leave
// handler. Enter in a field: the same check, and the focus stays.
bool frmMarelonDataPage::eventFilter(QObject* watched, QEvent* event)
{
    const QString name = watched->objectName();
    if (IsEnter(event) && qobject_cast<QLineEdit*>(watched)) {
        auto* box = static_cast<QLineEdit*>(watched);
        RunControlHandler([&] { LeaveField(name); });
        if (box->hasFocus())
            box->selectAll();
        return false; // the field confirms its own value (returnPressed)
    }
    if (event->type() == QEvent::FocusIn && Contains(kSelectOnFocus, name)) {
        auto* box = static_cast<QLineEdit*>(watched);
        const int start = box->hasSelectedText() ? box->selectionStart() : box->cursorPosition();
        box->setSelection(start, int(box->text().length()));
    } else if (event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason || !isVisible())
            return false;
        // The field ends its own editing first, so that a handler that puts
        // the focus back keeps the selection it makes.
        static_cast<QObject*>(watched)->event(event);
        RunControlHandler([&] { LeaveField(name); });
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

// What leaving a control does: the numeric check, or the control's own handler.
void frmMarelonDataPage::LeaveField(const QString& name)
{
    if (Contains(kCheckOnLeaving, name)) {
        CheckNumericEntry(Control<QLineEdit>(name));
        return;
    }
    for (const LeaveHandler& leave : kLeaveHandlers)
        if (name == QLatin1String(leave.control))
            (this->*leave.handler)();
}

// Enter confirms the field that has the focus; it presses a button only while
// that button has the focus. OK never runs from a field.
void frmMarelonDataPage::keyPressEvent(QKeyEvent* event)
{
    if (IsEnter(event)) {
        if (auto* button = qobject_cast<QPushButton*>(focusWidget()))
            button->click();
        return;
    }
    QDialog::keyPressEvent(event);
}

void frmMarelonDataPage::Form_Load()
{
    TranslateForm(this);
    ParentToHost(this);
    SetCaptions();
    SetCirclePicture(false);
}

// The captions that are the system's own texts, translated as they are set.
void frmMarelonDataPage::SetCaptions()
{
    setWindowTitle(Tr(QStringLiteral("Data Page")));
    const char* tabs[] = {"Part Data", "Machine Data", "Miscellaneous"};
    for (int tab = 0; tab < 3; ++tab)
        ui_->MyTabs->setTabText(tab, Tr(QLatin1String(tabs[tab])));
    for (const DataPageField& field : DataPageFields()) {
        if (!*field.caption)
            continue;
        if (*field.label)
            Control<QLabel>(QLatin1String(field.label)).setText(ParameterCaption(field.parameter, field.caption));
        else if (auto* button = findChild<QAbstractButton*>(QLatin1String(field.control)))
            button->setText(Tr(QLatin1String(field.caption)));
    }
    ui_->SelectButton->setToolTip(Tr(QStringLiteral("Select Feature for Stock Profile")));
    const std::pair<QGroupBox*, const char*> frames[] = {
        {ui_->StockFrame, "Stock Definition"}, {ui_->fraNCOutput, "NC Output"}, {ui_->fraComments, "Comments"},
        {ui_->fraMachineSetup, "Machine Setup"}, {ui_->fraBarLoader, "Bar Loader"},
    };
    for (const auto& [frame, title] : frames)
        frame->setTitle(Tr(QLatin1String(title)));
    for (QPushButton* update : {ui_->CmdUpd816, ui_->CmdUpd818, ui_->CmdUpd821, ui_->CmdUpdColletExt})
        update->setText(Tr(QStringLiteral("Update")));
    ui_->cmdRefresh->setText(Tr(QStringLiteral("Load")));
    ui_->cmdOK->setText(Tr(QStringLiteral("OK")));
    ui_->cmdCancel->setText(Tr(QStringLiteral("Cancel")));
    ui_->cmdHelp->setText(Tr(QStringLiteral("Help")));
}

std::shared_ptr<host::Document> frmMarelonDataPage::ActiveDocument() const
{
    auto document = application_->ActiveDocument();
    if (!document)
        throw host::HostError(QStringLiteral("Application.ActiveDocument"),
                              QStringLiteral("The Data Page needs an active document."));
    return document;
}

QString frmMarelonDataPage::MachineName() const
{
    return ui_->cmbMachineName->currentText();
}

void frmMarelonDataPage::SelectList(QComboBox& list, int position)
{
    for (const ListHandler& handler : kListHandlers)
        if (list.objectName() == QLatin1String(handler.list))
            return SelectListIndex(list, position, [&] { (this->*handler.handler)(); });
    SelectListIndex(list, position, [] {});
}

void frmMarelonDataPage::InitOp()
{
    FillHeadList(*this);
    FillFixedLists();
    FillMachineList();
    if (ActiveDocument()->MachineSetup()->MakerTag() == kMarelonTag)
        GetDataForExistingFile(*this);
    else
        GetDataForNewFile(*this);
    openedStockType_ = ui_->StockTypeC->currentIndex();
    ui_->MyTabs->setCurrentIndex(kPartData);
    ShowMachineSetupName();
    ContinueOnError([&] { ShowUnits(*this, ActiveDocument()->UnitSystem() == 70); });
    MarkBarCapacity();
}

void frmMarelonDataPage::ShowPartAgain()
{
    const QStringList shown = ShownValues();
    const int tab = ui_->MyTabs->currentIndex();
    InitOp();
    ui_->MyTabs->setCurrentIndex(tab);
    if (ShownValues() != shown)
        MsgBox(Tr(QStringLiteral("The part has changed: the Data Page shows its values again. "
                                 "What was typed here and not confirmed with OK is replaced.")),
               host::MsgButtons::OK, host::MsgIcon::Information, Tr(QStringLiteral("Data Page")));
}

// Every field's text, every list's entry and every option's state, in the
// order of the form.
QStringList frmMarelonDataPage::ShownValues() const
{
    QStringList values;
    for (const QWidget* control : findChildren<QWidget*>()) {
        if (const auto* edit = qobject_cast<const QLineEdit*>(control))
            values << edit->text();
        else if (const auto* list = qobject_cast<const QComboBox*>(control))
            values << list->currentText();
        else if (const auto* option = qobject_cast<const QAbstractButton*>(control); option && option->isCheckable())
            values << QString::number(option->isChecked());
    }
    return values;
}

void frmMarelonDataPage::FillFixedLists()
{
    FillList(*ui_->cmbBarLoaderProgType, {QStringLiteral("Sub Program"), QStringLiteral("M Code")});
    FillList(*ui_->CmbSpindleStop, {QStringLiteral("NO"), QStringLiteral("YES")});
    // The placeholder of a kept polar mode goes first: taking it from a list
    // without a selection would select the first entry.
    keptPolarMode_.reset();
    ui_->CmbPolarMode->setPlaceholderText(QString());
    FillList(*ui_->CmbPolarMode, {QStringLiteral("X and C"), QStringLiteral("X and Y")});
    FillList(*ui_->StockTypeC,
             {QStringLiteral("Bar"), QStringLiteral("Tube"), QStringLiteral("Polygon"), QStringLiteral("Profile")});
    FillList(*ui_->Sides, {QStringLiteral("4"), QStringLiteral("6"), QStringLiteral("8")}, false);
    FillList(*ui_->NCCodeUnit, {QStringLiteral("Inch"), QStringLiteral("Metric")});
    ui_->SelectButton->setIcon(QPixmap(QStringLiteral(":/datapage/SELECTION")));
}

void frmMarelonDataPage::ShowPolarMode(int mode)
{
    QComboBox& list = *ui_->CmbPolarMode;
    SelectList(list, mode);
    if (list.currentIndex() >= 0 || mode < list.count())
        return;
    keptPolarMode_ = mode;
    list.setPlaceholderText(Tr(QStringLiteral("Mode %1 of the part (kept)")).arg(mode));
}

int frmMarelonDataPage::PolarModeCode() const
{
    const int position = ui_->CmbPolarMode->currentIndex();
    return position >= 0 ? position : keptPolarMode_.value_or(-1);
}

void frmMarelonDataPage::FillMachineList()
{
    FillList(*ui_->cmbMachineName, MachineNameList(), false);
}

// The document's setup when its file is there, otherwise the "no setup" entry.
void frmMarelonDataPage::ShowMachineSetupName()
{
    const QString name = ActiveDocument()->MachineSetup()->MachineSetupName();
    const int unit = ActiveDocument()->UnitSystem();
    const bool exists = MachineSetupExists(application_->AddInFolder(), MachineName(), name, unit);
    ui_->cmbMachineSetup->setEditText(exists ? name : kNoMachineSetup);
}

// ---- Buttons ----

// The checks run with the page in place, their messages over it; a field
// that fails is shown for correction and nothing is written.
void frmMarelonDataPage::cmdOK_Click()
{
    const auto document = ActiveDocument();
    const bool inch = document->UnitSystem() == 70;
    QWidget* refused = RefusedDataPageField(*this, inch);
    if (!refused)
        refused = RefusedStockProfile(*this);
    if (refused) {
        ShowFieldToCorrect(*refused);
        return;
    }
    HideModelessForm(this);
    document->setUpdateState(false);
    if (!WriteDataPage(*this, inch)) {
        MsgBox(Tr(QStringLiteral("There was an error! Possibly some data is not set properly.")));
        Flags().dataPageAvailable = true;
        return;
    }
    ContinueOnError([&] { NameNewDocument(*this); });
    Flags().dataPageAvailable = true;
    SaveDataToRegistry(*this);
}

void frmMarelonDataPage::cmdCancel_Click()
{
    HideModelessForm(this);
    Flags().dataPageAvailable = true;
}

// The index topic, at the place of the tab shown: the help viewer begins the
// index with the way to that tab's topic ("Index.htm#FromDataPageMachine"),
// a line the index opened by the add-in's help command does not show.
void frmMarelonDataPage::cmdHelp_Click()
{
    static const char* const places[] = {"FromDataPagePart", "FromDataPageMachine", "FromDataPageMisc"};
    const int tab = ui_->MyTabs->currentIndex();
    QString topic = QStringLiteral("Index.htm");
    if (tab >= 0 && tab < int(std::size(places)))
        topic += QLatin1Char('#') + QLatin1String(places[tab]);
    OpenHelpTopic(*application_, kAddInHelpFile, topic);
}

void frmMarelonDataPage::cmdRefresh_Click()
{
    ContinueOnError([&] { LoadMachineSetup(); });
    ContinueOnError([&] {
        const int code = numeric::RoundToInt16(ActiveDocument()->MachineSetup()->Param990());
        SelectPatternByCode(*ui_->cmbGangHolder, code, [this] { cmbGangHolder_Click(); });
    });
    ContinueOnError([&] { RefreshHeads(*this); });
}

void frmMarelonDataPage::CmdUpd816_Click()
{
    if (const auto tool = UpdateCutOffTool(*ActiveDocument()))
        ui_->txt816->setText(*tool);
    CheckNumericEntry(*ui_->txt816);
}

void frmMarelonDataPage::CmdUpd818_Click()
{
    ui_->txt818->setText(WithoutGrouping(UpdateMachiningLength(*ActiveDocument(), MachineName(), false)));
    CheckNumericEntry(*ui_->txt818);
}

void frmMarelonDataPage::CmdUpd821_Click()
{
    const BackSpindleChuckPosition position = UpdateBackSpindleChuckPos(*ActiveDocument(), ui_->txtColletExt->text());
    if (position.colletExtension)
        ui_->txtColletExt->setText(*position.colletExtension);
    ui_->txt821->setText(WithoutGrouping(position.chuckPosition));
    CheckNumericEntry(*ui_->txt821);
}

void frmMarelonDataPage::CmdUpdColletExt_Click()
{
    if (const auto extension = UpdateColletExtension(*ActiveDocument()))
        ui_->txtColletExt->setText(*extension);
    CheckNumericEntry(*ui_->txtColletExt);
}

// The user picks the profile's feature in the document; the Data Page comes
// back whatever happens, keeping the previous feature when the pick is cancelled.
void frmMarelonDataPage::SelectButton_Click()
{
    HideModelessForm(this);
    auto showAgain = qScopeGuard([this] { ShowAgain(); });
    const auto document = ActiveDocument();
    document->RefreshView();
    if (const auto picked = document->PickObject(Tr(QStringLiteral("Select Feature for Stock Profile")), 6))
        ui_->FeatureKey->setText(picked->Key());
    document->RefreshView();
}

// ---- Lists and options ----

void frmMarelonDataPage::cmbMachineName_Click()
{
    ApplyMachineLayout(*this, MachineName());
    MarkCarriedOverSlots();
    AddMachineSetups();
    SelectList(*ui_->cmbMachineSetup, 0);
}

// A slot's value belongs to the model chosen when it was set (by the model's
// layout too, even to the text it had), typed or confirmed.
void frmMarelonDataPage::TakeSlotValue(QLineEdit& slot)
{
    slotModels_.insert(&slot, MachineName());
    MarkCarriedOver(slot, QString());
}

// A model leaves the slots its layout does not set as they were: a value set
// under another model stays, marked as carried over from that model where
// the slot means something else there (another caption or parameter number).
void frmMarelonDataPage::MarkCarriedOverSlots()
{
    const QString model = MachineName();
    for (const char* name : kModelSlots) {
        QLineEdit& slot = Control<QLineEdit>(QLatin1String(name));
        const QString from = slotModels_.value(&slot);
        if (from.isEmpty() || SlotMeansTheSame(from, model, slot.objectName()))
            TakeSlotValue(slot);
        else
            MarkCarriedOver(slot, from);
    }
}

void frmMarelonDataPage::AddMachineSetups()
{
    const auto document = ActiveDocument();
    QComboBox& list = *ui_->cmbMachineSetup;
    list.clear();
    list.addItem(kNoMachineSetup);
    list.setCurrentIndex(-1);
    try {
        // The user's own setups first; a name the user's folder has is listed once.
        QStringList names;
        for (const QString& folder : MachineSetupFolders(application_->AddInFolder(), MachineName()))
            for (const QString& name : MachineSetupNames(folder, document->UnitSystem()))
                if (!names.contains(name))
                    names.append(name);
        list.addItems(names);
    } catch (const MachineSetupFolderError& error) {
        MsgBox(Tr(QStringLiteral("The machine setups of this machine cannot be listed.")) + QLatin1Char('\n') +
               Tr(error.Reason()).arg(QDir::toNativeSeparators(error.Folder())));
    }
}

void frmMarelonDataPage::LoadMachineSetup()
{
    const QString name = ui_->cmbMachineSetup->currentText();
    if (name == kNoMachineSetup)
        return;
    const auto document = ActiveDocument();
    const int unit = document->UnitSystem();
    const QString folder = application_->AddInFolder();
    if (!MachineSetupExists(folder, MachineName(), name, unit)) {
        MsgBox(Tr(QStringLiteral("Machine Setup File not available for this machine")));
        Flags().dataPageAvailable = true;
        return;
    }
    const QString path = MachineSetupPath(folder, MachineName(), name, unit);
    try {
        marelon::LoadMachineSetup(*document->MachineSetup(), path, name);
    } catch (const host::HostError& error) {
        MsgBox(Tr(QStringLiteral("The machine setup file \"%1\" cannot be loaded; the part keeps its setup."))
                       .arg(QDir::toNativeSeparators(path))
                   + QLatin1Char('\n') + error.Description(),
               host::MsgButtons::OK, host::MsgIcon::Exclamation);
        throw;
    }
}

void frmMarelonDataPage::cmbGangHolder_Click()
{
    const int code = ui_->cmbGangHolder->currentData().toInt();
    ui_->txt990->setText(QString::number(code));
    if (MachineName() == QLatin1String("L5 16-20"))
        ui_->imgGangHolder->setPixmap(QPixmap(GangPatternPicture(code)));
}

void frmMarelonDataPage::cmbFrontDrillHolder_Click()
{
    if (const auto offset = FrontDrillHolderOffset(MachineName()))
        ui_->txt991->setText(QString::number(ui_->cmbFrontDrillHolder->currentIndex() + *offset));
}

void frmMarelonDataPage::cmbBackDrillHolder_Click()
{
    if (const auto offset = BackDrillHolderOffset(MachineName()))
        ui_->txt992->setText(QString::number(ui_->cmbBackDrillHolder->currentIndex() + *offset));
}

void frmMarelonDataPage::cmbBarLoaderProgType_Click()
{
    const int position = ui_->cmbBarLoaderProgType->currentIndex();
    if (position != 0 && position != 1)
        return;
    EnableSubProgramNumber(position == 0);
    EnableLineFields(position == 1);
}

void frmMarelonDataPage::EnableSubProgramNumber(bool enabled)
{
    for (QWidget* w : {static_cast<QWidget*>(ui_->lblBarLoaderSubNum), static_cast<QWidget*>(ui_->txtBarLoaderSubNum)})
        w->setEnabled(enabled);
}

// The fields of the bar-change line: chamfer distances, pull back, spindle stop and speed.
void frmMarelonDataPage::EnableLineFields(bool enabled)
{
    for (QWidget* w : std::initializer_list<QWidget*>{ui_->LblChamferDist, ui_->TxtChamferDistX, ui_->TxtChamferDistZ,
                                                      ui_->LblPullBackAmount, ui_->TxtPullBackAmount, ui_->LblSpindleStop,
                                                      ui_->CmbSpindleStop, ui_->LblSpindleRPM, ui_->TxtSpindleRPM})
        w->setEnabled(enabled);
}

// Choosing the magazine loader starts from a sub program; the fields follow
// the loader kind and program type.
void frmMarelonDataPage::optMagazine_Click()
{
    if (ui_->optMagazine->isChecked())
        SelectList(*ui_->cmbBarLoaderProgType, 0);
    else
        ui_->optHydrostatic->setChecked(true);
    ApplyBarLoaderEnabling();
}

void frmMarelonDataPage::optHydrostatic_Click()
{
    if (!ui_->optHydrostatic->isChecked())
        ui_->optMagazine->setChecked(true);
    ApplyBarLoaderEnabling();
}

void frmMarelonDataPage::ApplyBarLoaderEnabling()
{
    const BarLoaderEnabling enabling =
        BarLoaderEnablingFor(ui_->optMagazine->isChecked(), ui_->cmbBarLoaderProgType->currentIndex());
    EnableSubProgramNumber(enabling.subProgramNumber);
    for (QWidget* w : {static_cast<QWidget*>(ui_->LblBarLoaderProgType), static_cast<QWidget*>(ui_->cmbBarLoaderProgType)})
        w->setEnabled(enabling.programType);
    EnableLineFields(enabling.mCodeFields);
}

void frmMarelonDataPage::cmbHeadComment_Click()
{
    const int head = ui_->cmbHeadComment->currentIndex();
    if (head >= 0 && head < headComments_.size())
        ui_->Comments->setText(headComments_[head]);
}

void frmMarelonDataPage::Comments_Change()
{
    const int head = ui_->cmbHeadComment->currentIndex();
    if (head >= 0 && head < headComments_.size())
        headComments_[head] = ui_->Comments->text();
}

void frmMarelonDataPage::SetStockFieldsVisible(bool outside, bool inside, bool polygon, bool profile)
{
    ui_->StockDiameter->setVisible(outside);
    ui_->StockDiameterTxt->setVisible(outside);
    ui_->InsideDiameter->setVisible(inside);
    ui_->InsideDiameterTxt->setVisible(inside);
    ui_->PolygonFrame->setVisible(polygon);
    ui_->ProfileStockTxt->setVisible(profile);
    ui_->SelectButton->setVisible(profile);
}

// Each stock type shows its own fields; the bar stock O.D. (814) and the tube
// I.D. (820) follow from them.
void frmMarelonDataPage::StockTypeC_Click()
{
    const auto setup = ActiveDocument()->MachineSetup();
    switch (ui_->StockTypeC->currentIndex()) {
    case kBar:
        ui_->StockDiameter->setText(NumberText(setup->StockDiameter()));
        SetStockFieldsVisible(true, false, false, false);
        ui_->txt814->setText(ui_->StockDiameter->text());
        ui_->txt814->setEnabled(false);
        ui_->txt820->setText(QStringLiteral("0"));
        break;
    case kTube:
        ui_->StockDiameter->setText(NumberText(setup->StockDiameter()));
        ui_->InsideDiameter->setText(NumberText(setup->StockInsideDiameter()));
        SetStockFieldsVisible(true, true, false, false);
        ui_->txt814->setText(ui_->StockDiameter->text());
        ui_->txt814->setEnabled(false);
        ui_->txt820->setText(ui_->InsideDiameter->text());
        break;
    case kPolygon:
        ui_->CircleDiameter->setText(NumberText(setup->StockDiameter()));
        ui_->BaseAngle->setText(QStringLiteral("0"));
        SelectList(*ui_->Sides, 0);
        SetStockFieldsVisible(false, false, true, false);
        SetPolygonDiameter();
        ui_->txt814->setEnabled(false);
        ui_->txt820->setText(QStringLiteral("0"));
        break;
    case kProfile:
        SetStockFieldsVisible(false, false, false, true);
        ui_->txt814->setEnabled(true);
        ui_->txt820->setText(QStringLiteral("0"));
        break;
    }
}

void frmMarelonDataPage::SetCirclePicture(bool insideCircle)
{
    ui_->CirclePicture->setPixmap(
        QPixmap(insideCircle ? QStringLiteral(":/datapage/IDcircle") : QStringLiteral(":/datapage/ODcircle")));
}

void frmMarelonDataPage::ODCircle_Click()
{
    SetCirclePicture(false);
    SetPolygonDiameter();
}

void frmMarelonDataPage::IDCircle_Click()
{
    SetCirclePicture(true);
    SetPolygonDiameter();
}

// Bar stock O.D. of the polygon: the circle's diameter on its outside circle,
// the diameter across the corners on its inside circle.
void frmMarelonDataPage::SetPolygonDiameter()
{
    if (ui_->ODCircle->isChecked()) {
        ui_->txt814->setText(ui_->CircleDiameter->text());
        return;
    }
    const QString diameter = ui_->CircleDiameter->text();
    const QString sides = ui_->Sides->currentText();
    if (!numeric::IsNumeric(diameter) || !numeric::IsNumeric(sides))
        return;
    ui_->txt814->setText(
        NumberText(PolygonOutsideDiameter(numeric::ToDouble(diameter), int(numeric::ToDouble(sides)), true)));
}

void frmMarelonDataPage::MyTabs_Click(int previousTab)
{
    Q_UNUSED(previousTab);
    const int tab = ui_->MyTabs->currentIndex();
    if (tab == kPartData)
        return;
    for (const char* name : kMachineGroup)
        SetTabStop(&Control<QWidget>(QLatin1String(name)), tab == kMachineData);
    for (const char* name : kMiscellaneousGroup)
        SetTabStop(&Control<QWidget>(QLatin1String(name)), tab == kMiscellaneous);
}

// ---- Leaving a field ----

void frmMarelonDataPage::CheckNumericEntry(QLineEdit& box)
{
    if (box.text().isEmpty())
        return;
    box.setText(box.text().replace(QLatin1Char(','), QLatin1Char('.')));
    double value = 0;
    if (numeric::Evaluate(box.text(), value) != numeric::kEvalOk) {
        MsgBox(Tr(QStringLiteral("Invalid Expression")), host::MsgButtons::OK, host::MsgIcon::Information,
               Tr(QStringLiteral("Error")));
        box.setSelection(0, int(box.text().length()));
        box.setFocus();
        return;
    }
    // Beyond 15 digits the mask would spell out hundreds of them: the value's
    // own short text instead ("1E+308"), which OK then refuses by its bound.
    const bool huge = !(std::abs(value) < 1e15);
    box.setText(huge ? numeric::NumberToText(value) : numeric::Format(value, QStringLiteral("####0.0000")));
}

// A diameter is positive; the parameter it gives follows it.
static void TakeAbsoluteDiameter(frmMarelonDataPage& form, QLineEdit& diameter, QLineEdit& parameter)
{
    form.CheckNumericEntry(diameter);
    if (!numeric::IsNumeric(diameter.text()))
        return;
    diameter.setText(NumberText(std::abs(numeric::ToDouble(diameter.text()))));
    parameter.setText(NumberText(numeric::ToDouble(diameter.text())));
}

void frmMarelonDataPage::StockDiameter_LostFocus()
{
    TakeAbsoluteDiameter(*this, *ui_->StockDiameter, *ui_->txt814);
}

void frmMarelonDataPage::InsideDiameter_LostFocus()
{
    TakeAbsoluteDiameter(*this, *ui_->InsideDiameter, *ui_->txt820);
}

void frmMarelonDataPage::CircleDiameter_LostFocus()
{
    CheckNumericEntry(*ui_->CircleDiameter);
    SetPolygonDiameter();
}

void frmMarelonDataPage::Sides_LostFocus()
{
    SetPolygonDiameter();
}

void frmMarelonDataPage::BaseAngle_LostFocus()
{
    const QString angle = ui_->BaseAngle->text();
    if (!numeric::IsNumeric(angle)) {
        ui_->BaseAngle->setText(QStringLiteral("0"));
        return;
    }
    const QString sides = ui_->Sides->currentText();
    if (numeric::IsNumeric(sides))
        ui_->BaseAngle->setText(NumberText(NormaliseBaseAngle(numeric::ToDouble(angle), int(numeric::ToDouble(sides)))));
}

// A program number that is no number becomes 0; the user is told first
// ("O1200" would otherwise turn into program 0 unseen) and finds the 0 selected.
void frmMarelonDataPage::ProgramNumber_LostFocus()
{
    QLineEdit& box = *ui_->ProgramNumber;
    const QString number = box.text();
    if (numeric::IsNumeric(number)) {
        box.setText(NumberText(std::abs(numeric::ToDouble(number))));
        return;
    }
    const bool typed = !number.trimmed().isEmpty();
    if (typed)
        ValidateNumber(ui_->lblProgramNumber->text(), box);
    box.setText(QStringLiteral("0"));
    if (typed) {
        box.setFocus();
        box.selectAll();
    }
}

// The collet extension goes into every pick-up operation of the document at
// once; the back spindle chuck position follows it.
void frmMarelonDataPage::txtColletExt_LostFocus()
{
    const auto document = ActiveDocument();
    const auto operations = document->Operations();
    const int count = operations->Count();
    for (int i = 1; i <= count; ++i) {
        const auto technology = operations->Item(i)->Technology();
        if (technology->TechnologyType() != kPickUpTechnology)
            continue;
        if (!ValidateNumber(ui_->lblColletExt->text(), *ui_->txtColletExt, 0.0, std::nullopt, true))
            break;
        technology->AsTechnology207()->setColletExtension(numeric::ToDouble(ui_->txtColletExt->text()));
    }
    const BackSpindleChuckPosition position = UpdateBackSpindleChuckPos(*document, ui_->txtColletExt->text());
    if (position.colletExtension)
        ui_->txtColletExt->setText(*position.colletExtension);
    ui_->txt821->setText(WithoutGrouping(position.chuckPosition));
}

// ---- Closing ----

// The tab that holds the field, the focus in the field and its text selected.
void frmMarelonDataPage::ShowFieldToCorrect(QWidget& field)
{
    for (QWidget* w = &field; w; w = w->parentWidget()) {
        const int tab = ui_->MyTabs->indexOf(w);
        if (tab >= 0) {
            ui_->MyTabs->setCurrentIndex(tab);
            break;
        }
    }
    activateWindow();
    field.setFocus(Qt::OtherFocusReason);
    if (auto* box = qobject_cast<QLineEdit*>(&field))
        box->selectAll();
}

// The bar stock O.D. beyond the machine's bar capacity is marked on the page,
// with the bound in its tooltip; OK asks before writing a computed one.
void frmMarelonDataPage::MarkBarCapacity()
{
    bool inch = false;
    ContinueOnError([&] { inch = ActiveDocument()->UnitSystem() == 70; });
    const QString text = ui_->txt814->text();
    if (!BeyondBarCapacity(text, inch)) {
        MarkOutOfRange(*ui_->txt814, QString());
        return;
    }
    MarkOutOfRange(*ui_->txt814,
                   Tr(QStringLiteral("Beyond the machine's bar capacity: it takes a bar stock O.D. from 0 to %1. "
                                     "OK asks before writing this value."))
                       .arg(numeric::NumberToText(BarCapacity(inch))));
}

// Shown again after the dialog hid itself (a pick): still open.
void frmMarelonDataPage::ShowAgain()
{
    ShowForm(this, false);
    Flags().dataPageAvailable = false;
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
