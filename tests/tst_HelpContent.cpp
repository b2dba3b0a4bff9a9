// What the compiled help of the build holds, in English and German: a topic
// for every Data Page field, every control of Tool Data and its holder
// dialogs and every command; each Data Page field's topic says what the value
// is, its unit and what OK allows; the models table and the field tables
// match the catalogue; the NC listing excerpts are the example parts'; every
// link and picture resolves; the gang tool pattern pictures are the Data
// Page's own; both languages have the same pages and places.
#include "TempStores.h"
#include "addin/settings/MachineCodes.h"
#include "datapage/DataPageSettings.h"
#include "datapage/GangToolPatterns.h"
#include "feldra/QtLocalizer.h"

#include <QDir>
#include <QFile>
#include <QHelpEngineCore>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

namespace {

const QString kHelp = QStringLiteral(MARELON_HELP_DIR "/");

// Every Data Page field by its control, and the buttons beside the fields.
QStringList DataPageControls()
{
    QStringList controls{"cmbMachineSetup", "cmdRefresh", "CmdUpd816", "CmdUpd818", "CmdUpd821", "CmdUpdColletExt"};
    for (const marelon::DataPageField& field : marelon::DataPageFields())
        controls << QString::fromLatin1(field.control);
    return controls;
}

// The NC parameters of the Data Page's fields.
QStringList ParameterNumbers()
{
    QStringList numbers;
    for (const marelon::DataPageField& field : marelon::DataPageFields())
        if (field.parameter)
            numbers << QString::number(field.parameter);
    return numbers;
}
const QStringList kOtherNumbers{"016", "020", "024", "028", "032", "036", "040", "044", "048",
                                "052", "056", "060", "062", "064", "928", "932"};
const QStringList kCommands{"Tool Data", "Data Page", "Masks", "G-Code List", "Auto Sync",
                            "Marelon Add-In Help", "Marelon G-Code Help"};

// One compiled help file, read through the help engine as the viewer reads it.
class CompiledHelp {
public:
    explicit CompiledHelp(const QString& file)
        : engine_(folder_.filePath(QStringLiteral("collection.qhc")))
    {
        engine_.setReadOnly(false);
        engine_.setupData();
        engine_.registerDocumentation(file);
        namespace_ = QHelpEngineCore::namespaceName(file);
        for (const QUrl& url : engine_.files(namespace_, QString()))
            files_.insert(url.path().section(QLatin1Char('/'), 2, -1), url); // "/<virtual folder>/<file>"
    }

    QStringList Pages() const
    {
        QStringList pages;
        for (const QString& file : files_.keys())
            if (file.endsWith(QLatin1String(".htm")))
                pages << file;
        return pages;
    }
    bool Has(const QString& file) const { return files_.contains(file); }
    QByteArray Data(const QString& file) const { return engine_.fileData(files_.value(file)); }
    QString Text(const QString& page) const { return QString::fromUtf8(Data(page)); }

    // The places of a page: <a name="...">.
    QStringList Places(const QString& page) const
    {
        static const QRegularExpression anchor(QStringLiteral("<a name=\"([^\"]+)\""));
        QStringList places;
        for (const auto& match : anchor.globalMatch(Text(page)))
            places << match.captured(1);
        return places;
    }

    // The text of the pages whose names begin so, tags left out.
    QString Words(const QString& pagesBeginning) const
    {
        static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
        QString words;
        for (const QString& page : Pages())
            if (page.startsWith(pagesBeginning))
                words += Text(page).remove(tag) + QLatin1Char('\n');
        return words;
    }

private:
    QTemporaryDir folder_;
    QHelpEngineCore engine_;
    QString namespace_;
    QMap<QString, QUrl> files_;
};

// The controls of a Designer form (its widgets' object names).
QStringList FormControls(const QString& uiFile)
{
    QFile file(uiFile);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&file);
    QStringList names;
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("widget"))
            names << xml.attributes().value(QStringLiteral("name")).toString();
    return names;
}

QString Tr(int language, const QString& english)
{
    feldra::QtLocalizer localizer;
    localizer.setLanguageCode(language);
    localizer.Initialise();
    return localizer.Translate(english);
}

void AddLanguages()
{
    QTest::addColumn<int>("language");
    QTest::newRow("English") << 1033;
    QTest::newRow("German") << 1031;
}

QString Guide(int language) { return kHelp + QStringLiteral("%1/Marelon Help.chm").arg(language); }
QString Reference(int language) { return kHelp + QStringLiteral("%1/G-Code Help.chm").arg(language); }

QString WithoutTags(QString html)
{
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    return html.remove(tag).simplified();
}

// The topic of a Data Page field: the <div class="field"> whose data-control
// names the control; empty when there is none.
QString FieldTopic(const QString& pages, const QString& control)
{
    static const QRegularExpression topic(QStringLiteral("<div class=\"field\" data-control=\"([^\"]+)\">(.*?)</div>"),
                                          QRegularExpression::DotMatchesEverythingOption);
    for (const auto& match : topic.globalMatch(pages))
        if (match.captured(1).split(QLatin1Char(' ')).contains(control))
            return match.captured(2);
    return {};
}

// The text of a paragraph of a topic by its class ("unit"); empty when there is none.
QString Paragraph(const QString& topic, const QString& kind)
{
    const QRegularExpression paragraph(QStringLiteral("<p class=\"%1\">(.*?)</p>").arg(kind),
                                       QRegularExpression::DotMatchesEverythingOption);
    return WithoutTags(paragraph.match(topic).captured(1));
}

// The rows of a generated table (<table class="...">), each row its cells' texts.
QList<QStringList> TableRows(const QString& page, const QString& kind)
{
    const QRegularExpression table(QStringLiteral("<table class=\"%1\"[^>]*>(.*?)</table>").arg(kind),
                                   QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression row(QStringLiteral("<tr>(.*?)</tr>"), QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression cell(QStringLiteral("<td>(.*?)</td>"), QRegularExpression::DotMatchesEverythingOption);
    QList<QStringList> rows;
    for (const auto& t : table.globalMatch(page))
        for (const auto& r : row.globalMatch(t.captured(1))) {
            QStringList cells;
            for (const auto& c : cell.globalMatch(r.captured(1)))
                cells << WithoutTags(c.captured(1));
            if (!cells.isEmpty())
                rows << cells;
        }
    return rows;
}

// The Data Page fields that have a topic of their own on the Machine Data or
// the Miscellaneous tab (the stock and program fields of the Part Data tab
// and the lists beside 990, 991 and 992 are described with their tab or field).
bool HasFieldTopic(const marelon::DataPageField& field)
{
    using enum marelon::Encoding;
    switch (field.encoding) {
    case Stock: case NCOutput: case MachineCode: case GangPattern: case FrontDrillHolder: case BackDrillHolder:
        return false;
    default:
        return true;
    }
}

QJsonObject ExampleSetup(const QString& part)
{
    QFile file(QStringLiteral(MARELON_SOURCE_DIR "/examples/%1.fdoc").arg(part));
    file.open(QIODevice::ReadOnly);
    return QJsonDocument::fromJson(file.readAll()).object().value(QStringLiteral("machineSetup")).toObject();
}

} // namespace

class tst_HelpContent : public QObject {
    Q_OBJECT

private slots:
    void everyDataPageFieldHasItsTopic_data() { AddLanguages(); }
    void everyDataPageFieldHasItsTopic()
    {
        QFETCH(int, language);
        const CompiledHelp guide(Guide(language));
        const QString dataPage = guide.Words(QStringLiteral("DataPage"));
        for (const QString& control : DataPageControls())
            QVERIFY2(dataPage.contains(control), qPrintable(control));
        for (const QString& number : ParameterNumbers())
            QVERIFY2(guide.Places(QStringLiteral("DataPageMachine.htm")).contains(QLatin1Char('p') + number)
                         && dataPage.contains(number),
                     qPrintable(number));
        const QString models = guide.Words(QStringLiteral("Models"));
        const QString numbering = CompiledHelp(Reference(language)).Words(QStringLiteral("Numbering"));
        for (const QString& number : kOtherNumbers)
            QVERIFY2(models.contains(number) && numbering.contains(number), qPrintable(number));
    }

    // Both helps speak of what the user sees: a field by its caption, a
    // button by its text, an operation by its kind. The names macros use
    // stand in one reference table per dialog (<table class="controls">,
    // "Control names for macros" of the Data Page and of Tool Data), and a
    // technology number only in a table that says how the document tree shows
    // an operation's kind.
    void controlNamesOnlyInReferenceTables_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<bool>("guide");
        QTest::newRow("English guide") << 1033 << true;
        QTest::newRow("German guide") << 1031 << true;
        QTest::newRow("English reference") << 1033 << false;
        QTest::newRow("German reference") << 1031 << false;
    }
    void controlNamesOnlyInReferenceTables()
    {
        QFETCH(int, language);
        QFETCH(bool, guide);
        const CompiledHelp help(guide ? Guide(language) : Reference(language));
        static const QRegularExpression referenceTable(QStringLiteral("<table class=\"controls\".*?</table>"),
                                                       QRegularExpression::DotMatchesEverythingOption);
        static const QRegularExpression anyTable(QStringLiteral("<table.*?</table>"),
                                                 QRegularExpression::DotMatchesEverythingOption);
        static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
        // A control name by the prefixes of the dialogs' forms ("txt814",
        // "CmdUpd818", "optMagazine"), or any other control shown as code.
        static const QRegularExpression prefixed(
            QStringLiteral("\\b(?:txt|Txt|cmb|Cmb|cmd|Cmd|opt|Opt|chk|Chk|lbl|Mnu)[A-Z0-9]\\w*"));
        static const QRegularExpression code(QStringLiteral("<code>(\\w+)</code>"));
        static const QRegularExpression technology(
            QStringLiteral("(?<![\"\u201e])\\b[Tt]echnolog(?:y|ie)(?: types?|arten?)? \\d"));
        QStringList controls = DataPageControls();
        for (const char* form : {"frmToolData", "frmNewHolder", "frmEditHolder"})
            controls += FormControls(QStringLiteral(MARELON_SOURCE_DIR "/src/tooldata/%1.ui").arg(form));
        QStringList withTables;
        for (const QString& page : help.Pages()) {
            const QString html = help.Text(page);
            if (html.contains(referenceTable))
                withTables << page;
            const QString outside = QString(html).remove(referenceTable);
            const QString words = QString(outside).remove(tag);
            const auto named = prefixed.match(words);
            QVERIFY2(!named.hasMatch(), qPrintable(page + QStringLiteral(": ") + named.captured()));
            for (const auto& match : code.globalMatch(outside))
                QVERIFY2(!controls.contains(match.captured(1)), qPrintable(page + QStringLiteral(": ") + match.captured(1)));
            const auto number = technology.match(QString(outside).remove(anyTable).remove(tag));
            QVERIFY2(!number.hasMatch(), qPrintable(page + QStringLiteral(": ") + number.captured()));
        }
        QCOMPARE(withTables, guide ? QStringList({"DataPage.htm", "TooData.htm"}) : QStringList());
    }

    // The Data Page's Help button opens the index at the place of the tab
    // shown: the index begins with one line per tab, at that place, whose
    // first link leads to the tab's topic (the viewer shows only the line of
    // the place asked for).
    void indexLeadsToTheDataPageTabs_data() { AddLanguages(); }
    void indexLeadsToTheDataPageTabs()
    {
        QFETCH(int, language);
        const CompiledHelp guide(Guide(language));
        static const QRegularExpression lines(QStringLiteral("<body>\\s*((?:<p class=\"from\">.*?</p>\\s*)*)<h1>"),
                                              QRegularExpression::DotMatchesEverythingOption);
        static const QRegularExpression line(QStringLiteral("<p class=\"from\"><a name=\"([^\"]+)\"></a>[^<]*<a href=\"([^\"]+)\""));
        QStringList places;
        for (const auto& match : line.globalMatch(lines.match(guide.Text(QStringLiteral("Index.htm"))).captured(1)))
            places << match.captured(1) + QLatin1String(" -> ") + match.captured(2);
        QCOMPARE(places, QStringList({"FromDataPagePart -> DataPagePart.htm", "FromDataPageMachine -> DataPageMachine.htm",
                                      "FromDataPageMisc -> DataPageMisc.htm"}));
    }

    void everyToolDataControlHasItsTopic_data() { AddLanguages(); }
    void everyToolDataControlHasItsTopic()
    {
        QFETCH(int, language);
        const QString toolData = CompiledHelp(Guide(language)).Words(QStringLiteral("TooData"));
        QStringList controls{"MnuContext", "Renumber", "Sort"};
        for (const char* form : {"frmToolData", "frmNewHolder", "frmEditHolder"})
            controls += FormControls(QStringLiteral(MARELON_SOURCE_DIR "/src/tooldata/%1.ui").arg(form));
        QVERIFY(controls.size() > 60);
        for (const QString& control : controls)
            QVERIFY2(toolData.contains(control), qPrintable(control));
    }

    void everyCommandHasItsTopic_data() { AddLanguages(); }
    void everyCommandHasItsTopic()
    {
        QFETCH(int, language);
        const QString commands = CompiledHelp(Guide(language)).Words(QStringLiteral("GettingStarted"));
        for (const QString& command : kCommands)
            QVERIFY2(commands.contains(Tr(language, command)), qPrintable(Tr(language, command)));
    }

    // Each field's topic answers in order what the value is on the machine,
    // its unit (a number in both unit systems, or no unit), what OK allows (as
    // the field table checks it), the models, and what Update works out.
    void everyFieldTopicSaysMeaningUnitAndRange_data() { AddLanguages(); }
    void everyFieldTopicSaysMeaningUnitAndRange()
    {
        QFETCH(int, language);
        const CompiledHelp guide(Guide(language));
        const QString pages = guide.Text(QStringLiteral("DataPageMachine.htm")) + guide.Text(QStringLiteral("DataPageMisc.htm"));
        const bool german = language == 1031;
        int topics = 0;
        for (const marelon::DataPageField& field : marelon::DataPageFields()) {
            if (!HasFieldTopic(field))
                continue;
            const QString control = QString::fromLatin1(field.control);
            const QString topic = FieldTopic(pages, control);
            QVERIFY2(!topic.isEmpty(), qPrintable(control));
            const qsizetype what = topic.indexOf(QLatin1String("class=\"what\""));
            const qsizetype unit = topic.indexOf(QLatin1String("class=\"unit\""));
            const qsizetype range = topic.indexOf(QLatin1String("class=\"range\""));
            const qsizetype models = topic.indexOf(QLatin1String("class=\"models\""));
            const qsizetype update = topic.indexOf(QLatin1String("class=\"update\""));
            QVERIFY2(what >= 0 && what < unit && unit < range && range < models && (update < 0 || models < update),
                     qPrintable(control));

            const QString unitText = Paragraph(topic, QStringLiteral("unit"));
            const bool bothSystems = german ? unitText.contains(QLatin1String("Zoll")) && unitText.contains(QLatin1String("Millimeter"))
                                            : unitText.contains(QLatin1String("inch")) && unitText.contains(QLatin1String("millimetre"));
            const bool noUnit = german ? unitText.contains(QLatin1String("ohne Einheit")) || unitText.contains(QLatin1String("keine"))
                                       : unitText.contains(QLatin1String("without unit")) || unitText.contains(QLatin1String("none"));
            if (field.type == marelon::FieldType::Double)
                QVERIFY2(bothSystems || unitText.contains(german ? QLatin1String("ohne Einheit") : QLatin1String("without unit")),
                         qPrintable(control + QStringLiteral(": ") + unitText));
            else
                QVERIFY2(bothSystems || noUnit, qPrintable(control + QStringLiteral(": ") + unitText));

            const QString rangeText = Paragraph(topic, QStringLiteral("range"));
            using enum marelon::Check;
            const QString bound = QString::number(field.bound);
            switch (field.check) {
            case AtLeast:
                QVERIFY2(rangeText.contains(bound + (german ? QStringLiteral(" oder mehr") : QStringLiteral(" or more"))),
                         qPrintable(control + QStringLiteral(": ") + rangeText));
                break;
            case GreaterThan:
                QVERIFY2(rangeText.contains((german ? QStringLiteral("größer als ") : QStringLiteral("more than ")) + bound),
                         qPrintable(control + QStringLiteral(": ") + rangeText));
                break;
            case BarStockOD:
                QVERIFY2(rangeText.contains(german ? QLatin1String("1,2598") : QLatin1String("1.2598")) && rangeText.contains(QLatin1String("32")),
                         qPrintable(rangeText));
                break;
            case NumericOnly:
                QVERIFY2(rangeText.contains(german ? QLatin1String("jede Zahl") : QLatin1String("any number")), qPrintable(control));
                break;
            case NoCheck:
                QVERIFY2(rangeText.contains(german ? QStringLiteral("nicht geprüft") : QLatin1String("not checked")), qPrintable(control));
                break;
            default:
                QVERIFY2(!rangeText.isEmpty(), qPrintable(control));
            }
            ++topics;
        }
        QVERIFY(topics >= 25);
    }

    // The models table has a row per model of the catalogue, in its order, with
    // its code, its gang tool pattern list and its machine setups.
    void modelsTableMatchesTheCatalogue_data() { AddLanguages(); }
    void modelsTableMatchesTheCatalogue()
    {
        QFETCH(int, language);
        TempStores stores; // the full list: no TovricVersion
        const QList<QStringList> rows = TableRows(CompiledHelp(Guide(language)).Text(QStringLiteral("Models.htm")),
                                                  QStringLiteral("models"));
        const QStringList models = marelon::MachineModelNames(false);
        QCOMPARE(models.size(), 19);
        QCOMPARE(rows.size(), models.size());
        const QMap<QString, std::pair<QString, void (*)(marelon::GangToolPatternTable&)>> lists{
            {QStringLiteral("L5 16-20"), {QStringLiteral("L5"), marelon::LoadL5Patterns}},
            {QStringLiteral("L7 16-20"), {QStringLiteral("L7"), marelon::LoadL7Patterns}},
            {QStringLiteral("M2-3 20-32"), {QStringLiteral("M2-3"), marelon::LoadM23Patterns}},
            {QStringLiteral("C12-16"), {QStringLiteral("C"), marelon::LoadCPatterns}},
            {QStringLiteral("C20-32"), {QStringLiteral("C"), marelon::LoadCPatterns}},
        };
        for (int i = 0; i < rows.size(); ++i) {
            const QStringList& row = rows[i];
            QCOMPARE(row.size(), 9);
            QCOMPARE(row[0], models[i]);
            QCOMPARE(row[1], QString::number(marelon::ListIndexToMachineCode(int16_t(i))));
            if (lists.contains(models[i])) {
                marelon::GangToolPatternTable table;
                lists[models[i]].second(table);
                // "L5 patterns (28)", "L5-Bestückungen (28)"
                QVERIFY2(QRegularExpression(QStringLiteral("^%1[ -].*\\(%2\\)$").arg(QRegularExpression::escape(lists[models[i]].first)).arg(table.size()))
                             .match(row[4]).hasMatch(),
                         qPrintable(models[i] + QStringLiteral(": ") + row[4]));
            } else {
                QVERIFY2(row[4] == QLatin1String("&ndash;"), qPrintable(models[i] + QStringLiteral(": ") + row[4]));
            }
            const QDir setups(QStringLiteral(MARELON_SOURCE_DIR "/data/MachineSetups/") + models[i]);
            for (const QString& file : setups.entryList({QStringLiteral("*.EMS")}))
                QVERIFY2(row[8].contains(file.section(QLatin1Char('_'), 0, -2) + QStringLiteral(" (")),
                         qPrintable(models[i] + QStringLiteral(": ") + file));
        }
    }

    // Each Machine Data field's table of models names every model once.
    void everyFieldTableNamesEveryModelOnce_data() { AddLanguages(); }
    void everyFieldTableNamesEveryModelOnce()
    {
        QFETCH(int, language);
        TempStores stores;
        const QString page = CompiledHelp(Guide(language)).Text(QStringLiteral("DataPageMachine.htm"));
        QStringList sorted = marelon::MachineModelNames(false);
        sorted.sort();
        int tables = 0;
        for (const marelon::DataPageField& field : marelon::DataPageFields()) {
            const QString control = QString::fromLatin1(field.control);
            const QString topic = FieldTopic(page, control);
            if (!HasFieldTopic(field) || topic.isEmpty())
                continue;
            QStringList named;
            for (const QStringList& row : TableRows(topic, QStringLiteral("slot")))
                named += row.value(0).split(QStringLiteral(", "));
            named.sort();
            QCOMPARE(named, sorted);
            ++tables;
        }
        QCOMPARE(tables, 16);
    }

    // The reference quotes the NC listings of the example parts, as the product
    // wrote them: every synchronisation code at its operations, and the bar
    // loader lines with the part's own M155 line. No generated part is left unfilled.
    void listingExcerptsAreTheExamplePartsOwn_data() { AddLanguages(); }
    void listingExcerptsAreTheExamplePartsOwn()
    {
        QFETCH(int, language);
        const CompiledHelp reference(Reference(language));
        static const QRegularExpression listing(QStringLiteral("<pre class=\"listing\">(.*?)</pre>"),
                                                QRegularExpression::DotMatchesEverythingOption);
        QStringList excerpts;
        for (const auto& match : listing.globalMatch(reference.Text(QStringLiteral("Sync.htm"))))
            excerpts << match.captured(1);
        QCOMPARE(excerpts.size(), 5);
        // The listing's own words are in the help's language, as the NC pane shows them.
        const QString operation = Tr(language, QStringLiteral("OP %1 %2")).section(QLatin1Char('%'), 0, 0);
        const QString head = Tr(language, QStringLiteral("HEAD %1 OF %2"));
        const QString with = Tr(language, QStringLiteral("SYNC %1 #%2 %3 WITH %4")).section(QLatin1Char('%'), -2, -2).mid(1);
        const QStringList codes{"G821", "G820", "G811", "G810"};
        for (int i = 0; i < codes.size(); ++i) {
            QVERIFY2(excerpts[i].contains(QStringLiteral("    SYNC ") + codes[i] + QStringLiteral(" #")), qPrintable(codes[i]));
            QVERIFY2(excerpts[i].contains(with), qPrintable(excerpts[i]));
            // Both programs carry it: head 1 at the main-spindle side, head 2 at the back spindle.
            QVERIFY2(excerpts[i].contains(head.arg(1).arg(2) + QStringLiteral("\n  ") + operation)
                         && excerpts[i].contains(head.arg(2).arg(2) + QStringLiteral("\n  ") + operation),
                     qPrintable(excerpts[i]));
            QVERIFY2(excerpts.last().contains(QStringLiteral("SYNC ") + codes[i]), qPrintable(codes[i]));
        }
        const QString barLoader = listing.match(reference.Text(QStringLiteral("BarLoader.htm"))).captured(1);
        QVERIFY2(barLoader.contains(ExampleSetup(QStringLiteral("L4-part")).value(QStringLiteral("barLoaderCommand")).toString()),
                 qPrintable(barLoader));
        QVERIFY(barLoader.contains(Tr(language, QStringLiteral("Bar Loader Type"))));

        const CompiledHelp guide(Guide(language));
        for (const CompiledHelp* help : {&reference, &guide})
            for (const QString& page : help->Pages())
                QVERIFY2(!help->Text(page).contains(QLatin1String("<!--generated")), qPrintable(page));
    }

    // Every link, picture and style sheet of every page names a file of the
    // compiled help and, after "#", a place on its page; no link leaves it.
    void everyLinkAndPictureResolves_data()
    {
        QTest::addColumn<QString>("file");
        for (int language : {1033, 1031})
            for (const QString& file : {Guide(language), Reference(language)})
                QTest::addRow("%d %s", language, qPrintable(QFileInfo(file).fileName())) << file;
    }
    void everyLinkAndPictureResolves()
    {
        QFETCH(QString, file);
        const CompiledHelp help(file);
        static const QRegularExpression reference(QStringLiteral("\\b(?:href|src)=\"([^\"]*)\""));
        int checked = 0;
        for (const QString& page : help.Pages()) {
            for (const auto& match : reference.globalMatch(help.Text(page))) {
                const QString target = match.captured(1);
                const QString linked = target.section(QLatin1Char('#'), 0, 0);
                const QString place = target.section(QLatin1Char('#'), 1);
                const QString where = page + QStringLiteral(": ") + target;
                QVERIFY2(!target.contains(QLatin1Char(':')), qPrintable(where));
                QVERIFY2(linked.isEmpty() || !help.Data(linked).isEmpty(), qPrintable(where));
                QVERIFY2(place.isEmpty() || help.Places(linked.isEmpty() ? page : linked).contains(place),
                         qPrintable(where));
                ++checked;
            }
        }
        QVERIFY(checked > 10);
    }

    // Every L5 16-20 pattern shows the picture the Data Page shows, in the
    // reference's pattern table and in the guide's gang holder section.
    void patternPicturesAreTheDataPagesOwn_data() { AddLanguages(); }
    void patternPicturesAreTheDataPagesOwn()
    {
        QFETCH(int, language);
        const CompiledHelp guide(Guide(language));
        const CompiledHelp reference(Reference(language));
        marelon::GangToolPatternTable patterns;
        marelon::LoadL5Patterns(patterns);
        for (const marelon::GangToolPattern& pattern : patterns) {
            const QString file = QStringLiteral("patterns/L5-16-20-%1.png").arg(pattern.code);
            QFile picture(marelon::GangPatternPicture(pattern.code));
            QVERIFY2(picture.open(QIODevice::ReadOnly), qPrintable(picture.fileName()));
            const QByteArray own = picture.readAll();
            QVERIFY2(guide.Data(file) == own && reference.Data(file) == own, qPrintable(file));
            QVERIFY2(guide.Text(QStringLiteral("DataPageMachine.htm")).contains(file)
                         && reference.Text(QStringLiteral("GangPatterns.htm")).contains(file),
                     qPrintable(file));
        }
    }

    void bothLanguagesHaveTheSamePagesAndPlaces()
    {
        for (const auto& name : {QStringLiteral("Marelon Help.chm"), QStringLiteral("G-Code Help.chm")}) {
            const CompiledHelp english(kHelp + QStringLiteral("1033/") + name);
            const CompiledHelp german(kHelp + QStringLiteral("1031/") + name);
            QCOMPARE(german.Pages(), english.Pages());
            for (const QString& page : english.Pages())
                QCOMPARE(german.Places(page), english.Places(page));
        }
    }
};

QTEST_MAIN(tst_HelpContent)
#include "tst_HelpContent.moc"
