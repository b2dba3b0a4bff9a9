#include "feldra/NcListing.h"
#include "feldra/QtLocalizer.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace feldra;

namespace {

std::shared_ptr<NCHeadData> Head(const QString& name, int number, int unit, const QString& comment)
{
    auto head = std::make_shared<NCHeadData>();
    head->programName = name;
    head->programNumber = number;
    head->outputUnit = unit;
    head->comment = comment;
    return head;
}

std::shared_ptr<ToolData> Tool(int number, const QString& id)
{
    auto tool = std::make_shared<ToolData>();
    tool->number = number;
    tool->toolId = id;
    return tool;
}

std::shared_ptr<OperationData> Operation(int id, const QString& name, const QString& toolId = {},
                                         const QVariant& headId = {})
{
    auto operation = std::make_shared<OperationData>();
    operation->id = id;
    operation->name = name;
    operation->technology->type = 37;
    if (!toolId.isEmpty())
        operation->technology->parameters[QStringLiteral("498")].value = toolId;
    if (headId.isValid())
        operation->technology->parameters[QStringLiteral("HeadID")].value = headId;
    return operation;
}

std::shared_ptr<SyncData> Sync(int typeIndex, std::initializer_list<SyncNodeData> nodes)
{
    auto sync = std::make_shared<SyncData>();
    sync->typeIndex = typeIndex;
    std::copy(nodes.begin(), nodes.end(), sync->nodes.begin());
    return sync;
}

void AddSetupEntries(DocumentData& document)
{
    for (const char* name : {"G821", "G820", "G811", "G810"}) {
        auto entry = std::make_shared<SetupEntryData>();
        entry->name = QString::fromLatin1(name);
        document.machineSetup.setupEntries.append(entry);
    }
}

QStringList Lines(const QString& listing)
{
    return listing.split(QLatin1Char('\n'));
}

// The value of a Data Page field: what follows its label.
QString FieldValue(const QString& listing, const QString& label)
{
    for (const QString& line : Lines(listing))
        if (line.startsWith(QStringLiteral("  ") + label + QLatin1Char(' ')))
            return line.mid(2 + label.size()).trimmed();
    return QStringLiteral("<no field>");
}

// The lines of a listing that start with the given text (after indentation).
QStringList LinesStarting(const QString& listing, const QString& start)
{
    QStringList found;
    for (const QString& line : Lines(listing))
        if (line.trimmed().startsWith(start))
            found.append(line.trimmed());
    return found;
}

// The lines of a section of a listing, without their indentation.
QStringList SectionLines(const QString& listing, const QString& title)
{
    const QStringList lines = Lines(listing);
    QStringList section;
    for (qsizetype i = lines.indexOf(title) + 1; i > 0 && i < lines.size() && !lines[i].isEmpty(); ++i)
        section.append(lines[i].trimmed());
    return section;
}

// A part with a value of every kind the listing shows.
DocumentData GoldenDocument()
{
    DocumentData document;
    AddSetupEntries(document);
    MachineSetupData& setup = document.machineSetup;
    setup.programName = QStringLiteral("FLANGE");
    setup.programNumber = 4711;
    setup.params = {{813, 25}, {814, 12}, {815, 1}, {816, 8}, {817, 1500}, {818, 40}, {819, 1},
                    {820, 0}, {821, 45.5}, {822, 0.05}, {824, -0.5}, {893, 1}, {990, 3}, {991, 0}, {992, 0}};
    setup.faceAmount = -0.5;
    setup.startupSpindleSpeed = 2000;
    setup.barLoaderType = 1;
    setup.barLoaderSubProgram = QStringLiteral("8999");
    setup.heads = {Head("", 0, 71, "Main and back")};
    auto cutOff = Tool(8, "CUT 3");
    cutOff->xShift = 0.25;
    cutOff->spindleDirection = -1;
    cutOff->holderIndex = 2;
    auto backDrill = Tool(21, "DR 5");
    backDrill->zShift = -30;
    backDrill->spindleDirection = 1;
    backDrill->gearRatio = 1.5;
    backDrill->turretNumber = 2;
    backDrill->stationIndex = 3;
    backDrill->comment = QStringLiteral("back drill");
    document.tools = {backDrill, cutOff};
    auto cut = Operation(2, "Cut off", "CUT 3", 1);
    cut->technology->type = 153;
    auto pickUp = Operation(3, "Pick up", {}, 2);
    pickUp->technology->type = 207;
    auto drill = Operation(4, "Back drill", "DR 5", 2);
    drill->suppressed = true;
    document.operations = {cut, pickUp, drill};
    document.syncs = {Sync(3, {{4, 2, 0, 0, 0, {}}, {1, 3, 0, 0, 0, {}}})};
    return document;
}

} // namespace

class tst_NcListing : public QObject {
    Q_OBJECT

private slots:
    // NC code is invariant whatever the user's locale.
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void dataPageValues_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("value");

        // The golden listing below shows the other fields and number forms.
        QTest::newRow("parameter never written") << "821 Back Spl Chuck POS" << "(NOT SET)";
        QTest::newRow("no grouping in large numbers") << "Startup Spindle Speed" << "12000.5";
        QTest::newRow("bar loader type named") << "Bar Loader Type" << "2 (MAGAZINE, M CODE)";
        QTest::newRow("command line as it stands")
            << "Bar Loader Command" << "M155 X0.5 Z0.3 W2.25 R1 S800";
    }
    void dataPageValues()
    {
        QFETCH(QString, label);
        QFETCH(QString, value);
        DocumentData document;
        MachineSetupData& setup = document.machineSetup;
        setup.startupSpindleSpeed = 12000.5;
        setup.barLoaderType = 2;
        setup.barLoaderCommand = QStringLiteral("M155 X0.5 Z0.3 W2.25 R1 S800");

        QCOMPARE(FieldValue(GenerateNcListing(document), label), value);
    }

    void header_data()
    {
        QTest::addColumn<bool>("withHead");
        QTest::addColumn<QString>("headName");
        QTest::addColumn<int>("headNumber");
        QTest::addColumn<int>("outputUnit");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("head's own program, inch")
            << true << "SHAFT" << 2000 << 70
            << QStringList{"HEAD 1 OF 1", "PROGRAM O2000 \"SHAFT\"", "COMMENT \"Main\"", "OUTPUT UNIT INCH",
                           "DOCUMENT UNIT METRIC",
                           "NUMBERS IN MILLIMETRES (LENGTHS), DEGREES, RPM AND SECONDS", ""};
        QTest::newRow("unknown unit code shown with its code")
            << true << "SHAFT" << 0 << 0
            << QStringList{"HEAD 1 OF 1", "PROGRAM O1000 \"SHAFT\"", "COMMENT \"Main\"", "OUTPUT UNIT UNKNOWN 0",
                           "DOCUMENT UNIT METRIC",
                           "NUMBERS IN MILLIMETRES (LENGTHS), DEGREES, RPM AND SECONDS", ""};
        QTest::newRow("no heads: the machine's program in the document's unit")
            << false << "" << 0 << 0
            << QStringList{"MACHINE (NO NC HEADS)", "PROGRAM O1000 \"PART\"", "OUTPUT UNIT METRIC",
                           "DOCUMENT UNIT METRIC",
                           "NUMBERS IN MILLIMETRES (LENGTHS), DEGREES, RPM AND SECONDS", ""};
    }
    void header()
    {
        QFETCH(bool, withHead);
        QFETCH(QString, headName);
        QFETCH(int, headNumber);
        QFETCH(int, outputUnit);
        QFETCH(QStringList, expected);
        DocumentData document;
        document.machineSetup.programName = QStringLiteral("PART");
        document.machineSetup.programNumber = 1000;
        if (withHead)
            document.machineSetup.heads = {Head(headName, headNumber, outputUnit, QStringLiteral("Main"))};

        const QStringList listings = GenerateNcListings(document);
        QCOMPARE(listings.size(), 1);
        QCOMPARE(Lines(listings[0]).mid(0, expected.size()), expected);
    }

    void toolsInNumberOrder()
    {
        DocumentData document;
        auto reverse = Tool(21, "BD");
        reverse->spindleDirection = 1;
        reverse->gearRatio = 2.5;
        reverse->zShift = -12.7;
        reverse->unitSystem = 70;
        auto odd = Tool(1, "second T1");
        odd->spindleDirection = 7;
        auto forward = Tool(1, "OD");
        forward->spindleDirection = -1;
        document.tools = {reverse, Tool(5, "DR"), nullptr, forward, odd};

        QCOMPARE(SectionLines(GenerateNcListing(document), "TOOLS"),
                 QStringList({
                     "T1 ID=\"OD\" X=0 Y=0 Z=0 SPINDLE=FORWARD GEAR=1 HOLDER=0 TURRET=1 STATION=1 UNIT=METRIC COMMENT=\"\"",
                     "T1 ID=\"second T1\" X=0 Y=0 Z=0 SPINDLE=UNKNOWN 7 GEAR=1 HOLDER=0 TURRET=1 STATION=1 UNIT=METRIC COMMENT=\"\"",
                     "T5 ID=\"DR\" X=0 Y=0 Z=0 SPINDLE=NONE GEAR=1 HOLDER=0 TURRET=1 STATION=1 UNIT=METRIC COMMENT=\"\"",
                     "T21 ID=\"BD\" X=0 Y=0 Z=-12.7 SPINDLE=REVERSE GEAR=2.5 HOLDER=0 TURRET=1 STATION=1 UNIT=INCH COMMENT=\"\"",
                 }));
    }

    void operationTool_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("parameter");
        QTest::addColumn<QString>("toolId");
        QTest::addColumn<int>("withoutTool");
        QTest::addColumn<QString>("expected");

        QTest::newRow("ToolID names a tool") << 37 << "ToolID" << "DR" << 0 << "TYPE=37 TOOL=T5 ID=\"DR\"";
        QTest::newRow("no such tool") << 37 << "498" << "XX" << 0 << "TYPE=37 TOOL=? ID=\"XX\"";
        QTest::newRow("no tool parameter") << 37 << "" << "" << 0 << "TYPE=37 TOOL=NONE";
        QTest::newRow("type 154 tool") << 154 << "" << "DR" << 0 << "TYPE=154 TOOL=T5 ID=\"DR\"";
        QTest::newRow("type 154 without tool") << 154 << "" << "DR" << 1 << "TYPE=154 TOOL=NONE";
    }
    void operationTool()
    {
        QFETCH(int, type);
        QFETCH(QString, parameter);
        QFETCH(QString, toolId);
        QFETCH(int, withoutTool);
        QFETCH(QString, expected);
        DocumentData document;
        document.tools = {Tool(5, "DR")};
        auto operation = Operation(3, "Drill");
        operation->technology->type = type;
        operation->technology->toolId = toolId;
        operation->technology->withoutTool = withoutTool;
        if (!parameter.isEmpty())
            operation->technology->parameters[parameter].value = toolId;
        document.operations = {operation};

        QCOMPARE(LinesStarting(GenerateNcListing(document), "OP "),
                 QStringList{"OP 1 \"Drill\" " + expected});
    }

    void operationsOfEachHead_data()
    {
        QTest::addColumn<int>("headCount");
        QTest::addColumn<QVariant>("headId");
        QTest::addColumn<QList<bool>>("listed");

        QTest::newRow("head 1") << 2 << QVariant(1) << QList<bool>{true, false};
        QTest::newRow("head 2 as text") << 2 << QVariant("2") << QList<bool>{false, true};
        QTest::newRow("no HeadID: every head") << 2 << QVariant() << QList<bool>{true, true};
        QTest::newRow("no such head: every head") << 2 << QVariant(3) << QList<bool>{true, true};
        QTest::newRow("not a whole number: every head") << 2 << QVariant(1.5) << QList<bool>{true, true};
        QTest::newRow("not a number: every head") << 2 << QVariant("main") << QList<bool>{true, true};
        QTest::newRow("no heads: the machine lists all") << 0 << QVariant(2) << QList<bool>{true};
    }
    void operationsOfEachHead()
    {
        QFETCH(int, headCount);
        QFETCH(QVariant, headId);
        QFETCH(QList<bool>, listed);
        DocumentData document;
        for (int i = 0; i < headCount; ++i)
            document.machineSetup.heads.append(Head("A", 1, 71, "Main"));
        document.operations = {Operation(4, "Face", {}, headId)};

        QList<bool> found;
        for (const QString& listing : GenerateNcListings(document))
            found.append(LinesStarting(listing, "OP 1 \"Face\" TYPE=37 TOOL=NONE").size() == 1);
        QCOMPARE(found, listed);
    }

    void syncAtBothTiedOperations_data()
    {
        QTest::addColumn<int>("typeIndex");
        QTest::addColumn<QString>("typeName");

        QTest::newRow("first entry") << 1 << "G821";
        QTest::newRow("last entry") << 4 << "G810";
        QTest::newRow("no type") << 0 << "(NO TYPE)";
        QTest::newRow("beyond the entries") << 5 << "(NO TYPE)";
    }
    void syncAtBothTiedOperations()
    {
        QFETCH(int, typeIndex);
        QFETCH(QString, typeName);
        DocumentData document;
    AddSetupEntries(document);
        document.operations = {Operation(7, "Face"), Operation(8, "Turn"), Operation(9, "Back drill")};
        document.syncs = {Sync(0, {}), Sync(typeIndex, {{3, 7, 0, 0, 0, {}}, {3, 9, 0, 1, 0, {}}})};

        const QString listing = GenerateNcListing(document);
        QCOMPARE(LinesStarting(listing, "SYNC "),
                 QStringList({"SYNC " + typeName + " #2 P3 E0 WITH OP 3 \"Back drill\" P3 E1",
                              "SYNC " + typeName + " #2 P3 E1 WITH OP 1 \"Face\" P3 E0"}));
        QCOMPARE(LinesStarting(listing, "#"),
                 QStringList({"#1 (NO TYPE) NO NODES", "#2 " + typeName + " OP 1 \"Face\" P3 E0, OP 3 \"Back drill\" P3 E1"}));
    }

    void danglingReferencesAreShown()
    {
        DocumentData document;
    AddSetupEntries(document);
        auto bare = Operation(7, "Face");
        bare->technology.reset();
        document.operations = {bare, nullptr};
        document.tools = {nullptr};
        document.machineSetup.setupEntries.append(nullptr);
        document.syncs = {nullptr,
                          Sync(5, {{4, 7, 0, 2, 0, {}}, {1, 99, 0, 3, 0, {}}, {3, 0, 0, 0, 0, {}}})};

        const QString listing = GenerateNcListing(document);
        QCOMPARE(LinesStarting(listing, "OP "), QStringList{"OP 1 \"Face\" TYPE=0 TOOL=NONE"});
        QCOMPARE(LinesStarting(listing, "SYNC "),
                 QStringList{"SYNC (NO TYPE) #1 P4 E2 WITH OP (MISSING ID 99) P1 E3, NO OPERATION P3 E0"});
    }

    void goldenListing()
    {
        const DocumentData document = GoldenDocument();
        const QStringList expected = {
            "HEAD 1 OF 1",
            "PROGRAM O4711 \"FLANGE\"",
            "COMMENT \"Main and back\"",
            "OUTPUT UNIT METRIC",
            "DOCUMENT UNIT METRIC",
            "NUMBERS IN MILLIMETRES (LENGTHS), DEGREES, RPM AND SECONDS",
            "",
            "DATA PAGE",
            "  813 Work Receiver No.(##)   25",
            "  814 Bar Stock O.D.          12",
            "  815 Tool Positioning Point  1",
            "  816 Cut Off Tool            8",
            "  817 Cut Off Speed           1500",
            "  818 Machining Length        40",
            "  819 Parts Per/1 Chuck       1",
            "  820 Pipe ID/Tube ID         0",
            "  821 Back Spl Chuck POS      45.5",
            "  822 Cut Off Feed            0.05",
            "  824 Cut Off End Point       -0.5",
            "  893 Back Spindle            1",
            "  990 Gang Holder             3",
            "  991 Front Drill Holder      0",
            "  992 Back Drill Holder       0",
            "  Face Amount                 -0.5",
            "  Startup Spindle Speed       2000",
            "  Bar Loader Dwell (s)        0",
            "  Bar Loader Type             1 (MAGAZINE, SUB PROGRAM)",
            "  Bar Loader Sub Program      \"8999\"",
            "  Bar Loader Command          (NONE)",
            "",
            "TOOLS",
            "  T8 ID=\"CUT 3\" X=0.25 Y=0 Z=0 SPINDLE=FORWARD GEAR=1 HOLDER=2 TURRET=1 STATION=1 UNIT=METRIC COMMENT=\"\"",
            "  T21 ID=\"DR 5\" X=0 Y=0 Z=-30 SPINDLE=REVERSE GEAR=1.5 HOLDER=0 TURRET=2 STATION=3 UNIT=METRIC COMMENT=\"back drill\"",
            "",
            "OPERATIONS",
            "  OP 1 \"Cut off\" TYPE=153 TOOL=T8 ID=\"CUT 3\" HEAD=1",
            "    SYNC G811 #1 P4 E0 WITH OP 2 \"Pick up\" P1 E0",
            "  OP 2 \"Pick up\" TYPE=207 TOOL=NONE HEAD=2",
            "    SYNC G811 #1 P1 E0 WITH OP 1 \"Cut off\" P4 E0",
            "  OP 3 \"Back drill\" TYPE=37 TOOL=T21 ID=\"DR 5\" HEAD=2 SUPPRESSED",
            "",
            "SYNCS",
            "  #1 G811 OP 1 \"Cut off\" P4 E0, OP 2 \"Pick up\" P1 E0",
            "",
        };
        const QStringList actual = Lines(GenerateNcListing(document));
        for (qsizetype i = 0; i < std::min(actual.size(), expected.size()); ++i)
            QCOMPARE(actual[i], expected[i]);
        QCOMPARE(actual.size(), expected.size());
    }

    // In German the listing's own words are German, as the comments of an NC
    // program are in the shop's language: no word of the English listing is
    // left but the machine code, the document's own texts and the few words
    // both languages share. The lines are the same, the fields' values stand
    // in one column after the widest German label.
    void germanListing()
    {
        QtLocalizer german;
        german.setLanguageCode(QtLocalizer::kGerman);
        german.Initialise();
        const NcListings listings(GoldenDocument());
        const QStringList english = Lines(listings.Text());
        const QStringList lines = Lines(listings.Text(&german));
        QCOMPARE(lines.size(), english.size());
        QCOMPARE(lines.mid(0, 8), QStringList({"KANAL 1 VON 1", "PROGRAMM O4711 \"FLANGE\"", "KOMMENTAR \"Main and back\"",
                                               "AUSGABEEINHEIT METRISCH", "DOKUMENTEINHEIT METRISCH",
                                               "ZAHLEN IN MILLIMETER (L\u00c4NGEN), GRAD, 1/MIN UND SEKUNDEN", "",
                                               "DATENBLATT"}));
        QCOMPARE(LinesStarting(lines.join(QLatin1Char('\n')), "T21 "),
                 QStringList{"T21 ID=\"DR 5\" X=0 Y=0 Z=-30 SPINDEL=R\u00dcCKW\u00c4RTS \u00dcBERSETZUNG=1.5 HALTER=0 "
                             "REVOLVER=2 STATION=3 EINHEIT=METRISCH KOMMENTAR=\"back drill\""});
        QCOMPARE(LinesStarting(lines.join(QLatin1Char('\n')), "SYNC "),
                 QStringList({"SYNC G811 #1 P4 E0 MIT AG 2 \"Pick up\" P1 E0", "SYNC G811 #1 P1 E0 MIT AG 1 \"Cut off\" P4 E0"}));

        // Words: runs of two or more letters outside the quoted texts of the document.
        static const QRegularExpression quoted(QStringLiteral("\"[^\"]*\""));
        static const QRegularExpression word(QStringLiteral("\\b[^\\W\\d_]{2,}\\b"));
        const auto words = [](const QStringList& text) {
            QSet<QString> found;
            for (const QString& line : text)
                for (const auto& match : word.globalMatch(QString(line).remove(quoted)))
                    found.insert(match.captured());
            return found;
        };
        const QSet<QString> shared{"ID", "SYNC", "STATION", "IN"};
        const QSet<QString> left = words(english) & words(lines);
        QVERIFY2(left == shared, qPrintable(QStringList(left.values()).join(QLatin1Char(' '))));

        // the values of the Data Page fields in one column
        const qsizetype column = lines[8].indexOf(QStringLiteral(" 25")) + 1;
        for (const QString& line : lines.mid(8, 21))
            QVERIFY2(line.size() > column && line.at(column - 1) == QLatin1Char(' ') && line.at(column) != QLatin1Char(' '),
                     qPrintable(line));
    }

    // The listings are made once and shown in either language later, as they
    // were made; a document's text holding "%1" is shown as it stands.
    void listingsAreMadeOnceAndShownInEitherLanguage()
    {
        QtLocalizer german;
        german.setLanguageCode(QtLocalizer::kGerman);
        german.Initialise();
        DocumentData document = GoldenDocument();
        document.operations[0]->name = QStringLiteral("Cut %2 at 50%1");
        const NcListings listings(document);
        document.machineSetup.params[818] = 123.25;
        const QList<const host::Localizer*> languages{nullptr, &german, nullptr};
        for (const host::Localizer* localizer : languages) {
            const QString text = listings.Text(localizer);
            QVERIFY(text.contains(QStringLiteral("\"Cut %2 at 50%1\"")));
            QVERIFY2(!text.contains(QStringLiteral("123.25")), qPrintable(text));
            QCOMPARE(text.contains(QStringLiteral("OPERATIONS")), localizer == nullptr);
        }
    }
};

QTEST_GUILESS_MAIN(tst_NcListing)
#include "tst_NcListing.moc"
