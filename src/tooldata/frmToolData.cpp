#include "tooldata/frmToolData.h"

#include "addin/UnitConversion.h"
#include "addin/host/Application.h"
#include "addin/host/Document.h"
#include "addin/host/HostError.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/Spindle.h"
#include "addin/host/Spindles.h"
#include "addin/host/Station.h"
#include "addin/host/Stations.h"
#include "addin/host/TechnologyParameter.h"
#include "addin/host/Tool.h"
#include "addin/host/Tools.h"
#include "addin/host/Turret.h"
#include "addin/host/Turrets.h"
#include "addin/settings/MachineCodes.h"
#include "addin/settings/SettingsStore.h"
#include "addin/ui/CarriedOverMark.h"
#include "addin/ui/HelpAccess.h"
#include "addin/ui/ListSelection.h"
#include "addin/ui/ModelessForm.h"
#include "addin/ui/UiServices.h"
#include "numeric/NumberText.h"
#include "addin/ui/Validation.h"
#include "addin/ui/ControlHandler.h"
#include "tooldata/frmEditHolder.h"
#include "tooldata/frmNewHolder.h"
#include "ui_frmToolData.h"

#include <QCursor>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPixmap>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTimer>

namespace marelon {
namespace {

const QString kMarelonTag = QStringLiteral("MARELON");
const QString kDataPageSection = QStringLiteral("Data Page Settings");
const QString kMachineNameKey = QStringLiteral("Machine Name");
const QString kCheckmark = QStringLiteral(":/tooldata/CHECKMARK");

enum GridColumn { kColT = 0, kColNumber = 1, kColOffset = 2, kColToolId = 3, kColUsed = 4, kColumns = 5 };
constexpr int kColumnTwips[kColumns] = {300, 400, 400, 2000, 300};
constexpr int kGridTwips = 3505;

QString headerText(int column)
{
    switch (column) {
    case kColNumber: return QStringLiteral("T#");
    case kColOffset: return QStringLiteral("O#");
    case kColToolId: return Tr(QStringLiteral("Tool ID"));
    default: return {};
    }
}

// The columns keep their widths in twips unless the font needs more for a
// header ("O#"); the grid is as wide as its columns and a vertical scroll
// bar, and never narrower than its width in twips. The header row must be filled.
void sizeGrid(QTableWidget& grid)
{
    const int dpi = grid.logicalDpiX();
    QStyleOptionViewItem option;
    option.initFrom(&grid);
    option.font = grid.font();
    const int gridLine = grid.showGrid() ? 1 : 0;
    int total = 0;
    for (int column = 0; column < kColumns; ++column) {
        const int header = grid.itemDelegate()->sizeHint(option, grid.model()->index(0, column)).width();
        const int width = std::max(dpi * kColumnTwips[column] / 1440, header + gridLine);
        grid.setColumnWidth(column, width);
        total += grid.columnWidth(column); // the header's minimum section size may have widened it
    }
    const int scrollBar = grid.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, grid.verticalScrollBar());
    const int chrome = 2 * grid.frameWidth() + scrollBar;
    grid.setFixedWidth(std::max(dpi * kGridTwips / 1440, total + chrome));
}

// One statement of a routine that goes on after a failure: a host refusal or
// a value that does not convert skips the statement, silently.
template <class F>
void skipOnFailure(F&& statement)
{
    try {
        statement();
    } catch (const host::HostError&) {
    } catch (const numeric::NumberError&) {
    }
}

bool isEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

// A machine number kept in a document or in the settings; one that is no
// 16-bit integer selects the first entry, as every unknown number does.
int16_t machineCode(const QString& stored)
{
    if (!numeric::IsNumeric(stored, QLocale::c()))
        return -1;
    try {
        return numeric::RoundToInt16(numeric::ToDouble(stored, QLocale::c()));
    } catch (const numeric::NumberError&) {
        return -1;
    }
}

// The value of a grid cell typed by the user, when it is a whole-number field's value.
std::optional<int32_t> cellNumber(const QString& text)
{
    if (!numeric::IsNumeric(text))
        return std::nullopt;
    try {
        return numeric::RoundToInt32(numeric::ToDouble(text));
    } catch (const numeric::NumberError&) {
        return std::nullopt;
    }
}

// A label's text as a number: the user's locale when it reads as one, else
// its leading number (0 when none).
double labelNumber(const QString& text)
{
    return numeric::IsNumeric(text) ? numeric::ToDouble(text) : numeric::LeadingNumber(text);
}

QString firstLine(const QString& comment)
{
    const qsizetype end = comment.indexOf(QStringLiteral("\r\n"));
    return end < 0 ? comment : comment.left(end);
}

// A tool as the grid names it: "T" and its number ("T07").
QString toolName(host::Tool& tool)
{
    QString name = QStringLiteral("T?");
    skipOnFailure([&] { name = QStringLiteral("T") + numeric::Format(tool.Number(), QStringLiteral("00")); });
    return name;
}

QTableWidgetItem* fixedCell(const QString& text)
{
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled);
    item->setBackground(QPalette().button());
    return item;
}

QTableWidgetItem* toolCell(const QString& text, Qt::Alignment alignment = Qt::AlignRight | Qt::AlignVCenter)
{
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled);
    item->setTextAlignment(alignment);
    return item;
}

} // namespace

frmToolData::frmToolData(std::shared_ptr<host::Application> application, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmToolData>()), application_(std::move(application))
{
    ui_->setupUi(this);
    // The edit box floats over the grid's cells.
    ui_->toolsLayout->removeWidget(ui_->EditBox);
    ui_->EditBox->setParent(ui_->ToolGrid->viewport());
    ui_->ToolGrid->horizontalHeader()->hide();
    ui_->ToolGrid->verticalHeader()->hide();
    ui_->ToolGrid->setFixedWidth(ui_->ToolGrid->logicalDpiX() * kGridTwips / 1440);

    mnuContext_ = new QMenu(this);
    mnuContext_->setObjectName(QStringLiteral("MnuContext"));
    renumber_ = mnuContext_->addAction(QString());
    renumber_->setObjectName(QStringLiteral("Renumber"));
    sort_ = mnuContext_->addAction(QString());
    sort_->setObjectName(QStringLiteral("Sort"));

    // Enter belongs to the grid and its edit box, never to a default button.
    for (auto* button : findChildren<QPushButton*>())
        button->setAutoDefault(false);

    ConnectHandler(this, ui_->cmbMachineName, &QComboBox::activated, &frmToolData::cmbMachineName_Click);
    ConnectHandler(this, ui_->cmbHolders, &QComboBox::activated, &frmToolData::cmbHolders_Click);
    ConnectHandler(this, ui_->cmdNew, &QPushButton::clicked, &frmToolData::cmdNew_Click);
    ConnectHandler(this, ui_->cmdEdit, &QPushButton::clicked, &frmToolData::cmdEdit_Click);
    ConnectHandler(this, ui_->cmdDelete, &QPushButton::clicked, &frmToolData::cmdDelete_Click);
    ConnectHandler(this, ui_->cmdSetData, &QPushButton::clicked, &frmToolData::cmdSetData_Click);
    ConnectHandler(this, ui_->cmdExit, &QPushButton::clicked, &frmToolData::cmdExit_Click);
    ConnectHandler(this, ui_->cmdHelp, &QPushButton::clicked, &frmToolData::cmdHelp_Click);
    ConnectHandler(this, renumber_, &QAction::triggered, &frmToolData::Renumber_Click);
    ConnectHandler(this, sort_, &QAction::triggered, &frmToolData::Sort_Click);
    ui_->ToolGrid->viewport()->installEventFilter(this);
    ui_->ToolGrid->installEventFilter(this);
    // The arrow keys, Home, End and Page keys choose a row as a click does.
    connect(ui_->ToolGrid, &QTableWidget::currentCellChanged, this, [this](int row, int column, int previousRow, int) {
        if (filling_ || row == previousRow || row < 1 || row > sortedTools_.size()
            || sortedTools_[row - 1] == currentTool_)
            return;
        RunControlHandler([&] { ChooseRow(row, column); });
    });
    ui_->EditBox->installEventFilter(this);
    for (QLineEdit* field : {ui_->txtToolXShift, ui_->txtToolYShift, ui_->txtToolZShift}) {
        field->installEventFilter(this);
        connect(field, &QLineEdit::textEdited, this, [this, field] { ConfirmToolField(*field); });
    }

    Form_Load();
    SizeSettingsColumns();
}

frmToolData::~frmToolData() = default;

// ---- loading ----------------------------------------------------------------

void frmToolData::Form_Load()
{
    SetCaptions();
    ui_->cmdSetData->setEnabled(false);
    for (QLineEdit* field : {ui_->txtToolXShift, ui_->txtToolYShift, ui_->txtToolZShift})
        field->setText(QStringLiteral("0"));

    FillMachineList();
    auto document = application_->ActiveDocument();
    SelectMachine(StoredMachinePosition(*document));

    auto spindles = document->MachineSetup()->Spindles();
    const QString machine = MachineName();
    backSpindleChoice_ = (machine.contains(QLatin1Char('E')) || machine.contains(QLatin1String("M2")))
        && spindles->Count() >= 2;
    ui_->Spindle_0->setVisible(backSpindleChoice_);
    ui_->Spindle_1->setVisible(backSpindleChoice_);
    if (backSpindleChoice_) {
        ui_->Spindle_0->setText(spindles->Item(1)->Name());
        ui_->Spindle_1->setText(spindles->Item(2)->Name());
    }

    if (document->Tools()->Count() == 0) {
        FillGrid({});
        ui_->ToolGrid->setEnabled(false);
    } else {
        ui_->ToolGrid->setEnabled(true);
        ToolListUpdate();
    }
    ui_->EditBox->hide();
}

// The columns of values keep one width whatever the holder shows: each is
// as wide as the longest shift text (a sign and 15 digits); every value box
// is as high as a text box, so that the rows line up; the description wraps.
void frmToolData::SizeSettingsColumns()
{
    QLabel& sample = *ui_->txtHolderXShift;
    const QString shown = sample.text();
    sample.setText(QStringLiteral("-0.000000000000000"));
    const int width = std::max(sample.sizeHint().width(), ui_->txtToolXShift->minimumSizeHint().width());
    sample.setText(shown);
    const int height = ui_->txtToolXShift->sizeHint().height();
    for (QLabel* box : {ui_->txtHolderXShift, ui_->txtHolderYShift, ui_->txtHolderZShift, ui_->lblHolderSpdlRot,
                        ui_->lblFeldraSpdlRot, ui_->lblGear1, ui_->lblTo, ui_->lblGear2, ui_->lblToolComment}) {
        box->setMinimumHeight(height);
        box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    }
    for (QLineEdit* field : {ui_->txtToolXShift, ui_->txtToolYShift, ui_->txtToolZShift, ui_->txtFeldraXShift,
                             ui_->txtFeldraYShift, ui_->txtFeldraZShift})
        field->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    QGridLayout& grid = *ui_->settingsLayout;
    for (int column = 1; column <= 3; ++column) {
        grid.setColumnMinimumWidth(column, width);
        grid.setColumnStretch(column, 1);
    }
    descriptionWidth_ = 3 * width + 2 * grid.horizontalSpacing();
    ui_->lblHolderDesc->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    ui_->lblHolderDesc->setWordWrap(true);
    ShowHolderDescription(ui_->lblHolderDesc->text());
}

// The whole description, on as many lines as it needs at the narrowest the
// dialog can be (two at least, so that most holders take the same room).
void frmToolData::ShowHolderDescription(const QString& description)
{
    QLabel& label = *ui_->lblHolderDesc;
    label.setText(description);
    label.setToolTip(description);
    if (descriptionWidth_ <= 0)
        return;
    const int twoLines = 2 * label.fontMetrics().lineSpacing() + 2 * label.frameWidth() + 2 * label.margin();
    label.setMinimumHeight(std::max(twoLines, label.heightForWidth(descriptionWidth_)));
}

void frmToolData::SetCaptions()
{
    TranslateForm(this);
    setWindowTitle(Tr(QStringLiteral("Tool Data")));
    const std::pair<QWidget*, const char*> captions[] = {
        {ui_->lblTools, "Tools"},           {ui_->lblMachine, "Machine Name"},
        {ui_->lblMarelonHolder, "Marelon Holder"}, {ui_->cmdNew, "New"},
        {ui_->cmdEdit, "Edit"},             {ui_->cmdDelete, "Del"},
        {ui_->lblHolderDescLabel, "Holder Description"}, {ui_->lblHolder, "Holder"},
        {ui_->lblTool, "Tool"},             {ui_->lblFeldra, "Feldra"},
        {ui_->lblXShift, "X Shift"},        {ui_->lblYShift, "Y Shift"},
        {ui_->lblZShift, "Z Shift"},        {ui_->lblSpindleRotation, "Spindle Rot."},
        {ui_->lblGearLabel, "Gear Ratio"},  {ui_->lblTo, "To"},
        {ui_->cmdSetData, "Set Data"},      {ui_->lblToolCommentLabel, "Tool Comment"},
        {ui_->cmdExit, "Exit"},             {ui_->cmdHelp, "Help"},
    };
    for (const auto& [control, english] : captions) {
        const QString text = Tr(QString::fromLatin1(english));
        if (auto* label = qobject_cast<QLabel*>(control))
            label->setText(text);
        else if (auto* button = qobject_cast<QAbstractButton*>(control))
            button->setText(text);
    }
    ui_->fraToolSettings->setTitle(Tr(QStringLiteral("Tool Settings")));
    renumber_->setText(Tr(QStringLiteral("Renumber With Station Number")));
    sort_->setText(Tr(QStringLiteral("Sort")));
}

void frmToolData::FillMachineList()
{
    ui_->cmbMachineName->clear();
    ui_->cmbMachineName->addItems(MachineNameList());
}

int frmToolData::StoredMachinePosition(host::Document& document)
{
    auto setup = document.MachineSetup();
    if (setup->MakerTag() == kMarelonTag) {
        const QString stored = setup->MachineCode();
        return stored.isEmpty() ? 0 : MachineCodeToListIndex(machineCode(stored));
    }
    const QString stored = GetSetting(kAppName, kDataPageSection, kMachineNameKey, QStringLiteral("0"));
    return MachineCodeToListIndex(machineCode(stored));
}

void frmToolData::SelectMachine(int position)
{
    SelectListIndex(*ui_->cmbMachineName, position, [this] { cmbMachineName_Click(); });
}

void frmToolData::SelectHolder(int position)
{
    SelectListIndex(*ui_->cmbHolders, position, [this] { cmbHolders_Click(); });
}

QString frmToolData::MachineName() const
{
    return ui_->cmbMachineName->currentText();
}

int frmToolData::DocumentUnits()
{
    return application_->ActiveDocument()->UnitSystem();
}

// ---- holders ----------------------------------------------------------------

void frmToolData::cmbMachineName_Click()
{
    const QString file = HolderFileName(MachineName());
    if (!file.isEmpty())
        holderFile_ = UserDataFile(application_->AddInFolder(), kHolderFolder + file);
    sToolDataFile_ = holderFile_.ReadPath();
    LoadHolderFile();
    ShowLibraryInTitle();
}

void frmToolData::ReadHolders()
{
    ui_->cmbHolders->clear();
    sToolDataFile_ = holderFile_.ReadPath();
    holders_ = ReadHolderFile(sToolDataFile_);
    for (const auto& holder : holders_)
        ui_->cmbHolders->addItem(holder.name);
}

void frmToolData::LoadHolderFile()
{
    EmptyHolderList();
    if (!HolderFileExists(sToolDataFile_)) {
        MsgBox(Tr(QStringLiteral("The file - ")) + QDir::toNativeSeparators(sToolDataFile_)
               + Tr(QStringLiteral(" - is not installed! This is needed to set the tool holder shift data!")));
        return;
    }
    ReadHolders();
    SelectHolder(0);
}

void frmToolData::EmptyHolderList()
{
    ui_->cmbHolders->clear();
    holders_.clear();
    ShowHolderDescription(QString());
    for (QLabel* field : {ui_->txtHolderXShift, ui_->txtHolderYShift, ui_->txtHolderZShift, ui_->lblHolderSpdlRot,
                          ui_->lblGear1, ui_->lblGear2})
        field->clear();
}

void frmToolData::cmbHolders_Click()
{
    const int position = ui_->cmbHolders->currentIndex();
    if (position < 0 || position >= holders_.size())
        return;
    const HolderRecord& holder = holders_[position];
    const int units = DocumentUnits();
    ShowHolderDescription(holder.description);
    ui_->txtHolderXShift->setText(HolderShiftText(holder.xShift, units));
    ui_->txtHolderZShift->setText(HolderShiftText(holder.zShift, units));
    ui_->txtHolderYShift->setText(HolderShiftText(holder.yShift, units));
    const QString rotation = SpindleRotationText(holder.spindleRotation);
    ui_->lblHolderSpdlRot->setText(rotation.isEmpty() ? QString() : Tr(rotation));
    ui_->lblGear1->setText(numeric::NumberToText(holder.gearRatio1));
    ui_->lblGear2->setText(numeric::NumberToText(holder.gearRatio2));
}

void frmToolData::cmdNew_Click()
{
    const int selected = ui_->cmbHolders->currentIndex();
    const int countBefore = ui_->cmbHolders->count();
    {
        frmNewHolder dialog(application_, holderFile_, this);
        ShowForm(&dialog, true);
    }
    ReadHolders();
    ShowLibraryInTitle();
    SelectHolder(ui_->cmbHolders->count() > countBefore ? ui_->cmbHolders->count() - 1 : selected);
}

void frmToolData::cmdEdit_Click()
{
    const int selected = ui_->cmbHolders->currentIndex();
    {
        frmEditHolder dialog(application_, holderFile_, ui_->cmbHolders->currentText(), this);
        ShowForm(&dialog, true);
    }
    ReadHolders();
    ShowLibraryInTitle();
    SelectHolder(selected);
}

void frmToolData::cmdDelete_Click()
{
    if (ui_->cmbHolders->count() < 1)
        return;
    const int selected = ui_->cmbHolders->currentIndex();
    const QString file = holderFile_.PathForChange();
    if (file.isEmpty())
        return; // neither the library nor a copy of it can be written: nothing changes
    if (DeleteHolder(file, selected) > 1) {
        ReadHolders();
        SelectHolder(ui_->cmbHolders->count() > selected ? selected : 0);
    } else {
        sToolDataFile_ = holderFile_.ReadPath();
        EmptyHolderList();
    }
    ShowLibraryInTitle();
}

void frmToolData::ShowLibraryInTitle()
{
    QString title = Tr(QStringLiteral("Tool Data"));
    if (HolderFileExists(sToolDataFile_)) {
        const QString kind = holderFile_.HasUserCopy() ? QStringLiteral("%1 (your own copy)")
                                                       : QStringLiteral("%1 (shipped with the add-in)");
        title += QStringLiteral(" - ") + Tr(kind).arg(QFileInfo(sToolDataFile_).fileName());
    }
    setWindowTitle(title);
}

// ---- the selected tool ------------------------------------------------------

void frmToolData::ShowHolderInformation()
{
    host::Tool& tool = *currentTool_;
    ui_->cmdSetData->setEnabled(true);
    skipOnFailure([&] { ui_->txtFeldraXShift->setText(numeric::NumberToText(tool.XShift() * 2)); });
    skipOnFailure([&] { ui_->txtFeldraYShift->setText(numeric::NumberToText(tool.YShift())); });
    skipOnFailure([&] { ui_->txtFeldraZShift->setText(numeric::NumberToText(tool.ZShift())); });
    skipOnFailure([&] { SelectHolder(numeric::RoundToInt32(tool.HolderIndex())); });
    skipOnFailure([&] {
        ui_->Spindle_0->setEnabled(backSpindleChoice_);
        ui_->Spindle_1->setEnabled(backSpindleChoice_);
        if (backSpindleChoice_)
            (tool.BackSpindle() == 0 ? ui_->Spindle_0 : ui_->Spindle_1)->setChecked(true);
    });
    skipOnFailure([&] {
        const QString direction = SpindleRotationText(tool.SpindleDirection());
        if (!direction.isEmpty())
            ui_->lblFeldraSpdlRot->setText(Tr(direction));
    });
    skipOnFailure([&] { GetToolShift(); });
    skipOnFailure([&] { ui_->lblToolComment->setText(firstLine(tool.Comment())); });
}

void frmToolData::GetToolShift()
{
    ToolShiftFields shift;
    try {
        shift = ToolShiftFromGeometry(*currentTool_);
    } catch (...) {
        ShowToolShift({}); // the geometry could not be read: every field keeps its text
        throw;
    }
    ShowToolShift(shift);
}

// A field whose value the tool's geometry gives shows it; any other keeps its
// text, and is marked as carried over when that text belongs to another tool
// or to none (the value the dialog started with).
void frmToolData::ShowToolShift(const ToolShiftFields& shift)
{
    const std::pair<const std::optional<double>&, QLineEdit*> fields[] = {
        {shift.x, ui_->txtToolXShift}, {shift.z, ui_->txtToolZShift}, {shift.y, ui_->txtToolYShift}};
    for (const auto& [value, field] : fields) {
        if (value) {
            field->setText(numeric::NumberToText(*value));
            ConfirmToolField(*field);
            continue;
        }
        const ToolPtr source = toolFieldSource_.value(field);
        if (!source)
            ShowCarriedOver(*field, Tr(QStringLiteral("no tool (opening value)")));
        else
            ShowCarriedOver(*field, source != currentTool_ ? toolName(*source) : QString());
    }
}

void frmToolData::ConfirmToolField(QLineEdit& field)
{
    toolFieldSource_.insert(&field, currentTool_);
    ShowCarriedOver(field, QString());
}

void frmToolData::ShowCarriedOver(QLineEdit& field, const QString& fromTool)
{
    MarkCarriedOver(field, fromTool);
    if (fromTool.isEmpty())
        carriedFrom_.remove(&field);
    else
        carriedFrom_.insert(&field, fromTool);
}

// Nothing is written while a Tool field shows another tool's value: the
// message names the fields, the first of them gets the focus.
bool frmToolData::RefuseCarriedOverFields()
{
    const std::pair<QLineEdit*, const char*> fields[] = {{ui_->txtToolXShift, "Tool X Shift"},
                                                         {ui_->txtToolZShift, "Tool Z Shift"},
                                                         {ui_->txtToolYShift, "Tool Y Shift"}};
    QStringList carried;
    QLineEdit* first = nullptr;
    for (const auto& [field, caption] : fields) {
        const QString from = CarriedOverFrom(*field);
        if (from.isEmpty())
            continue;
        carried.append(Tr(QString::fromLatin1(caption)) + QStringLiteral(" (") + from + QLatin1Char(')'));
        if (!first)
            first = field;
    }
    if (!first)
        return false;
    const QString crLf = QStringLiteral("\r\n");
    MsgBox(Tr(QStringLiteral("Nothing was written. These fields still show a value carried over from another tool:"))
           + crLf + carried.join(crLf) + crLf + crLf
           + Tr(QStringLiteral("Press Enter in a field to keep its value for %1, or type the tool's own value."))
                 .arg(toolName(*currentTool_)));
    first->setFocus();
    first->selectAll();
    return true;
}

void frmToolData::cmdSetData_Click()
{
    if (!currentTool_)
        return;
    if (ui_->cmbHolders->currentIndex() < 0) {
        MsgBox(Tr(QStringLiteral("Please select a holder before setting the tool data.")));
        return;
    }
    if (RefuseCarriedOverFields())
        return;
    host::Tool& tool = *currentTool_;
    auto document = application_->ActiveDocument();
    document->setUpdateState(false);
    if (!ValidateNumber(Tr(QStringLiteral("Tool X Shift")), *ui_->txtToolXShift)
        || !ValidateNumber(Tr(QStringLiteral("Tool Z Shift")), *ui_->txtToolZShift)
        || !ValidateNumber(Tr(QStringLiteral("Tool Y Shift")), *ui_->txtToolYShift))
        return;

    using numeric::ToDouble;
    const double resultX = ToDouble(ui_->txtHolderXShift->text()) + ToDouble(ui_->txtToolXShift->text());
    const double resultY = ToDouble(ui_->txtHolderYShift->text()) + ToDouble(ui_->txtToolYShift->text());
    ui_->txtFeldraXShift->setText(numeric::NumberToText(resultX));
    ui_->txtFeldraYShift->setText(numeric::NumberToText(resultY));

    const bool onBackSpindle = backSpindleChoice_ && ui_->Spindle_1->isChecked();
    double resultZ = ToDouble(ui_->txtHolderZShift->text()) + ToDouble(ui_->txtToolZShift->text());
    if (onBackSpindle)
        resultZ -= document->MachineSetup()->Turrets()->Item(tool.TurretNumber())->ZOffset();
    ui_->txtFeldraZShift->setText(numeric::NumberToText(resultZ));

    if (backSpindleChoice_)
        tool.setBackSpindle(onBackSpindle ? 1 : 0);

    const QString forward = Tr(QStringLiteral("Forward"));
    const QString reverse = Tr(QStringLiteral("Reverse"));
    const QString holderRotation = ui_->lblHolderSpdlRot->text();
    if (holderRotation == forward || holderRotation == reverse)
        ui_->lblFeldraSpdlRot->setText(holderRotation);

    const int documentUnits = document->UnitSystem();
    const int toolUnits = tool.UnitSystem();
    auto toTool = [&](QLineEdit* result) {
        return DocumentToTool(ToDouble(result->text()), documentUnits, toolUnits);
    };
    tool.setXShift(toTool(ui_->txtFeldraXShift) / 2);
    tool.setYShift(toTool(ui_->txtFeldraYShift));
    tool.setZShift(toTool(ui_->txtFeldraZShift));
    tool.setHolderIndex(ui_->cmbHolders->currentIndex());
    const QString rotation = ui_->lblFeldraSpdlRot->text();
    if (rotation == forward)
        tool.setSpindleDirection(-1);
    else if (rotation == reverse)
        tool.setSpindleDirection(1);
    // The tool's comment is left as it is.

    const double gear1 = labelNumber(ui_->lblGear1->text());
    const double gear2 = labelNumber(ui_->lblGear2->text());
    if (gear1 != 0 && gear2 != 0)
        tool.setGearRatio(gear2 / gear1);
}

// ---- the tool list ----------------------------------------------------------

void frmToolData::ToolListUpdate()
{
    auto tools = application_->ActiveDocument()->Tools();
    if (tools->Count() == 0)
        return;
    sortedTools_ = SortTools(*tools);
    FillGrid(sortedTools_);
}

void frmToolData::FillGrid(const QList<ToolPtr>& tools)
{
    QTableWidget& grid = *ui_->ToolGrid;
    ui_->EditBox->hide();
    filling_ = true;
    grid.clear();
    grid.setColumnCount(kColumns);
    grid.setRowCount(int(tools.size()) + 1);
    for (int column = 0; column < kColumns; ++column)
        grid.setItem(0, column, fixedCell(headerText(column)));
    sizeGrid(grid);

    auto document = application_->ActiveDocument();
    const QPixmap checkmark(kCheckmark);
    for (int row = 1; row <= tools.size(); ++row) {
        host::Tool& tool = *tools[row - 1];
        grid.setItem(row, kColT, fixedCell(QStringLiteral("T")));
        grid.setItem(row, kColNumber, toolCell(numeric::Format(tool.Number(), QStringLiteral("00"))));
        grid.setItem(row, kColOffset, toolCell(numeric::Format(GetToolLengthComp(tool), QStringLiteral("00"))));
        grid.setItem(row, kColToolId, toolCell(tool.ToolID(), Qt::AlignLeft | Qt::AlignVCenter));
        auto* used = toolCell(QString(), Qt::AlignCenter);
        if (document->IsToolUsed(tools[row - 1]))
            used->setData(Qt::DecorationRole, checkmark);
        grid.setItem(row, kColUsed, used);
    }
    filling_ = false;
    if (tools.isEmpty())
        return;
    // The tool chosen before stays chosen (sorting, renumbering); else the first row.
    const int kept = currentTool_ ? int(tools.indexOf(currentTool_)) : -1;
    const int row = kept >= 0 ? kept + 1 : 1;
    skipOnFailure([&] { ChooseRow(row, kColNumber); });
}

void frmToolData::SetBoldRow(int row)
{
    QTableWidget& grid = *ui_->ToolGrid;
    for (int r = 1; r < grid.rowCount(); ++r) {
        for (int column = kColNumber; column <= kColToolId; ++column) {
            if (QTableWidgetItem* item = grid.item(r, column)) {
                QFont font = item->font();
                font.setBold(r == row);
                item->setFont(font);
            }
        }
    }
}

void frmToolData::ToolGrid_MouseUp(Qt::MouseButton button, int row, int column)
{
    if (button == Qt::RightButton) {
        mnuContext_->popup(QCursor::pos());
        return;
    }
    if (button != Qt::LeftButton || row < 1 || row > sortedTools_.size())
        return;
    ChooseRow(row, column);
}

// The tool of a grid row becomes the one shown: the row bold and current, the
// tool's values and its holder on the right. A click, an arrow key and the
// grid's filling all come here, so that the row the grid shows as chosen and
// the values beside it are always the same tool's.
void frmToolData::ChooseRow(int row, int column)
{
    clickedRow_ = row;
    clickedColumn_ = std::max(column, int(kColNumber)); // the fixed column is never current
    currentTool_ = sortedTools_[row - 1];

    auto spindles = application_->ActiveDocument()->MachineSetup()->Spindles();
    backSpindleChoice_ = spindles->Count() >= 2 && currentTool_->TurretNumber() == 2
        && MachineName().contains(QLatin1String("M2"));
    SetBoldRow(row);
    ShowHolderInformation();
    ui_->ToolGrid->setCurrentCell(clickedRow_, clickedColumn_);
}

void frmToolData::ToolGrid_DblClick()
{
    OpenEditBox();
}

void frmToolData::ToolGrid_KeyDown(int key)
{
    QTableWidget& grid = *ui_->ToolGrid;
    if (isEnter(key)) {
        OpenEditBox();
    } else if (key == Qt::Key_Delete && grid.currentRow() >= 1) {
        if (QTableWidgetItem* item = grid.currentItem())
            item->setText(QString());
    }
}

void frmToolData::OpenEditBox()
{
    QTableWidget& grid = *ui_->ToolGrid;
    QTableWidgetItem* item = grid.currentItem();
    if (!item || grid.currentRow() < 1 || grid.currentColumn() < kColNumber || grid.currentColumn() == kColUsed)
        return;
    QLineEdit& box = *ui_->EditBox;
    box.setGeometry(grid.visualItemRect(item));
    box.setText(item->text());
    box.selectAll();
    box.show();
    box.setFocus();
}

void frmToolData::EditBox_KeyDown(int key)
{
    if (isEnter(key))
        CommitEditBox();
}

void frmToolData::CommitEditBox()
{
    QTableWidget& grid = *ui_->ToolGrid;
    const int row = grid.currentRow();
    const int column = grid.currentColumn();
    QTableWidgetItem* item = grid.currentItem();
    if (item && row >= 1 && row <= sortedTools_.size()) {
        host::Tool& tool = *sortedTools_[row - 1];
        const QString text = ui_->EditBox->text();
        if (column == kColNumber || column == kColOffset) {
            if (const auto value = cellNumber(text)) {
                item->setText(numeric::Format(*value, QStringLiteral("00")));
                if (column == kColNumber)
                    tool.setNumber(*value);
                else
                    tool.Parameter(kLengthCompParameter)->setValue(double(*value));
            }
        } else if (column == kColToolId) {
            skipOnFailure([&] { tool.setToolID(text); });
            item->setText(tool.ToolID());
        }
    }
    if (column < kColUsed)
        grid.setCurrentCell(row, column + 1);
    grid.setFocus();
    ui_->EditBox->hide();
}

void frmToolData::EditBox_LostFocus()
{
    ui_->EditBox->hide();
}

void frmToolData::txtToolXShift_GotFocus()
{
    ui_->txtToolXShift->selectAll();
}

void frmToolData::txtToolYShift_GotFocus()
{
    ui_->txtToolYShift->selectAll();
}

void frmToolData::txtToolZShift_GotFocus()
{
    ui_->txtToolZShift->selectAll();
}

void frmToolData::Sort_Click()
{
    sortedTools_ = SortTools(*application_->ActiveDocument()->Tools());
    FillGrid(sortedTools_);
}

void frmToolData::Renumber_Click()
{
    auto document = application_->ActiveDocument();
    auto tools = document->Tools();
    auto turrets = document->MachineSetup()->Turrets();
    const int count = tools->Count();
    for (int i = 1; i <= count; ++i) {
        auto tool = tools->Item(i);
        const int turret = tool->TurretNumber();
        if (turret <= 0)
            continue;
        const int number = turrets->Item(turret)->Stations()->Item(tool->StationIndex())->Number();
        tool->setNumber(number);
        tool->Parameter(kLengthCompParameter)->setValue(number);
    }
    Sort_Click();
}

void frmToolData::cmdExit_Click()
{
    close();
}

void frmToolData::cmdHelp_Click()
{
    OpenHelpTopic(*application_, kAddInHelpFile, QStringLiteral("TooData.htm"));
}

// ---- events -----------------------------------------------------------------

bool frmToolData::eventFilter(QObject* watched, QEvent* event)
{
    QTableWidget& grid = *ui_->ToolGrid;
    const QEvent::Type type = event->type();
    if (watched == grid.viewport() && type == QEvent::MouseButtonRelease) {
        const QPoint at = static_cast<QMouseEvent*>(event)->position().toPoint();
        const auto button = static_cast<QMouseEvent*>(event)->button();
        RunControlHandler([&] { ToolGrid_MouseUp(button, grid.rowAt(at.y()), grid.columnAt(at.x())); });
    } else if (watched == grid.viewport() && type == QEvent::MouseButtonDblClick) {
        RunControlHandler([this] { ToolGrid_DblClick(); });
        return true;
    } else if (watched == &grid && type == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (isEnter(key) || key == Qt::Key_Delete) {
            RunControlHandler([&] { ToolGrid_KeyDown(key); });
            return true;
        }
    } else if (watched == ui_->EditBox && type == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (isEnter(key)) {
            RunControlHandler([&] { EditBox_KeyDown(key); });
            return true;
        }
        if (key == Qt::Key_Escape) {
            // Escape leaves the cell as it was; the dialog stays open.
            grid.setFocus();
            EditBox_LostFocus();
            return true;
        }
    } else if (type == QEvent::KeyPress && isEnter(static_cast<QKeyEvent*>(event)->key())
               && (watched == ui_->txtToolXShift || watched == ui_->txtToolYShift || watched == ui_->txtToolZShift)) {
        ConfirmToolField(*static_cast<QLineEdit*>(watched));
        return true;
    } else if (watched == ui_->EditBox && type == QEvent::FocusOut) {
        EditBox_LostFocus();
    } else if (type == QEvent::FocusIn) {
        // After the click that gave the focus has placed the cursor.
        if (watched == ui_->txtToolXShift)
            QTimer::singleShot(0, this, [this] { txtToolXShift_GotFocus(); });
        else if (watched == ui_->txtToolYShift)
            QTimer::singleShot(0, this, [this] { txtToolYShift_GotFocus(); });
        else if (watched == ui_->txtToolZShift)
            QTimer::singleShot(0, this, [this] { txtToolZShift_GotFocus(); });
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace marelon
