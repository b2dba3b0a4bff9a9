// Fills the generated parts of the staged help pages from the product itself,
// so that the help cannot drift from it:
//   helptables <staged project folder> <language> <machine setups folder> <listings folder> <part>
// Every "<!--generated:KEY-->" of a staged page is replaced by what KEY names:
//   models             the table of the machine models: code, back spindle,
//                      lists, fields switched off, machine setups
//   slot:<control>     a Machine Data field per model: caption, number, state
//   range:<control>    what OK allows in a Data Page field (the field table)
//   listing:<part>:<lines>   lines of the NC listing of an example part,
//                      as the built feldra wrote it (help/generate/nc-listing.js):
//                      "section:<TITLE>" a whole section, "sync:<code>" the
//                      operations that a synchronisation ties and its lines,
//                      "bar-loader" the bar loader lines of the Data Page section,
//                      "tool:<T number>" a tool's line and the operations on it.
// The model data comes from the Data Page itself: for each model the Data Page
// is opened on <part> and the model chosen, after two different models, so
// that what a model leaves as it was shows as such.
// A key that names nothing fails the run, with the page and line.
#include "addin/host/HostFacade.h"
#include "addin/modGlobals.h"
#include "addin/settings/MachineCodes.h"
#include "addin/ui/UiServices.h"
#include "datapage/DataPageSettings.h"
#include "datapage/GangToolPatterns.h"
#include "datapage/MachineCatalogue.h"
#include "datapage/frmMarelonDataPage.h"
#include "feldra/DocumentFile.h"
#include "feldra/DocumentState.h"
#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"
#include "feldra/QtLocalizer.h"
#include "feldra/SetupFile.h"

#include <cmath>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>

namespace {

bool german = false;

// A text of the generated parts in the help's language.
QString T(const char* english, const char* deutsch)
{
    return QString::fromUtf8(german ? deutsch : english);
}

QString Escaped(const QString& text) { return text.toHtmlEscaped(); }

QString Number(double value)
{
    QString text = QString::number(value, 'g', 15);
    return german ? text.replace(QLatin1Char('.'), QLatin1Char(',')) : text;
}

struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

[[noreturn]] void Fail(const QString& message) { throw Failure(message.toStdString()); }

// ---- what OK allows ------------------------------------------------------------

// The bound every checked number of a quantity keeps, as the help states it.
QString UpperBoundText(marelon::Quantity quantity)
{
    const auto metric = marelon::UpperBound(quantity, false);
    const auto inch = marelon::UpperBound(quantity, true);
    if (!metric)
        return {};
    if (*metric != *inch)
        return T("; within ±%1 mm in a millimetre part, ±%2 in in an inch part",
                 "; innerhalb ±%1 mm in einem Teil in Millimeter, ±%2 Zoll in einem Teil in Zoll")
            .arg(Number(*metric), Number(std::round(*inch * 10) / 10));
    return T("; within ±%1", "; innerhalb ±%1").arg(Number(*metric));
}

QString RuleText(const marelon::DataPageField* field);

QString Range(const QString& control)
{
    const marelon::DataPageField* field = nullptr;
    try {
        field = &marelon::DataPageFieldOf(control);
    } catch (const std::out_of_range&) {
        Fail(QStringLiteral("no Data Page field %1").arg(control));
    }
    const QString rule = RuleText(field);
    if (field->check == marelon::Check::NoCheck)
        return rule;
    return rule + UpperBoundText(field->quantity);
}

QString RuleText(const marelon::DataPageField* field)
{
    using marelon::Check;
    switch (field->check) {
    case Check::NoCheck:
        return T("not checked", "wird nicht geprüft");
    case Check::NumericOnly:
        return T("any number, negative ones too", "jede Zahl, auch eine negative");
    case Check::AtLeast:
        return T("%1 or more", "%1 oder mehr").arg(Number(field->bound));
    case Check::GreaterThan:
        return T("more than %1", "größer als %1").arg(Number(field->bound));
    case Check::BarStockOD:
        return T("0 to %1 in an inch part, 0 to %2 in a millimetre part",
                 "0 bis %1 in einem Teil in Zoll, 0 bis %2 in einem Teil in Millimeter")
            .arg(Number(1.2598), Number(32));
    case Check::CutOffEndPoint:
        return T("from minus to plus the bar stock O.D. (814)",
                 "von minus bis plus Stangen-Außendurchmesser (814)");
    case Check::CatchingTool:
        return T("20 to 29 on the M2-3 12-16 and M2-3 20-32; any number on the E2 16J and E2 25J-32; "
                 "not checked on the other models",
                 "20 bis 29 bei M2-3 12-16 und M2-3 20-32; jede Zahl bei E2 16J und E2 25J-32; "
                 "bei den anderen Modellen nicht geprüft");
    case Check::ProgramNumber:
        return T("a whole number from 0 to 2147483647", "eine ganze Zahl von 0 bis 2147483647");
    case Check::StockValue:
        return T("any number, while the stock type shows the field",
                 "jede Zahl, solange die Rohteilart das Feld zeigt");
    }
    return {};
}

// ---- the Data Page on every model ---------------------------------------------

// A Machine Data slot: its input, its list (if any) and its update button.
struct Slot {
    const char* input;
    const char* list;
    const char* button;
};
const Slot kSlots[] = {
    {"txt813", "", ""},  {"txt814", "", ""},          {"txt815", "", ""},        {"txt816", "", "CmdUpd816"},
    {"txt817", "", ""},  {"txt818", "", "CmdUpd818"}, {"txt819", "", ""},        {"txt820", "", ""},
    {"txt821", "", "CmdUpd821"}, {"txt822", "", ""},  {"txt824", "", ""},
    {"txt990", "cmbGangHolder", ""}, {"txt991", "cmbFrontDrillHolder", ""}, {"txt992", "cmbBackDrillHolder", ""},
    {"cmb893", "cmb893", ""}, {"cmbBackSpdlExt", "cmbBackSpdlExt", ""},
};

const Slot& SlotOf(const QString& input)
{
    for (const Slot& slot : kSlots)
        if (input == QLatin1String(slot.input))
            return slot;
    Fail(QStringLiteral("no Machine Data field %1").arg(input));
}

// What a model's layout makes of one slot.
struct SlotView {
    QString caption;       // as the label shows it
    bool available = false;
    bool keepsState = false;   // the model leaves its state as the model before left it
    bool keepsValue = false;   // the model leaves its value as it was
    QString value;         // the value the model sets, when it sets one
    QStringList entries;   // a list shown instead of the input: "entry (number written)"
    QString listName;      // the gang tool pattern family of the list
    bool buttonOff = false;    // the update button is unavailable
    bool computed = false;     // the value is worked out from the part (four decimals)
    bool visible = true;

    QString Describe() const
    {
        if (!visible)
            return T("not shown", "nicht angezeigt");
        QStringList parts;
        if (!entries.isEmpty()) {
            if (!listName.isEmpty())
                parts << T("chosen from the list of the %1 gang tool patterns (%2 entries), which writes the "
                           "pattern's code",
                           "aus der Liste der %1-Kammbestückungen gewählt (%2 Einträge), die den Code der "
                           "Bestückung schreibt")
                             .arg(listName)
                             .arg(entries.size());
            else
                parts << T("chosen from a list: %1", "aus einer Liste gewählt: %1").arg(entries.join(QStringLiteral(", ")));
            return parts.join(QStringLiteral("; "));
        }
        if (keepsState)
            parts << T("available or greyed as the model chosen before left it",
                       "verfügbar oder grau, wie es das zuvor gewählte Modell hinterlassen hat");
        else
            parts << (available ? T("available", "verfügbar") : T("greyed, not used", "grau, nicht verwendet"));
        if (!keepsValue && !value.isEmpty()) {
            if (computed)
                parts << T("worked out from the part when the model is chosen",
                           "bei der Wahl des Modells aus dem Teil ermittelt");
            else
                parts << T("set to %1", "auf %1 gesetzt").arg(value);
        }
        if (buttonOff)
            parts << T("Update unavailable", "Aktualisieren nicht verfügbar");
        return parts.join(QStringLiteral(", "));
    }
};

struct ModelView {
    QString name;
    int code = 0;
    bool sixModelList = false;
    std::map<QString, SlotView> fields;
};

class DataPageOnModels {
public:
    DataPageOnModels(const QString& part, int language)
        : messages_(std::make_shared<feldra::MessageBoxRecorder>()),
          document_(std::make_shared<feldra::DocumentState>())
    {
        QDir(addIn_.path()).mkpath(QStringLiteral("MachineSetups"));
        marelon::Flags() = {};
        host_.App().addInFolder = addIn_.path() + QLatin1Char('/');
        document_->data = feldra::LoadDocument(part);
        document_->fileName = part;
        host_.OpenDocument(document_);
        auto localizer = std::make_shared<feldra::QtLocalizer>();
        localizer->setLanguageCode(language);
        localizer->Initialise();
        marelon::InstallUiServices(localizer, messages_);
        form_ = std::make_unique<marelon::frmMarelonDataPage>(host_.ApplicationFor(QStringLiteral("Marelon.Connect")));
        form_->InitOp();
        // A profile stock: 814 is typed then, so that only the model decides its state.
        form_->SelectList(List("StockTypeC"), 3);

        for (const auto& [name, load] : std::initializer_list<std::pair<const char*, void (*)(marelon::GangToolPatternTable&)>>{
                 {"L5", marelon::LoadL5Patterns}, {"L7", marelon::LoadL7Patterns},
                 {"M2-3", marelon::LoadM23Patterns}, {"C", marelon::LoadCPatterns}}) {
            marelon::GangToolPatternTable table;
            load(table);
            QStringList names;
            for (const auto& pattern : table)
                names << pattern.name;
            families_.insert(QString::fromLatin1(name), names);
        }
    }
    ~DataPageOnModels()
    {
        form_.reset();
        marelon::RemoveUiServices();
    }

    QList<ModelView> Models()
    {
        QList<ModelView> models;
        const QStringList names = marelon::MachineModelNames(false);
        const QStringList six = marelon::MachineModelNames(true);
        for (int position = 0; position < names.size(); ++position) {
            ModelView model;
            model.name = names[position];
            model.code = marelon::ListIndexToMachineCode(int16_t(position));
            model.sixModelList = six.contains(model.name);
            // After a model that switches most fields off, and after one that switches them on.
            const auto afterOff = View(QStringLiteral("L3 16-20"), QStringLiteral("11"), model.name);
            const auto afterOn = View(QStringLiteral("K16"), QStringLiteral("22"), model.name);
            for (const Slot& slot : kSlots) {
                SlotView view = afterOff.at(QLatin1String(slot.input));
                const SlotView& other = afterOn.at(QLatin1String(slot.input));
                view.keepsState = view.available != other.available;
                view.keepsValue = view.value != other.value;
                model.fields[QLatin1String(slot.input)] = view;
            }
            models << model;
        }
        return models;
    }

private:
    QComboBox& List(const char* name) { return form_->Control<QComboBox>(QLatin1String(name)); }

    void Select(const QString& model)
    {
        QComboBox& names = List("cmbMachineName");
        const int position = names.findText(model);
        if (position < 0)
            Fail(QStringLiteral("the Data Page does not list %1").arg(model));
        form_->SelectList(names, position);
    }

    std::map<QString, SlotView> View(const QString& before, const QString& mark, const QString& model)
    {
        Select(before);
        for (const Slot& slot : kSlots)
            if (auto* input = form_->findChild<QLineEdit*>(QLatin1String(slot.input)))
                input->setText(mark);
        Select(model);

        std::map<QString, SlotView> views;
        for (const Slot& slot : kSlots) {
            SlotView view;
            const marelon::DataPageField& field = marelon::DataPageFieldOf(QLatin1String(slot.input));
            const QLabel& label = form_->Control<QLabel>(QLatin1String(field.label));
            view.caption = label.text();
            auto* input = form_->findChild<QLineEdit*>(QLatin1String(slot.input));
            QComboBox* list = *slot.list ? &List(slot.list) : nullptr;
            const bool listShown = list && !list->isHidden() && list->isEnabled() && list->count() > 0;
            view.visible = !label.isHidden();
            view.available = label.isEnabled() && (listShown || (input && input->isEnabled() && !input->isHidden()));
            if (input && !listShown && input->text() != mark)
                view.value = input->text();
            if (input && input->text() == mark)
                view.value = mark;
            // The update routines write four decimals ("##,##0.0000"); a layout writes whole numbers.
            static const QRegularExpression fourDecimals(QStringLiteral("^-?[0-9,]+\\.[0-9]{4}$"));
            view.computed = fourDecimals.match(view.value).hasMatch();
            if (listShown)
                view.entries = Entries(*list, input, view.listName);
            if (*slot.button)
                view.buttonOff = !form_->Control<QWidget>(QLatin1String(slot.button)).isEnabled();
            views[QLatin1String(slot.input)] = view;
        }
        return views;
    }

    // The entries of a list, each with the number it writes; a gang tool
    // pattern list by its family.
    QStringList Entries(QComboBox& list, QLineEdit* input, QString& family)
    {
        QStringList texts;
        for (int i = 0; i < list.count(); ++i)
            texts << list.itemText(i);
        for (auto it = families_.cbegin(); it != families_.cend(); ++it)
            if (it.value() == texts)
                family = it.key();
        if (!family.isEmpty())
            return texts;
        const int selected = list.currentIndex();
        QStringList entries;
        for (int i = 0; i < list.count(); ++i) {
            QString number;
            if (input) {
                form_->SelectList(list, i);
                number = input->text();
            } else if (list.objectName() == QLatin1String("cmb893")) {
                if (const auto code = marelon::BackSpindleCode(list.itemText(i)))
                    number = QString::number(*code);
            } else {
                number = QString::number(i + 1); // the back spindle extension: position + 1
            }
            entries << (number.isEmpty() ? texts[i] : QStringLiteral("%1 (%2)").arg(texts[i], number));
        }
        form_->SelectList(list, selected);
        return entries;
    }

    QTemporaryDir addIn_;
    feldra::Host host_;
    std::shared_ptr<feldra::MessageBoxRecorder> messages_;
    std::shared_ptr<feldra::DocumentState> document_;
    std::unique_ptr<marelon::frmMarelonDataPage> form_;
    QMap<QString, QStringList> families_;
};

// ---- the machine setups --------------------------------------------------------

struct SetupView {
    QString name;
    QStringList units;
    int spindles = 0;
    int heads = 0;
};

QList<SetupView> Setups(const QString& folder, const QString& model)
{
    QMap<QString, SetupView> setups;
    QDir dir(folder + QLatin1Char('/') + model);
    const QStringList files = dir.entryList({QStringLiteral("*.EMS")}, QDir::Files, QDir::Name);
    for (const QString& file : files) {
        static const QRegularExpression name(QStringLiteral("^(.*)_(Inch|Metric)\\.EMS$"));
        const auto match = name.match(file);
        if (!match.hasMatch())
            continue;
        feldra::MachineSetupData setup;
        feldra::MachineModelData machine;
        feldra::LoadSetupFile(dir.filePath(file), setup, machine);
        SetupView& view = setups[match.captured(1)];
        view.name = match.captured(1);
        view.units << (match.captured(2) == QLatin1String("Inch") ? T("inch", "Zoll") : T("millimetre", "Millimeter"));
        view.spindles = std::max(view.spindles, int(setup.spindles.size()));
        view.heads = std::max(view.heads, int(setup.heads.size()));
    }
    return setups.values();
}

// ---- the tables ------------------------------------------------------------------

QString Numbers(const ModelView& model, const std::function<bool(const SlotView&)>& which, bool withValue)
{
    QStringList numbers;
    for (const Slot& slot : kSlots) {
        const SlotView& view = model.fields.at(QLatin1String(slot.input));
        if (!view.visible || !which(view))
            continue;
        const marelon::DataPageField& field = marelon::DataPageFieldOf(QLatin1String(slot.input));
        const QString number = field.parameter ? QString::number(field.parameter) : Escaped(view.caption);
        if (!withValue)
            numbers << number;
        else if (view.computed)
            numbers << T("%1 from the part", "%1 aus dem Teil").arg(number);
        else
            numbers << QStringLiteral("%1&nbsp;=&nbsp;%2").arg(number, Escaped(view.value));
    }
    return numbers.isEmpty() ? QStringLiteral("&ndash;") : numbers.join(QStringLiteral(", "));
}

QString ModelsTable(const QList<ModelView>& models, const QString& setupsFolder)
{
    QString html = QStringLiteral("<table class=\"models\" border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n<tr>");
    for (const QString& heading :
         {T("Model", "Modell"), T("Machine code", "Maschinencode"), T("Six-model list", "Liste der sechs Modelle"),
          T("Back spindle", "Gegenspindel"), T("Gang tool pattern list", "Liste der Kammbestückungen"),
          T("Drill holder lists", "Bohrhalterlisten"), T("Fields switched off", "Abgeschaltete Felder"),
          T("Fields set", "Gesetzte Felder"), T("Machine setups", "Maschineneinrichtungen")})
        html += QStringLiteral("<th>%1</th>").arg(heading);
    html += QStringLiteral("</tr>\n");
    for (const ModelView& model : models) {
        const QList<SetupView> setups = Setups(setupsFolder, model.name);
        bool backSpindle = false;
        QStringList setupTexts;
        for (const SetupView& setup : setups) {
            backSpindle = backSpindle || setup.spindles > 1;
            setupTexts << QStringLiteral("%1 (%2; %3, %4)")
                              .arg(Escaped(setup.name), setup.units.join(QStringLiteral(", ")),
                                   setup.spindles == 1 ? T("1 spindle", "1 Spindel")
                                                       : T("%1 spindles", "%1 Spindeln").arg(setup.spindles),
                                   setup.heads == 1 ? T("1 NC head", "1 NC-Kanal") : T("%1 NC heads", "%1 NC-Kanäle").arg(setup.heads));
        }
        const SlotView& b893 = model.fields.at(QStringLiteral("cmb893"));
        QString back = backSpindle ? T("yes", "ja") : T("no", "nein");
        if (!b893.entries.isEmpty())
            back += T("; 893: %1", "; 893: %1").arg(Escaped(b893.entries.join(QStringLiteral(", "))));
        const SlotView& ext = model.fields.at(QStringLiteral("cmbBackSpdlExt"));
        if (ext.visible && !ext.entries.isEmpty())
            back += T("; extension: %1", "; Verlängerung: %1").arg(Escaped(ext.entries.join(QStringLiteral(", "))));
        const SlotView& gang = model.fields.at(QStringLiteral("txt990"));
        const QString gangText = gang.listName.isEmpty()
                                     ? QStringLiteral("&ndash;")
                                     : T("%1 patterns (%2)", "%1-Bestückungen (%2)").arg(gang.listName).arg(gang.entries.size());
        QStringList drills;
        for (const char* input : {"txt991", "txt992"}) {
            const SlotView& view = model.fields.at(QLatin1String(input));
            if (!view.entries.isEmpty())
                drills << QStringLiteral("%1: %2").arg(QLatin1String(input + 3), Escaped(view.entries.join(QStringLiteral(", "))));
        }
        html += QStringLiteral("<tr><td>%1</td><td>%2</td><td>%3</td><td>%4</td><td>%5</td><td>%6</td><td>%7</td><td>%8</td><td>%9</td></tr>\n")
                    .arg(Escaped(model.name))
                    .arg(model.code)
                    .arg(model.sixModelList ? T("yes", "ja") : QStringLiteral("&ndash;"), back, gangText,
                         drills.isEmpty() ? QStringLiteral("&ndash;") : drills.join(QStringLiteral("<br>")),
                         Numbers(model, [](const SlotView& v) { return !v.available && !v.keepsState && v.entries.isEmpty(); }, false),
                         Numbers(model, [](const SlotView& v) { return !v.keepsValue && !v.value.isEmpty() && v.entries.isEmpty(); }, true),
                         setupTexts.isEmpty() ? QStringLiteral("&ndash;") : setupTexts.join(QStringLiteral("<br>")));
    }
    return html + QStringLiteral("</table>");
}

// One field per model, models that show it alike in one row.
QString SlotTable(const QList<ModelView>& models, const QString& input)
{
    SlotOf(input);
    QList<QPair<QStringList, SlotView>> rows;
    for (const ModelView& model : models) {
        const SlotView& view = model.fields.at(input);
        auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& r) {
            return r.second.caption == view.caption && r.second.Describe() == view.Describe();
        });
        if (row == rows.end())
            rows.append({{model.name}, view});
        else
            row->first << model.name;
    }
    QString html = QStringLiteral("<table class=\"slot\" border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n<tr><th>%1</th><th>%2</th><th>%3</th></tr>\n")
                       .arg(T("Models", "Modelle"), T("Caption", "Beschriftung"), T("On the Data Page", "Im Datenblatt"));
    for (const auto& [names, view] : rows)
        html += QStringLiteral("<tr><td>%1</td><td>%2</td><td>%3</td></tr>\n")
                    .arg(Escaped(names.join(QStringLiteral(", "))), view.visible ? Escaped(view.caption) : QStringLiteral("&ndash;"),
                         Escaped(view.Describe()));
    return html + QStringLiteral("</table>");
}

// ---- the NC listing excerpts -------------------------------------------------------

QStringList ListingLines(const QString& folder, const QString& part)
{
    QFile file(folder + QLatin1Char('/') + part + QStringLiteral(".nc"));
    if (!file.open(QIODevice::ReadOnly))
        Fail(QStringLiteral("no NC listing %1").arg(file.fileName()));
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
}

// Lines of a listing with the head each belongs to ("HEAD 1 OF 2"); a
// listing of the machine without heads has one, empty. Each keeps its place
// in the listing and its head's, so that the same lines of the listing in
// another language can be shown.
struct HeadLine {
    QString head;
    QString line;
    qsizetype headAt = -1;
    qsizetype at = 0;
};
QList<HeadLine> ByHead(const QStringList& lines)
{
    QList<HeadLine> out;
    QString head;
    qsizetype headAt = -1;
    for (qsizetype at = 0; at < lines.size(); ++at) {
        const QString& line = lines[at];
        if (line.startsWith(QLatin1String("HEAD ")) || line.startsWith(QLatin1String("MACHINE ")))
            head = line, headAt = at;
        else
            out.append({head, line, headAt, at});
    }
    return out;
}

// The lines are chosen in the English listing and shown from the listing in
// the help's language (<part>.de.nc for German), which has the same lines in
// the same order.
QString Excerpt(const QString& folder, const QString& part, const QString& which, bool inGerman)
{
    const QStringList english = ListingLines(folder, part);
    const QStringList shown = inGerman ? ListingLines(folder, part + QStringLiteral(".de")) : english;
    if (shown.size() != english.size())
        Fail(QStringLiteral("the German listing of %1 has %2 lines, the English %3").arg(part).arg(shown.size()).arg(english.size()));
    const QList<HeadLine> lines = ByHead(english);
    QStringList out;
    QString shownHead;
    // Adds a line, preceded by its head's line when the head changes.
    const auto add = [&](const HeadLine& line) {
        if (line.head != shownHead && !line.head.isEmpty()) {
            if (!out.isEmpty())
                out << QString();
            out << shown[line.headAt];
            shownHead = line.head;
        }
        out << shown[line.at];
    };
    if (which.startsWith(QLatin1String("section:"))) {
        // The section in every head's program.
        const QString title = which.mid(8);
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (lines[i].line != title)
                continue;
            for (qsizetype j = i; j < lines.size() && lines[j].head == lines[i].head && (j == i || !lines[j].line.isEmpty()); ++j)
                add(lines[j]);
        }
    } else if (which.startsWith(QLatin1String("sync:"))) {
        // Every operation that a synchronisation of this code ties, in each
        // head's program, with its SYNC line.
        const QString code = which.mid(5);
        const HeadLine* operation = nullptr;
        const HeadLine* shownOperation = nullptr;
        for (const HeadLine& line : lines) {
            if (line.line.startsWith(QLatin1String("  OP ")))
                operation = &line;
            if (operation && line.line.startsWith(QStringLiteral("    SYNC ") + code + QLatin1Char(' '))) {
                if (operation != shownOperation)
                    add(*operation), shownOperation = operation;
                add(line);
            }
        }
    } else if (which.startsWith(QLatin1String("tool:"))) {
        // The tool's line (the same in every head) and the operations on it.
        const QString tool = which.mid(5);
        for (const HeadLine& line : lines)
            if (line.line.startsWith(QStringLiteral("  ") + tool + QLatin1Char(' '))) {
                add(line);
                break;
            }
        for (const HeadLine& line : lines)
            if (line.line.startsWith(QLatin1String("  OP ")) && line.line.contains(QStringLiteral(" TOOL=") + tool + QLatin1Char(' ')))
                add(line);
    } else if (which == QLatin1String("bar-loader")) {
        // The bar loader lines of the first head: every head lists the same.
        for (const HeadLine& line : lines)
            if (line.head == lines.value(0).head && line.line.startsWith(QLatin1String("  Bar Loader")))
                add(line);
    } else {
        Fail(QStringLiteral("no listing excerpt %1").arg(which));
    }
    if (out.isEmpty())
        Fail(QStringLiteral("the listing of %1 has no lines for %2").arg(part, which));
    return QStringLiteral("<pre class=\"listing\">") + Escaped(out.join(QLatin1Char('\n'))) + QStringLiteral("</pre>");
}

// ---- the pages -------------------------------------------------------------------

struct Context {
    QString setups;
    QString listings;
    QString part;
    int language = 1033;
    std::unique_ptr<DataPageOnModels> dataPage;
    QList<ModelView> models;

    const QList<ModelView>& Models()
    {
        if (models.isEmpty()) {
            dataPage = std::make_unique<DataPageOnModels>(part, language);
            models = dataPage->Models();
        }
        return models;
    }
};

QString Generate(Context& context, const QString& key)
{
    if (key == QLatin1String("models"))
        return ModelsTable(context.Models(), context.setups);
    if (key.startsWith(QLatin1String("slot:")))
        return SlotTable(context.Models(), key.mid(5));
    if (key.startsWith(QLatin1String("range:")))
        return Escaped(Range(key.mid(6)));
    if (key.startsWith(QLatin1String("listing:"))) {
        const QString part = key.section(QLatin1Char(':'), 1, 1);
        return Excerpt(context.listings, part, key.section(QLatin1Char(':'), 2),
                       context.language == feldra::QtLocalizer::kGerman);
    }
    Fail(QStringLiteral("unknown generated part \"%1\"").arg(key));
}

int FillPage(Context& context, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        Fail(QStringLiteral("cannot read %1").arg(path));
    const QString text = QString::fromUtf8(file.readAll());
    file.close();
    static const QRegularExpression marker(QStringLiteral("<!--generated:([^ >]+)-->"));
    QString filled;
    qsizetype last = 0;
    int count = 0;
    for (const auto& match : marker.globalMatch(text)) {
        filled += text.mid(last, match.capturedStart() - last);
        try {
            filled += Generate(context, match.captured(1));
        } catch (const Failure& failure) {
            const int line = int(text.left(match.capturedStart()).count(QLatin1Char('\n'))) + 1;
            Fail(QStringLiteral("%1:%2: %3").arg(path).arg(line).arg(QString::fromStdString(failure.what())));
        }
        last = match.capturedEnd();
        ++count;
    }
    if (count == 0)
        return 0;
    filled += text.mid(last);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(filled.toUtf8()) < 0)
        Fail(QStringLiteral("cannot write %1").arg(path));
    return count;
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir stores;
    qputenv("MARELON_SETTINGS_DIR", (stores.path() + QStringLiteral("/settings")).toLocal8Bit());
    qputenv("MARELON_REGISTRY_DIR", (stores.path() + QStringLiteral("/registry")).toLocal8Bit());
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 6) {
        std::fprintf(stderr, "usage: helptables <staged project folder> <language> <machine setups folder> "
                             "<listings folder> <part>\n");
        return 2;
    }
    Context context;
    context.language = args[2].toInt();
    german = context.language == feldra::QtLocalizer::kGerman;
    context.setups = args[3];
    context.listings = args[4];
    context.part = args[5];
    try {
        int count = 0;
        QDirIterator pages(args[1], {QStringLiteral("*.htm")}, QDir::Files);
        while (pages.hasNext())
            count += FillPage(context, pages.next());
        std::printf("helptables: %d generated parts in %s\n", count, qPrintable(args[1]));
    } catch (const Failure& failure) {
        std::fprintf(stderr, "helptables: %s\n", failure.what());
        return 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "helptables: %s\n", error.what());
        return 1;
    }
    return 0;
}
