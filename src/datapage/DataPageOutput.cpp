#include "datapage/DataPageOutput.h"

#include "addin/ContinueOnError.h"
#include "addin/host/Application.h"
#include "addin/host/Document.h"
#include "addin/host/FeatureChains.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/NCHead.h"
#include "addin/host/NCHeads.h"
#include "addin/host/Simulation.h"
#include "addin/host/Spindle.h"
#include "addin/host/Spindles.h"
#include "addin/modGlobals.h"
#include "addin/settings/MachineCodes.h"
#include "addin/ui/UiServices.h"
#include "datapage/BarLoader.h"
#include "datapage/DataPageSettings.h"
#include "datapage/MachineCatalogue.h"
#include "datapage/ParameterUpdates.h"
#include "datapage/StockDefinition.h"
#include "datapage/frmMarelonDataPage.h"
#include "numeric/NumberText.h"
#include "addin/ui/Validation.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStackedWidget>

#include <cmath>
#include <limits>


namespace marelon {
namespace {

constexpr double kInchBarStockLimit = 1.2598;
constexpr double kMetricBarStockLimit = 32;
const QString kMainStock = QStringLiteral("Main Stock");

QLineEdit& Edit(frmMarelonDataPage& form, const char* name)
{
    return form.Control<QLineEdit>(QLatin1String(name));
}

QComboBox& List(frmMarelonDataPage& form, const char* name)
{
    return form.Control<QComboBox>(QLatin1String(name));
}

double Number(frmMarelonDataPage& form, const char* name)
{
    return numeric::ToDouble(Edit(form, name).text());
}

// A number of the bar-change line. The line is built whatever the loader, so
// from disabled fields too, which OK does not check: a text that is not a
// number there counts by its leading number ("abc" is 0).
double LineNumber(frmMarelonDataPage& form, const char* name)
{
    const QString text = Edit(form, name).text();
    return numeric::IsNumeric(text) ? numeric::ToDouble(text) : numeric::LeadingNumber(text);
}

// Whether a field is part of the page as it stands: not hidden by the stock
// type or by a list shown in its place. The tabs not shown do not count.
bool ShownOnItsTab(const QWidget& field)
{
    for (const QWidget* w = &field; w && !qobject_cast<const QStackedWidget*>(w->parentWidget()); w = w->parentWidget())
        if (w->isHidden())
            return false;
    return true;
}

bool Checked(frmMarelonDataPage& form, const char* name)
{
    return form.Control<QAbstractButton>(QLatin1String(name)).isChecked();
}

// The stock diameter the cut-off end point is checked against: the bar stock
// O.D. the Data Page shows (which OK writes with the stock), or the
// document's stock diameter while that field holds no number. A new part
// still has no stock diameter in its document.
double BarStockDiameter(frmMarelonDataPage& form)
{
    const QString shown = Edit(form, "txt814").text();
    if (numeric::IsNumeric(shown))
        return std::abs(numeric::ToDouble(shown));
    return form.ActiveDocument()->MachineSetup()->StockDiameter();
}

// The bar stock O.D. computed from a bar, tube or polygon beyond the
// machine's bar capacity: written only when the user says so. No returns the
// stock field the value comes from.
QWidget* AskComputedBarStock(frmMarelonDataPage& form, const QString& caption, bool inchDocument)
{
    const QLineEdit& box = Edit(form, "txt814");
    if (!BeyondBarCapacity(box.text(), inchDocument))
        return nullptr;
    const QString crlf = QStringLiteral("\r\n");
    const QString prompt = caption + QStringLiteral(": ") + box.text() + crlf + crlf
        + Tr(QStringLiteral("This value is computed from the stock. The machine takes a bar stock O.D. from 0 to %1."))
              .arg(numeric::NumberToText(BarCapacity(inchDocument)))
        + crlf + crlf + Tr(QStringLiteral("Write it anyway?"));
    if (MsgBox(prompt, host::MsgButtons::YesNo, host::MsgIcon::Question, Tr(QStringLiteral("Bar Stock O.D.")))
        == host::MsgResult::Yes)
        return nullptr;
    const int type = List(form, "StockTypeC").currentIndex();
    return &Edit(form, type == kPolygon ? "CircleDiameter" : "StockDiameter");
}

// The check of one field's own rule; a field whose check depends on the model passes on other models.
bool CheckFieldRule(frmMarelonDataPage& form, const DataPageField& field, bool inchDocument)
{
    if (field.check == Check::NoCheck)
        return true;
    const QString caption = form.Control<QLabel>(QLatin1String(field.label)).text();
    const QLineEdit& box = Edit(form, field.control);
    switch (field.check) {
    case Check::NoCheck:
        return true;
    case Check::NumericOnly:
        return ValidateNumber(caption, box);
    case Check::AtLeast:
        return ValidateNumber(caption, box, field.bound, std::nullopt, true);
    case Check::GreaterThan:
        return ValidateNumber(caption, box, field.bound, std::nullopt, false);
    case Check::BarStockOD: // typed only for a profile stock; computed otherwise, and asked about by the caller
        return ValidateNumber(caption, box, 0.0, BarCapacity(inchDocument));
    case Check::CutOffEndPoint: {
        const double diameter = BarStockDiameter(form);
        return ValidateNumber(caption, box, -diameter, diameter);
    }
    case Check::ProgramNumber:
        return ValidateNumber(caption, box, 0.0, double(std::numeric_limits<int32_t>::max()));
    case Check::StockValue:
        return !ShownOnItsTab(box) || ValidateNumber(caption, box);
    case Check::CatchingTool: {
        const QString model = form.MachineName();
        if (model == QLatin1String("M2-3 12-16") || model == QLatin1String("M2-3 20-32"))
            return ValidateNumber(caption, box, 20.0, 29.0);
        if (model == QLatin1String("E2 16J") || model == QLatin1String("E2 25J-32"))
            return ValidateNumber(caption, box);
        return true;
    }
    }
    return true;
}

// A checked number beyond what its quantity takes on the machine (10 m, an
// 8-digit code) is refused with the field's own message, after its rule.
bool CheckUpperBound(frmMarelonDataPage& form, const DataPageField& field, bool inchDocument)
{
    const auto upper = UpperBound(field.quantity, inchDocument);
    if (!upper || field.check == Check::NoCheck)
        return true;
    const QLineEdit& box = Edit(form, field.control);
    if (!ShownOnItsTab(box))
        return true;
    const QString caption = form.Control<QLabel>(QLatin1String(field.label)).text();
    return ValidateNumber(caption, box, -*upper, *upper);
}

// The control to correct when a field fails, nullptr when it passes.
QWidget* RefusedField(frmMarelonDataPage& form, const DataPageField& field, bool inchDocument)
{
    if (field.check == Check::BarStockOD && !Edit(form, field.control).isEnabled())
        return AskComputedBarStock(form, form.Control<QLabel>(QLatin1String(field.label)).text(), inchDocument);
    if (CheckFieldRule(form, field, inchDocument) && CheckUpperBound(form, field, inchDocument))
        return nullptr;
    return &Edit(form, field.control);
}

// One field into the machine setup, by its encoding.
void WriteField(frmMarelonDataPage& form, host::MachineSetup& setup, const DataPageField& field)
{
    switch (field.encoding) {
    case Encoding::MachineCode:
        setup.setMachineCode(QString::number(ListIndexToMachineCode(int16_t(List(form, field.control).currentIndex()))));
        break;
    case Encoding::Number:
        (setup.*field.property.set)(Number(form, field.control));
        break;
    case Encoding::BackSpindleCode:
        if (const auto code = BackSpindleCode(List(form, field.control).currentText()))
            setup.setParam893(*code);
        break;
    case Encoding::BackSpindleExtension:
        if (form.MachineName() == QLatin1String("L4 25-32"))
            setup.setBackSpindleExtension(QString::number(List(form, field.control).currentIndex() + 1));
        break;
    case Encoding::CheckBox01:
        (setup.*field.property.set)(Checked(form, field.control) ? 1 : 0);
        break;
    case Encoding::PartsPerChuck: {
        const int polarMode = form.PolarModeCode();
        setup.setParam819(Number(form, field.control) + (polarMode >= 0 ? 1000.0 * polarMode : 0.0));
        break;
    }
    default: // derived from another field, written by its own routine, or not kept
        break;
    }
}

// The stock values into the machine setup, then "Main Stock" for a polygon or a profile.
template <class Remember>
void WriteStock(frmMarelonDataPage& form, host::Document& document, Remember&& remember)
{
    const auto setup = document.MachineSetup();
    const int type = List(form, "StockTypeC").currentIndex();
    remember([&] {
        StockChoice stock{type};
        if (type == kPolygon)
            stock = {type, Checked(form, "IDCircle"), List(form, "Sides").currentIndex(),
                     numeric::RoundToInt16(Number(form, "BaseAngle"))};
        setup->setStockCode(PackStockCode(stock));
    });
    remember([&] { setup->setStockFrontZ(-Number(form, "Zamount")); });
    remember([&] { setup->setStockLength(Number(form, "StockLength")); });
    remember([&] { setup->setPartLength(Number(form, "PartLength")); });
    if (type == kBar || type == kTube)
        remember([&] { setup->setStockDiameter(Number(form, "StockDiameter")); });
    if (type == kTube)
        remember([&] { setup->setStockInsideDiameter(Number(form, "InsideDiameter")); });
    if (type == kPolygon)
        remember([&] { setup->setStockDiameter(Number(form, "CircleDiameter")); });

    // The outline drawn for a polygon stock goes with that stock, before a
    // new one is drawn (which then takes its key): unless the new stock is a
    // profile swept from it, or it was moved off "Temp", or an operation or
    // another stock is made from it (the host refuses; the outline stays).
    QString formerOutline;
    if (form.OpenedStockType() == kPolygon)
        ContinueOnError([&] { formerOutline = PolygonOutlineKey(document); });
    if (form.OpenedStockType() == kPolygon || form.OpenedStockType() == kProfile)
        remember([&] { document.Simulation()->DeleteStock(kMainStock); });
    if (!formerOutline.isEmpty() && !(type == kProfile && Edit(form, "FeatureKey").text() == formerOutline))
        ContinueOnError([&] { document.FeatureChains()->Remove(formerOutline); });
    if (type == kPolygon) {
        remember([&] {
            const double start = Number(form, "Zamount");
            BuildPolygonStock(form.Application(), Checked(form, "ODCircle") ? 2 : 1, Number(form, "CircleDiameter"),
                              numeric::RoundToInt16(numeric::ToDouble(List(form, "Sides").currentText())),
                              Number(form, "BaseAngle") * Pi() / 180, start, Number(form, "StockLength") - start);
        });
    } else if (type == kProfile) {
        remember([&] {
            const double start = Number(form, "Zamount");
            const auto feature = document.FeatureChains()->Item(Edit(form, "FeatureKey").text());
            BuildProfileStock(document, feature, start, Number(form, "StockLength") - start);
        });
    }
}

} // namespace

QWidget* RefusedDataPageField(frmMarelonDataPage& form, bool inchDocument)
{
    for (const char* list : {"cmbMachineName", "StockTypeC"}) {
        const DataPageField& field = DataPageFieldOf(QLatin1String(list));
        if (!ValidateChoice(form.Control<QLabel>(QLatin1String(field.label)).text(), List(form, list)))
            return &List(form, list);
    }
    for (const DataPageField& field : DataPageFields())
        if (QWidget* refused = RefusedField(form, field, inchDocument))
            return refused;
    return nullptr;
}

QWidget* RefusedStockProfile(frmMarelonDataPage& form)
{
    if (List(form, "StockTypeC").currentIndex() != kProfile)
        return nullptr;
    const QString key = Edit(form, "FeatureKey").text();
    bool picked = false;
    if (!key.isEmpty())
        ContinueOnError([&] { picked = form.ActiveDocument()->FeatureChains()->Item(key) != nullptr; });
    if (picked)
        return nullptr;
    MsgBox(Tr(QStringLiteral("Select a feature for the Stock Profile")), host::MsgButtons::OK,
           host::MsgIcon::Exclamation, Tr(QStringLiteral("Stock Definition")));
    return &form.Control<QWidget>(QStringLiteral("SelectButton"));
}

double BarCapacity(bool inchDocument)
{
    return inchDocument ? kInchBarStockLimit : kMetricBarStockLimit;
}

bool BeyondBarCapacity(const QString& text, bool inchDocument)
{
    if (!numeric::IsNumeric(text))
        return false;
    const double value = numeric::ToDouble(text);
    return value < 0 || value > BarCapacity(inchDocument);
}

bool WriteDataPage(frmMarelonDataPage& form, bool inchDocument)
{
    bool failed = false;
    auto remember = [&failed](auto&& statement) { failed |= !ContinueOnError(statement); };
    const auto document = form.ActiveDocument();
    remember([&] { SaveDataToMachineSetup(form); });
    remember([&] {
        const double allowance = inchDocument ? 2 : 50;
        document->MachineSetup()->Spindles()->Item(1)->setWorkLength(Number(form, "txt818") + allowance);
    });
    WriteStock(form, *document, remember);
    return !failed;
}

void SaveDataToMachineSetup(frmMarelonDataPage& form)
{
    const auto document = form.ActiveDocument();
    const auto setup = document->MachineSetup();
    ContinueOnError([&] { setup->setMakerTag(kMarelonTag); });
    ContinueOnError([&] { WriteNCOutput(form); });
    bool barLoaderDone = false;
    for (const DataPageField& field : DataPageFields()) {
        if (field.encoding == Encoding::BarLoader) {
            if (!std::exchange(barLoaderDone, true))
                ContinueOnError([&] { SaveBarLoaderSettings(form); });
            continue;
        }
        ContinueOnError([&] { WriteField(form, *setup, field); });
    }
    ContinueOnError([&] { setup->setFaceAmount(EvalFaceAmount(*document, Number(form, "Zamount"))); });
}

void WriteNCOutput(frmMarelonDataPage& form)
{
    const auto setup = form.ActiveDocument()->MachineSetup();
    const QString name = Edit(form, "ProgramName").text();
    setup->setProgramName(name);
    const int32_t number = numeric::RoundToInt32(Number(form, "ProgramNumber"));
    setup->setProgramNumber(number);
    const QStringList& comments = form.HeadComments();
    const int unit = 70 + List(form, "NCCodeUnit").currentIndex();
    for (int head = 1; head <= comments.size(); ++head) {
        const auto output = setup->Heads()->Item(head);
        output->setComment(comments[head - 1]);
        output->setProgramName(name);
        output->setProgramNumber(number);
        output->setOutputUnit(unit);
    }
}

void SaveBarLoaderSettings(frmMarelonDataPage& form)
{
    const auto setup = form.ActiveDocument()->MachineSetup();
    setup->setBarLoaderType(
        BarLoaderTypeCode(Checked(form, "optMagazine"), List(form, "cmbBarLoaderProgType").currentIndex()));
    setup->setBarLoaderSubProgram(Edit(form, "txtBarLoaderSubNum").text());
    BarLoaderLine line;
    line.chamferX = LineNumber(form, "TxtChamferDistX");
    line.chamferZ = LineNumber(form, "TxtChamferDistZ");
    line.pullBack = LineNumber(form, "TxtPullBackAmount");
    line.spindleStop = List(form, "CmbSpindleStop").currentIndex() != 0;
    line.spindleRpm = LineNumber(form, "TxtSpindleRPM");
    line.m1 = List(form, "StockTypeC").currentIndex() > kTube;
    setup->setBarLoaderCommand(BuildBarLoaderCommand(line));
}

void NameNewDocument(frmMarelonDataPage& form)
{
    if (!Flags().newDocument)
        return;
    const auto document = form.ActiveDocument();
    const QString name = document->MachineSetup()->Heads()->Item(1)->ProgramName();
    if (!name.isEmpty())
        document->setTitle(name);
}

} // namespace marelon
