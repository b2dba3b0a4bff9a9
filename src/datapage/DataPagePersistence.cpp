#include "datapage/DataPagePersistence.h"

#include "addin/ContinueOnError.h"
#include "addin/host/Document.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/NCHead.h"
#include "addin/host/NCHeads.h"
#include "addin/settings/MachineCodes.h"
#include "addin/settings/SettingsStore.h"
#include "addin/ui/UiServices.h"
#include "datapage/BarLoader.h"
#include "datapage/DataPageSettings.h"
#include "datapage/GangToolPatterns.h"
#include "datapage/MachineCatalogue.h"
#include "datapage/StockDefinition.h"
#include "datapage/frmMarelonDataPage.h"
#include "numeric/NumberText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include <cmath>

namespace marelon {
namespace {

QString Text(double value)
{
    return numeric::NumberToText(value);
}

int16_t Whole(double value)
{
    return numeric::RoundToInt16(value);
}

// The settings store's text as a boolean: the words True and False, or a number.
bool ToBoolean(const QString& text)
{
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return false;
    return numeric::ToDouble(text) != 0;
}

// The Machine Name list's position of a machine code as the part or the
// store keeps it. A code that does not convert ("abc", "1e10") is an unknown
// code: the list's first model, so that a model and its layout are always there.
int16_t MachineListPosition(const QString& code)
{
    const QString text = code.trimmed();
    if (text.isEmpty() || !numeric::IsNumeric(text))
        return 0;
    const double value = numeric::ToDouble(text);
    if (!(std::abs(value) < 32767.5))
        return 0;
    return MachineCodeToListIndex(Whole(value));
}

void SetMagazine(frmMarelonDataPage& form, bool magazine)
{
    form.Control<QRadioButton>(magazine ? QStringLiteral("optMagazine") : QStringLiteral("optHydrostatic"))
        .setChecked(true);
}

// A stored settings value, converted by the field's type, into its control.
void PutSetting(frmMarelonDataPage& form, const DataPageField& field, const QString& text)
{
    const QString control = QLatin1String(field.control);
    switch (field.type) {
    case FieldType::ListPosition: {
        const int16_t position =
            field.encoding == Encoding::MachineCode ? MachineListPosition(text) : Whole(numeric::ToDouble(text));
        form.SelectList(form.Control<QComboBox>(control), position);
        break;
    }
    case FieldType::Double:
        form.Control<QLineEdit>(control).setText(Text(numeric::ToDouble(text)));
        break;
    case FieldType::Integer:
        form.Control<QLineEdit>(control).setText(QString::number(Whole(numeric::ToDouble(text))));
        break;
    case FieldType::Boolean:
        SetMagazine(form, ToBoolean(text));
        break;
    case FieldType::CheckBox: {
        const int16_t value = Whole(numeric::ToDouble(text));
        if (value == 0 || value == 1)
            form.Control<QCheckBox>(control).setChecked(value == 1);
        break;
    }
    case FieldType::Text:
        form.Control<QLineEdit>(control).setText(text);
        break;
    }
}

// A field's control as the settings store keeps it.
QString SettingText(frmMarelonDataPage& form, const DataPageField& field)
{
    const QString control = QLatin1String(field.control);
    switch (field.type) {
    case FieldType::ListPosition: {
        const int position = form.Control<QComboBox>(control).currentIndex();
        if (field.encoding == Encoding::MachineCode)
            return QString::number(ListIndexToMachineCode(int16_t(position)));
        return QString::number(position);
    }
    case FieldType::Boolean:
        return form.Control<QRadioButton>(control).isChecked() ? QStringLiteral("True") : QStringLiteral("False");
    case FieldType::CheckBox:
        return form.Control<QCheckBox>(control).isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    default:
        return form.Control<QLineEdit>(control).text();
    }
}

void LoadSettings(frmMarelonDataPage& form)
{
    for (const DataPageField& field : DataPageFields()) {
        if (field.settings != SettingsUse::ReadWrite)
            continue;
        ContinueOnError([&] {
            PutSetting(form, field,
                       GetSetting(kAppName, kDataPageSection, QLatin1String(field.settingsKey),
                                  QLatin1String(field.defaultValue)));
        });
    }
}

// The list position of a drill holder list from its code and the model's offset.
void SelectDrillHolder(frmMarelonDataPage& form, const char* list, const char* code, std::optional<int> offset)
{
    if (!offset)
        return;
    const int position = Whole(numeric::ToDouble(form.Control<QLineEdit>(QLatin1String(code)).text())) - *offset;
    form.SelectList(form.Control<QComboBox>(QLatin1String(list)), position);
}

void SelectEntry(frmMarelonDataPage& form, QComboBox& list, const QString& text)
{
    form.SelectList(list, list.findText(text));
}

// One field from the document's machine setup into its control.
void LoadField(frmMarelonDataPage& form, host::MachineSetup& setup, const DataPageField& field, bool& barLoaderDone)
{
    const QString control = QLatin1String(field.control);
    const QString model = form.MachineName();
    switch (field.encoding) {
    case Encoding::Number:
        form.Control<QLineEdit>(control).setText(Text((setup.*field.property.get)()));
        break;
    case Encoding::PartsPerChuck:
        form.Control<QLineEdit>(control).setText(QString::number(numeric::RoundToInt32(setup.Param819()) % 1000));
        break;
    case Encoding::PolarMode:
        form.ShowPolarMode(numeric::RoundToInt32(setup.Param819()) / 1000);
        break;
    case Encoding::GangPattern:
        SelectPatternByCode(form.Control<QComboBox>(control), Whole(setup.Param990()),
                            [&form] { form.cmbGangHolder_Click(); });
        break;
    case Encoding::FrontDrillHolder:
        SelectDrillHolder(form, field.control, "txt991", FrontDrillHolderOffset(model));
        break;
    case Encoding::BackDrillHolder:
        SelectDrillHolder(form, field.control, "txt992", BackDrillHolderOffset(model));
        break;
    case Encoding::BackSpindleCode:
        if (const auto entry = BackSpindleEntry(model, Whole(setup.Param893())))
            SelectEntry(form, form.Control<QComboBox>(control), Tr(*entry));
        break;
    case Encoding::BackSpindleExtension:
        if (model == QLatin1String("L4 25-32")) {
            const QString stored = setup.BackSpindleExtension();
            if (!stored.isEmpty()) {
                const double value = numeric::ToDouble(stored);
                form.SelectList(form.Control<QComboBox>(control), value >= 1 ? int(value) - 1 : 0);
            }
        }
        break;
    case Encoding::CheckBox01:
        form.Control<QCheckBox>(control).setChecked((setup.*field.property.get)() == 1);
        break;
    case Encoding::BarLoader:
        if (!barLoaderDone) {
            barLoaderDone = true;
            RestoreBarLoaderSettings(form);
        }
        break;
    default: // the machine name is selected first, the stock and the program after the fields
        break;
    }
}

// The Z facing amount, lengths and program of the document.
void LoadPartAndProgram(frmMarelonDataPage& form, host::MachineSetup& setup)
{
    auto put = [&form](const char* control, const QString& text) {
        form.Control<QLineEdit>(QLatin1String(control)).setText(text);
    };
    ContinueOnError([&] { put("Zamount", Text(-setup.StockFrontZ())); });
    ContinueOnError([&] { put("PartLength", Text(setup.PartLength())); });
    ContinueOnError([&] { put("StockLength", Text(setup.StockLength())); });
    ContinueOnError([&] { put("ProgramNumber", QString::number(setup.ProgramNumber())); });
    ContinueOnError([&] { put("ProgramName", setup.ProgramName()); });
}

// The stock type and its fields from the document's stock code; the type's
// own handler fills the diameters. A document without a stock code, or with
// one that cannot be read or names no stock type, has a bar.
void LoadStock(frmMarelonDataPage& form, host::MachineSetup& setup)
{
    StockChoice stock;
    ContinueOnError([&] {
        const QString code = setup.StockCode().trimmed();
        if (numeric::IsNumeric(code))
            stock = UnpackStockCode(numeric::ToDouble(code));
    });
    form.SelectList(form.Control<QComboBox>(QStringLiteral("StockTypeC")), stock.type);
    if (stock.type != kPolygon)
        return;
    form.SelectList(form.Control<QComboBox>(QStringLiteral("Sides")), stock.sidesPosition);
    form.Control<QLineEdit>(QStringLiteral("BaseAngle")).setText(QString::number(stock.baseAngle));
    ContinueOnError([&] { form.Control<QLineEdit>(QStringLiteral("CircleDiameter")).setText(Text(setup.StockDiameter())); });
    // The circle's option last, so that the bar stock O.D. follows the sides and diameter just loaded.
    form.Control<QRadioButton>(stock.insideCircle ? QStringLiteral("IDCircle") : QStringLiteral("ODCircle"))
        .setChecked(true);
    ContinueOnError([&] { stock.insideCircle ? form.IDCircle_Click() : form.ODCircle_Click(); });
}

// The loader kind and program type of a bar loader type code: 0 hydrostatic,
// 1 magazine with a sub program, 2 magazine with the M code.
void ApplyBarLoaderType(frmMarelonDataPage& form, int type)
{
    if (type < 0 || type > 2)
        return;
    SetMagazine(form, type != 0);
    if (type != 0)
        form.SelectList(form.Control<QComboBox>(QStringLiteral("cmbBarLoaderProgType")), type - 1);
}

} // namespace

void FillHeadList(frmMarelonDataPage& form)
{
    auto& list = form.Control<QComboBox>(QStringLiteral("cmbHeadComment"));
    list.clear();
    const int count = form.ActiveDocument()->MachineSetup()->Heads()->Count();
    for (int head = 1; head <= count; ++head)
        list.addItem(Tr(QStringLiteral("Head")) + QLatin1Char('-') + QString::number(head));
    list.setCurrentIndex(-1);
}

void LoadHeads(frmMarelonDataPage& form)
{
    const auto setup = form.ActiveDocument()->MachineSetup();
    QStringList& comments = form.HeadComments();
    comments.clear();
    FillHeadList(form);
    const int count = form.Control<QComboBox>(QStringLiteral("cmbHeadComment")).count();
    for (int head = 1; head <= count; ++head) {
        comments << QString();
        ContinueOnError([&] { comments.last() = setup->Heads()->Item(head)->Comment(); });
    }
    form.SelectList(form.Control<QComboBox>(QStringLiteral("cmbHeadComment")), 0);
    ContinueOnError([&] {
        const auto first = setup->Heads()->Item(1);
        ContinueOnError([&] { form.Control<QLineEdit>(QStringLiteral("ProgramName")).setText(first->ProgramName()); });
        ContinueOnError([&] {
            form.Control<QLineEdit>(QStringLiteral("ProgramNumber")).setText(QString::number(first->ProgramNumber()));
        });
        ContinueOnError([&] {
            form.SelectList(form.Control<QComboBox>(QStringLiteral("NCCodeUnit")), first->OutputUnit() - 70);
        });
    });
}

void RefreshHeads(frmMarelonDataPage& form)
{
    const auto heads = form.ActiveDocument()->MachineSetup()->Heads();
    QStringList& comments = form.HeadComments();
    FillHeadList(form);
    const int count = form.Control<QComboBox>(QStringLiteral("cmbHeadComment")).count();
    while (comments.size() > count)
        comments.removeLast();
    while (comments.size() < count) {
        comments << QString();
        ContinueOnError([&] { comments.last() = heads->Item(int(comments.size()))->Comment(); });
    }
    form.SelectList(form.Control<QComboBox>(QStringLiteral("cmbHeadComment")), 0);
}

void GetDataForNewFile(frmMarelonDataPage& form)
{
    ContinueOnError([&] { LoadHeads(form); });
    ContinueOnError([&] {
        const auto setup = form.ActiveDocument()->MachineSetup();
        LoadPartAndProgram(form, *setup);
        LoadStock(form, *setup);
    });
    LoadSettings(form);
    ContinueOnError([&] {
        auto& programType = form.Control<QComboBox>(QStringLiteral("cmbBarLoaderProgType"));
        if (form.Control<QRadioButton>(QStringLiteral("optMagazine")).isChecked() && programType.currentIndex() != 1)
            form.SelectList(programType, 0);
        form.ApplyBarLoaderEnabling();
    });
}

void GetDataForExistingFile(frmMarelonDataPage& form)
{
    ContinueOnError([&] { LoadHeads(form); });
    std::shared_ptr<host::MachineSetup> setup;
    ContinueOnError([&] { setup = form.ActiveDocument()->MachineSetup(); });
    if (!setup)
        return;
    QString code;
    ContinueOnError([&] { code = setup->MachineCode(); });
    form.SelectList(form.Control<QComboBox>(QStringLiteral("cmbMachineName")), MachineListPosition(code));
    bool barLoaderDone = false;
    for (const DataPageField& field : DataPageFields())
        ContinueOnError([&] { LoadField(form, *setup, field, barLoaderDone); });
    LoadPartAndProgram(form, *setup);
    ContinueOnError([&] { ApplyBarLoaderType(form, numeric::RoundToInt32(setup->BarLoaderType())); });
    ContinueOnError([&] { form.ApplyBarLoaderEnabling(); });
    ContinueOnError([&] { LoadStock(form, *setup); });
}

// Each value on its own: one that cannot be read changes only its own field.
void RestoreBarLoaderSettings(frmMarelonDataPage& form)
{
    const auto setup = form.ActiveDocument()->MachineSetup();
    ContinueOnError([&] { ApplyBarLoaderType(form, numeric::RoundToInt32(setup->BarLoaderType())); });
    ContinueOnError([&] {
        form.Control<QLineEdit>(QStringLiteral("txtBarLoaderSubNum")).setText(setup->BarLoaderSubProgram());
    });
    QString command;
    ContinueOnError([&] { command = setup->BarLoaderCommand(); });
    if (command.isEmpty())
        return;
    const BarLoaderLine line = ReadBarLoaderCommand(command);
    form.Control<QLineEdit>(QStringLiteral("TxtChamferDistX")).setText(Text(line.chamferX));
    form.Control<QLineEdit>(QStringLiteral("TxtChamferDistZ")).setText(Text(line.chamferZ));
    form.Control<QLineEdit>(QStringLiteral("TxtPullBackAmount")).setText(Text(line.pullBack));
    form.SelectList(form.Control<QComboBox>(QStringLiteral("CmbSpindleStop")), line.spindleStop ? 1 : 0);
    form.Control<QLineEdit>(QStringLiteral("TxtSpindleRPM")).setText(Text(line.spindleRpm));
}

void SaveDataToRegistry(frmMarelonDataPage& form)
{
    QList<std::pair<QString, QString>> values;
    for (const DataPageField& field : DataPageFields())
        if (field.settings != SettingsUse::NotStored)
            values.append({QLatin1String(field.settingsKey), SettingText(form, field)});
    if (!SaveSettings(kAppName, kDataPageSection, values))
        MsgBox(Tr(QStringLiteral("The part is written, but the settings file \"%1\" cannot be written: the next new "
                                 "part will not start from these values."))
                   .arg(SettingsLocation(kAppName)),
               host::MsgButtons::OK, host::MsgIcon::Exclamation);
}

} // namespace marelon
