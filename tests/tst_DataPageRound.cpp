#include "DataPageFixture.h"
#include "feldra/DocumentFile.h"

#include <QRadioButton>
#include <QSettings>
#include <QTest>

// What is done to a polygon stock's outline between two OKs.
enum class Outline { Untouched, ProfileOnIt, OperationOnIt, MovedToLayer0 };

// The Data Page round: what it loads from the settings store or the document,
// what OK checks and writes, and what it keeps as the next defaults.
class tst_DataPageRound : public QObject {
    Q_OBJECT

    static void Pick(DataPageFixture& f, const QString& list, int position)
    {
        f.form->SelectList(f.List(list), position);
    }
    static void SetParam(DataPageFixture& f, int number, double value) { f.Setup().params[number] = value; }
    static double Param(DataPageFixture& f, int number) { return f.Setup().params.value(number, -999); }
    // The Data Page's OK on "L5 16-20" with a stock of the type on a circle of
    // 12, swept from the profile key, of the stock length, and with the Z
    // facing amount when one is given; OK closes the Data Page.
    static void OkWithStock(DataPageFixture& f, int type, const QString& profileKey, const QString& stockLength,
                            const QString& zAmount = QString())
    {
        f.Open();
        f.SelectModel("L5 16-20");
        Pick(f, "StockTypeC", type);
        f.Edit("CircleDiameter").setText("12");
        f.Edit("FeatureKey").setText(profileKey);
        f.FillValid();
        if (!zAmount.isEmpty())
            f.Edit("Zamount").setText(zAmount);
        f.Edit("StockLength").setText(stockLength);
        f.Control<QAbstractButton>("cmdOK").click();
        QVERIFY(!f.form->isVisible());
    }

    // The keys of the part's chains, in the part's order.
    static QStringList ChainKeys(const DataPageFixture& f)
    {
        QStringList keys;
        for (const auto& feature : f.document->data.features)
            keys << feature->key;
        return keys;
    }

    // A part already written by the Data Page for a model.
    static void TagPart(DataPageFixture& f, const QString& machineCode)
    {
        f.Setup().makerTag = "MARELON";
        f.Setup().machineCode = machineCode;
    }

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    // A new part with nothing stored starts from the defaults: 1 cut-off tool
    // and 1 part per chuck, 0 elsewhere, the model with code 0, a hydrostatic loader.
    void newPartWithEmptyStore()
    {
        DataPageFixture f;
        f.Open();
        QCOMPARE(f.Text("cmbMachineName"), QString("B12"));
        for (const char* field : {"txt815", "txt817", "txt822", "txt824", "txtDwell", "TxtChamferDistX", "TxtSpindleRPM",
                                  "txtStartupSpeed", "txtBarLoaderSubNum"})
            QCOMPARE(f.Text(field), QString("0"));
        QCOMPARE(f.Text("txt816"), QString("1"));
        QCOMPARE(f.Text("txt819"), QString("1"));
        QVERIFY(!f.Control<QRadioButton>("optMagazine").isChecked());
        QVERIFY(!f.Control("txtBarLoaderSubNum").isEnabled());
        QCOMPARE(f.Text("StockDiameter"), QString("12"));
        QCOMPARE(f.Text("StockLength"), QString("40"));
        QCOMPARE(f.Text("cmbMachineSetup"), QString("??????????"));
    }

    // Stored texts are converted by the field's type; one that does not convert is skipped.
    void storedValues_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("shown");
        QTest::newRow("double") << "en_US" << "Cut Off Speed" << "3.50" << "txt817" << "3.5";
        QTest::newRow("German double") << "de_DE" << "Cut Off Speed" << "3,50" << "txt817" << "3,5";
        QTest::newRow("integer rounds half to even") << "en_US" << "Parts Per Chuck" << "2.5" << "txt819" << "2";
        QTest::newRow("integer") << "en_US" << "Parts Per Chuck" << "2.7" << "txt819" << "3";
        QTest::newRow("not a number") << "en_US" << "Cut Off Feed" << "abc" << "txt822" << "kept";
        QTest::newRow("model code") << "en_US" << "Machine Name" << "7" << "cmbMachineName" << "L5 16-20";
        QTest::newRow("unknown model code") << "en_US" << "Machine Name" << "99" << "cmbMachineName" << "A20";
        QTest::newRow("list position") << "en_US" << "Polar Mode" << "1" << "CmbPolarMode" << "X and Y";
        QTest::newRow("magazine") << "en_US" << "Magazine Bar Loader" << "True" << "optMagazine" << "on";
        QTest::newRow("magazine as a number") << "en_US" << "Magazine Bar Loader" << "-1" << "optMagazine" << "on";
        QTest::newRow("magazine not a word") << "en_US" << "Magazine Bar Loader" << "Yes" << "optMagazine" << "off";
    }

    void storedValues()
    {
        QFETCH(QString, locale);
        QFETCH(QString, key);
        QFETCH(QString, stored);
        QFETCH(QString, field);
        QFETCH(QString, shown);
        QLocale::setDefault(QLocale(locale));
        DataPageFixture f;
        f.SaveSetting(key, stored);
        if (auto* edit = f.form->findChild<QLineEdit*>(field))
            edit->setText("kept");
        f.Open();
        if (field == "optMagazine")
            QCOMPARE(f.Control<QRadioButton>(field).isChecked() ? "on" : "off", shown);
        else
            QCOMPARE(f.Text(field), shown);
    }

    // OK keeps the choices for the next new part, and the new part starts from them;
    // the catching tool and the extension are written, never read back.
    void defaultsForTheNextPart()
    {
        DataPageFixture f;
        f.Open();
        f.SelectModel("L5 16-20");
        f.FillValid();
        f.Edit("txt815").setText("2.5");
        Pick(f, "cmbGangHolder", 3);
        Pick(f, "CmbPolarMode", 1);
        f.Control<QAbstractButton>("optMagazine").click();
        f.Control<QAbstractButton>("cmdOK").click();
        QCOMPARE(f.Setting("Machine Name"), QString("7"));
        QCOMPARE(f.Setting("Tool Positioning Point"), QString("2.5"));
        QCOMPARE(f.Setting("Gang Holder"), QString("3"));
        QCOMPARE(f.Setting("Magazine Bar Loader"), QString("True"));
        QCOMPARE(f.Setting("Catching Tool"), QString("20"));
        QCOMPARE(f.Setting("Back Sp Extension"), QString("-1"));

        f.Setup() = {}; // the next part, without Data Page values
        f.Setup().heads.append(std::make_shared<feldra::NCHeadData>());
        f.Open();
        QCOMPARE(f.Text("cmbMachineName"), QString("L5 16-20"));
        QCOMPARE(f.Text("txt815"), QString("2.5"));
        QCOMPARE(f.Text("txt990"), QString("6"));
        QCOMPARE(f.Text("CmbPolarMode"), QString("X and Y"));
        QVERIFY(f.Control<QRadioButton>("optMagazine").isChecked());
        QVERIFY(f.Control("txtBarLoaderSubNum").isEnabled());
        QCOMPARE(f.Text("txt813"), QString("0")); // the model's, not the stored 20
    }

    // After OK the store holds exactly the Data Page's keys, each in its
    // encoding: texts as typed, list positions, True/False, 0/1, -1 for a
    // list without a selection.
    void settingsStoreAfterOk()
    {
        DataPageFixture f;
        f.Open();
        f.SelectModel("L5 16-20");
        f.FillValid();
        f.Edit("txt815").setText("2.50");
        Pick(f, "cmbGangHolder", 3);
        Pick(f, "cmbFrontDrillHolder", 1);
        Pick(f, "cmb893", 2);
        f.Control<QAbstractButton>("optMagazine").click();
        Pick(f, "cmbBarLoaderProgType", 1);
        Pick(f, "CmbSpindleStop", 1);
        Pick(f, "CmbPolarMode", 1);
        f.Control<QAbstractButton>("chkToolBreak").click();
        f.Control<QAbstractButton>("cmdOK").click();
        QVERIFY(f.messages->Messages().isEmpty());

        QSettings store(marelon::SettingsFolder() + "/Marelon Add-In.ini", QSettings::IniFormat);
        store.beginGroup("Data Page Settings");
        QMap<QString, QString> stored;
        for (const QString& key : store.childKeys())
            stored.insert(key, store.value(key).toString());
        const QMap<QString, QString> expected{
            {"Machine Name", "7"}, {"Tool Positioning Point", "2.50"}, {"Cut Off Tool", "1"},
            {"Cut Off Speed", "100"}, {"Cut Off Feed", "0.002"}, {"Cut Off End Point", "1"},
            {"Parts Per Chuck", "3"}, {"Catching Tool", "20"}, {"txt990", "6"}, {"Gang Holder", "3"},
            {"txt991", "52"}, {"Front Drill Holder", "1"}, {"txt992", "1"}, {"Back Drill Holder", "0"},
            {"Back Sp Length", "2"}, {"Back Sp Extension", "-1"}, {"Magazine Bar Loader", "True"},
            {"Magazine Bar Loader Prog Type", "1"}, {"Dwell For Bar Loader", "1"}, {"Bar Loader Sub Number", "0"},
            {"Chamfer Dist X", "1"}, {"Chamf Dist Z", "1"}, {"Pull Back Amount", "1"}, {"Spindle Stop", "1"},
            {"Spindle RPM", "1"}, {"Startup Spindle Speed", "1"}, {"Polar Mode", "1"},
            {"Cut Off Tool Breakage Detection", "1"},
        };
        QCOMPARE(stored, expected);

        // Unchecked, hydrostatic, and lists a model without them leaves unselected.
        f.Open();
        f.SelectModel("B12");
        f.FillValid();
        f.Control<QAbstractButton>("chkToolBreak").click();
        f.Control<QAbstractButton>("optHydrostatic").click();
        f.Control<QAbstractButton>("cmdOK").click();
        QCOMPARE(f.Setting("Cut Off Tool Breakage Detection"), QString("0"));
        QCOMPARE(f.Setting("Magazine Bar Loader"), QString("False"));
        for (const char* key : {"Gang Holder", "Front Drill Holder", "Back Drill Holder", "Back Sp Length"})
            QCOMPARE(f.Setting(key), QString("-1"));
    }

    // Param893 from the back spindle entry on every model with a list, and
    // the entry shown again when the part is opened.
    void backSpindleCodes_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<double>("code");
        const QList<std::pair<QStringList, QList<std::pair<QString, double>>>> lists{
            {{"L4 25-32"}, {{"Yes", 1}, {"No", 2}, {"Catch", 3}}},
            {{"C12-16", "C20-32", "L5 16-20", "L7 16-20"}, {{"Standard", 0}, {"With Basket", 1}, {"With Support", 2}}},
            {{"L6 32", "M2-3 12-16", "M2-3 20-32"}, {{"Standard", 0}, {"Support", 1}}},
        };
        for (const auto& [models, entries] : lists)
            for (const QString& model : models)
                for (const auto& [entry, code] : entries)
                    QTest::addRow("%s %s", qPrintable(model), qPrintable(entry)) << model << entry << code;
    }

    void backSpindleCodes()
    {
        QFETCH(QString, model);
        QFETCH(QString, entry);
        QFETCH(double, code);
        DataPageFixture f;
        f.Open();
        f.SelectModel(model);
        f.FillValid();
        QComboBox& list = f.List("cmb893");
        Pick(f, "cmb893", list.findText(entry));
        QCOMPARE(list.currentText(), entry);
        f.Control<QAbstractButton>("cmdOK").click();
        QCOMPARE(Param(f, 893), code);
        f.Open();
        QCOMPARE(f.Text("cmb893"), entry);
    }

    // The drill holder lists show the part's 991 and 992 less the model's offset.
    void drillHoldersOnLoading_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<double>("front");
        QTest::addColumn<double>("back");
        QTest::addColumn<int>("frontPosition");
        QTest::addColumn<int>("backPosition");
        QTest::newRow("L5 standard") << "L5 16-20" << 51.0 << 61.0 << 0 << 0;
        QTest::newRow("L5 free tool") << "L5 16-20" << 52.0 << 62.0 << 1 << 1;
        QTest::newRow("L7 mixed") << "L7 16-20" << 52.0 << 61.0 << 1 << 0;
        QTest::newRow("L5 below the list") << "L5 16-20" << 50.0 << 60.0 << 0 << 0;
        QTest::newRow("M2-3 20-32 back free tool") << "M2-3 20-32" << 0.0 << 1.0 << -1 << 1;
    }

    void drillHoldersOnLoading()
    {
        QFETCH(QString, model);
        QFETCH(double, front);
        QFETCH(double, back);
        QFETCH(int, frontPosition);
        QFETCH(int, backPosition);
        DataPageFixture f;
        const int position = int(marelon::MachineModelNames(false).indexOf(model));
        TagPart(f, QString::number(marelon::ListIndexToMachineCode(int16_t(position))));
        SetParam(f, 991, front);
        SetParam(f, 992, back);
        f.Open();
        QCOMPARE(f.Text("cmbMachineName"), model);
        if (frontPosition >= 0)
            QCOMPARE(f.List("cmbFrontDrillHolder").currentIndex(), frontPosition);
        QCOMPARE(f.List("cmbBackDrillHolder").currentIndex(), backPosition);
    }

    // A part written by the Data Page loads from its machine setup, never from the store.
    void existingPart()
    {
        DataPageFixture f;
        f.SaveSetting("Tool Positioning Point", "99");
        TagPart(f, "11"); // "M2-3 20-32"
        SetParam(f, 815, 1.25);
        SetParam(f, 819, 1003);
        SetParam(f, 990, 7);
        SetParam(f, 991, 63);
        SetParam(f, 992, 1);
        SetParam(f, 893, 1);
        f.Setup().toolBreakageDetection = 1;
        f.Setup().barLoaderType = 2;
        f.Setup().barLoaderCommand = "M155 X0.5 Z0.3 W2.25 R1 S800";
        f.Setup().stockCode = "21130"; // polygon on its inside circle, hexagon, 30 degrees
        f.Setup().stockDiameter = 20;
        f.Open();
        QCOMPARE(f.Text("cmbMachineName"), QString("M2-3 20-32"));
        QCOMPARE(f.Text("txt815"), QString("1.25"));
        QCOMPARE(f.Text("txt819"), QString("3"));
        QCOMPARE(f.Text("CmbPolarMode"), QString("X and Y"));
        QCOMPARE(f.List("cmbGangHolder").currentIndex(), 6);
        QCOMPARE(f.List("cmbBackDrillHolder").currentIndex(), 1);
        QCOMPARE(f.Text("cmb893"), QString("Support"));
        QVERIFY(f.Control<QAbstractButton>("chkToolBreak").isChecked());
        QCOMPARE(f.Text("cmbBarLoaderProgType"), QString("M Code"));
        QVERIFY(f.Control("TxtChamferDistX").isEnabled());
        QCOMPARE(f.Text("TxtPullBackAmount"), QString("2.25"));
        QCOMPARE(f.Text("CmbSpindleStop"), QString("NO"));
        QCOMPARE(f.Text("StockTypeC"), QString("Polygon"));
        QVERIFY(f.Control<QRadioButton>("IDCircle").isChecked());
        QCOMPARE(f.Text("Sides"), QString("6"));
        QCOMPARE(f.Text("BaseAngle"), QString("30"));
        QCOMPARE(f.Text("txt814"), QString("23.094010767585"));
    }

    // 819 holds the polar mode in its thousands and the parts per chuck below:
    // each side of 100 and of 1000.
    void partsPerChuckOnLoading_data()
    {
        QTest::addColumn<double>("param819");
        QTest::addColumn<QString>("parts");
        QTest::addColumn<int>("polarMode");
        const struct {
            int param819;
            const char* parts;
            int polarMode;
        } rows[] = {{99, "99", 0},    {100, "100", 0}, {101, "101", 0},   {999, "999", 0},   {1000, "0", 1},
                    {1001, "1", 1},   {1099, "99", 1}, {1100, "100", 1},  {1101, "101", 1}};
        for (const auto& row : rows)
            QTest::addRow("%d", row.param819) << double(row.param819) << QString(row.parts) << row.polarMode;
    }
    void partsPerChuckOnLoading()
    {
        QFETCH(double, param819);
        QFETCH(QString, parts);
        QFETCH(int, polarMode);
        DataPageFixture f;
        TagPart(f, "11");
        SetParam(f, 819, param819);
        f.Open();
        QCOMPARE(f.Text("txt819"), parts);
        QCOMPARE(f.List("CmbPolarMode").currentIndex(), polarMode);
    }

    // Loading goes on past what the host refuses; that field keeps what it showed.
    void loadingGoesOnPastAFailure()
    {
        DataPageFixture f;
        TagPart(f, "7");
        SetParam(f, 815, 0.5);
        SetParam(f, 817, 1.5);
        f.host.Faults().Fail("MachineSetup.Param815");
        f.Edit("txt815").setText("kept");
        f.Open();
        QCOMPARE(f.Text("txt815"), QString("kept"));
        QCOMPARE(f.Text("txt817"), QString("1.5"));
        QCOMPARE(f.Text("cmbMachineName"), QString("L5 16-20"));
    }

    // Each step of loading a written part goes on past a read the host
    // refuses: a field loaded after it still shows the part's value.
    void everyLoadingStepGoesOn_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("shown");
        QTest::newRow("a head's comment") << "NCHead.Comment" << "txt815" << "1.5";
        QTest::newRow("machine code") << "MachineSetup.MachineCode" << "txt815" << "1.5";
        QTest::newRow("815") << "MachineSetup.Param815" << "txt817" << "2500";
        QTest::newRow("819") << "MachineSetup.Param819" << "txt821" << "0.5";
        QTest::newRow("990") << "MachineSetup.Param990" << "txt991" << "52";
        QTest::newRow("893") << "MachineSetup.Param893" << "txtStartupSpeed" << "3000";
        QTest::newRow("bar loader type") << "MachineSetup.BarLoaderType" << "CmbPolarMode" << "X and Y";
        QTest::newRow("bar loader line") << "MachineSetup.BarLoaderCommand" << "CmbPolarMode" << "X and Y";
        QTest::newRow("tool breakage") << "MachineSetup.ToolBreakageDetection" << "CmbPolarMode" << "X and Y";
        QTest::newRow("Z facing") << "MachineSetup.StockFrontZ" << "PartLength" << "30";
        QTest::newRow("program") << "MachineSetup.ProgramName" << "StockTypeC" << "Tube";
        QTest::newRow("stock code") << "MachineSetup.StockCode" << "ProgramName" << "O7";
    }

    void everyLoadingStepGoesOn()
    {
        QFETCH(QString, failing);
        QFETCH(QString, field);
        QFETCH(QString, shown);
        DataPageFixture f;
        TagPart(f, "7");
        SetParam(f, 815, 1.5);
        SetParam(f, 817, 2500);
        SetParam(f, 819, 1003);
        SetParam(f, 821, 0.5);
        SetParam(f, 991, 52);
        f.Setup().startupSpindleSpeed = 3000;
        f.Setup().programName = "O7";
        f.Setup().stockCode = "10000";
        f.host.Faults().Fail(failing);
        f.Open();
        QCOMPARE(f.Text(field), shown);
    }

    // Each value OK writes into the machine setup is written whatever the host
    // refused before it; none of these refusals is the general error.
    void everyWriteGoesOn_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::newRow("maker tag") << "MachineSetup.MakerTag write";
        QTest::newRow("a head") << "NCHead.ProgramName write";
        QTest::newRow("machine code") << "MachineSetup.MachineCode write";
        QTest::newRow("814") << "MachineSetup.Param814 write";
        QTest::newRow("893") << "MachineSetup.Param893 write";
        QTest::newRow("face amount") << "MachineSetup.FaceAmount write";
        QTest::newRow("startup speed") << "MachineSetup.StartupSpindleSpeed write";
        QTest::newRow("bar loader type") << "MachineSetup.BarLoaderType write";
        QTest::newRow("tool breakage") << "MachineSetup.ToolBreakageDetection write";
        QTest::newRow("819") << "MachineSetup.Param819 write";
    }

    void everyWriteGoesOn()
    {
        QFETCH(QString, failing);
        DataPageFixture f;
        f.Open();
        f.SelectModel("L5 16-20");
        f.FillValid();
        f.Edit("ProgramName").setText("O9");
        f.Control<QAbstractButton>("chkToolBreak").click();
        f.host.Faults().Fail(failing);
        f.Control<QAbstractButton>("cmdOK").click();
        QVERIFY(f.messages->Messages().isEmpty());
        const feldra::MachineSetupData& s = f.Setup();
        const QMap<QString, bool> written{
            {"MachineSetup.MakerTag write", s.makerTag == "MARELON"},
            {"NCHead.ProgramName write", s.heads[1]->programName == "O9"},
            {"MachineSetup.MachineCode write", s.machineCode == "7"},
            {"MachineSetup.Param814 write", s.params.contains(814)},
            {"MachineSetup.Param893 write", s.params.contains(893)},
            {"MachineSetup.FaceAmount write", s.faceAmount != 0},
            {"MachineSetup.StartupSpindleSpeed write", s.startupSpindleSpeed == 1},
            {"MachineSetup.BarLoaderType write", !s.barLoaderCommand.isEmpty()},
            {"MachineSetup.ToolBreakageDetection write", s.toolBreakageDetection == 1},
            {"MachineSetup.Param819 write", s.params.value(819) == 3},
        };
        for (auto it = written.cbegin(); it != written.cend(); ++it)
            QVERIFY2(it.value() == (it.key() != failing), qPrintable(it.key()));
        QCOMPARE(f.Setting("Machine Name"), QString("7"));
    }

    // The extension of "L4 25-32" as the document keeps it.
    void backSpindleExtension_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("position");
        QTest::newRow("empty keeps the layout's") << "" << 1;
        QTest::newRow("0") << "0" << 0;
        QTest::newRow("2") << "2" << 1;
        QTest::newRow("1") << "1" << 0;
    }

    void backSpindleExtension()
    {
        QFETCH(QString, stored);
        QFETCH(int, position);
        DataPageFixture f;
        TagPart(f, "6");
        f.Setup().backSpindleExtension = stored;
        f.Open();
        QCOMPARE(f.List("cmbBackSpdlExt").currentIndex(), position);
    }

    // OK refuses a value out of its range, names the field and writes nothing.
    void checks_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("passes");
        QTest::newRow("inch bar stock at the limit") << 70 << "L5 16-20" << "txt814" << "1.2598" << true;
        QTest::newRow("inch bar stock beyond") << 70 << "L5 16-20" << "txt814" << "1.26" << false;
        QTest::newRow("mm bar stock at the limit") << 71 << "L5 16-20" << "txt814" << "32" << true;
        QTest::newRow("mm bar stock beyond") << 71 << "L5 16-20" << "txt814" << "32.001" << false;
        QTest::newRow("cut-off speed 0") << 70 << "L5 16-20" << "txt817" << "0" << false;
        QTest::newRow("cut-off tool 0") << 70 << "L5 16-20" << "txt816" << "0" << true;
        QTest::newRow("end point at -D") << 70 << "L5 16-20" << "txt824" << "-1" << true;
        QTest::newRow("end point beyond") << 70 << "L5 16-20" << "txt824" << "1.01" << false;
        QTest::newRow("catching tool 19 on M2-3") << 70 << "M2-3 12-16" << "txt813" << "19" << false;
        QTest::newRow("catching tool 19 on E2") << 70 << "E2 16J" << "txt813" << "19" << true;
        QTest::newRow("catching tool text on E2") << 70 << "E2 16J" << "txt813" << "x" << false;
        QTest::newRow("parts per chuck 0") << 70 << "L5 16-20" << "txt819" << "0" << false;
        QTest::newRow("dwell negative") << 70 << "L5 16-20" << "txtDwell" << "-1" << false;
        QTest::newRow("disabled field passes") << 70 << "B12" << "txt821" << "-5" << true;
        QTest::newRow("inch bar stock one step beyond") << 70 << "L5 16-20" << "txt814" << "1.2599" << false;
        QTest::newRow("catching tool 20 on M2-3") << 70 << "M2-3 20-32" << "txt813" << "20" << true;
        QTest::newRow("catching tool 29 on M2-3") << 70 << "M2-3 20-32" << "txt813" << "29" << true;
        QTest::newRow("catching tool 30 on M2-3") << 70 << "M2-3 20-32" << "txt813" << "30" << false;
        QTest::newRow("cut-off feed 0") << 70 << "L5 16-20" << "txt822" << "0" << false;
        QTest::newRow("cut-off feed just above 0") << 70 << "L5 16-20" << "txt822" << "0.0001" << true;
        QTest::newRow("parts per chuck 1") << 70 << "L5 16-20" << "txt819" << "1" << true;
        QTest::newRow("parts per chuck 999") << 70 << "L5 16-20" << "txt819" << "999" << true;
        QTest::newRow("parts per chuck 1000: the polar mode's digit") << 70 << "L5 16-20" << "txt819" << "1000" << false;
        QTest::newRow("inch length at 10 m") << 70 << "L5 16-20" << "txt815" << "393.7" << true;
        QTest::newRow("inch length beyond 10 m") << 70 << "L5 16-20" << "txt815" << "393.71" << false;
        QTest::newRow("inch length beyond -10 m") << 70 << "L5 16-20" << "txt815" << "-393.71" << false;
        QTest::newRow("mm length at 10 m") << 71 << "L5 16-20" << "txt818" << "10000" << true;
        QTest::newRow("mm length beyond 10 m") << 71 << "L5 16-20" << "txt818" << "10000.001" << false;
        QTest::newRow("a huge length") << 71 << "L5 16-20" << "txt815" << "1e308" << false;
        QTest::newRow("speed 100000 rpm") << 70 << "L5 16-20" << "txt817" << "100000" << true;
        QTest::newRow("speed beyond 100000 rpm") << 70 << "L5 16-20" << "txtStartupSpeed" << "100001" << false;
        QTest::newRow("dwell an hour") << 70 << "L5 16-20" << "txtDwell" << "3600" << true;
        QTest::newRow("dwell beyond an hour") << 70 << "L5 16-20" << "txtDwell" << "3601" << false;
        QTest::newRow("an 8-digit holder code") << 70 << "K16" << "txt991" << "99999999" << true;
        QTest::newRow("a 9-digit holder code") << 70 << "K16" << "txt991" << "100000000" << false;
        QTest::newRow("part length not a number") << 70 << "L5 16-20" << "PartLength" << "abc" << false;
        QTest::newRow("stock length beyond 10 m") << 71 << "L5 16-20" << "StockLength" << "10001" << false;
        QTest::newRow("a hidden stock field is not checked") << 70 << "L5 16-20" << "CircleDiameter" << "abc" << true;
    }

    void checks()
    {
        QFETCH(int, unit);
        QFETCH(QString, model);
        QFETCH(QString, field);
        QFETCH(QString, value);
        QFETCH(bool, passes);
        DataPageFixture f(unit);
        f.Open();
        f.SelectModel(model);
        Pick(f, "StockTypeC", marelon::kProfile); // 814 is typed, not taken from the stock
        f.Edit("FeatureKey").setText("F1");
        f.FillValid();
        f.Setup().stockDiameter = 0; // the end point's bound is the bar stock O.D. shown, 1
        f.Edit(field).setText(value);
        f.Control<QAbstractButton>("cmdOK").click();
        QCOMPARE(f.Setup().makerTag, QString(passes ? "MARELON" : ""));
        QCOMPARE(f.form->isVisible(), !passes);
        QCOMPARE(marelon::Flags().dataPageAvailable, passes);
        if (!passes)
            QVERIFY(f.messages->Last().prompt.contains(
                f.Control<QLabel>(QLatin1String(marelon::DataPageFieldOf(field).label)).text()));
    }

    // What OK writes into the machine setup, the heads, the main spindle and the stock.
    void okWrites_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<double>("workLength");
        QTest::newRow("inch") << 70 << 3.5;
        QTest::newRow("mm") << 71 << 51.5;
    }

    void okWrites()
    {
        QFETCH(int, unit);
        QFETCH(double, workLength);
        DataPageFixture f(unit);
        f.Open();
        f.SelectModel("L4 25-32");
        f.FillValid();
        f.Edit("txt818").setText("1.5");
        Pick(f, "cmb893", 2);        // "Catch"
        Pick(f, "cmbBackSpdlExt", 0);
        Pick(f, "CmbPolarMode", 1);
        Pick(f, "NCCodeUnit", 1);
        f.Control<QAbstractButton>("chkToolBreak").click();
        f.Edit("ProgramName").setText("O1000");
        f.Edit("ProgramNumber").setText("1000");
        f.Edit("Zamount").setText("-0.5");
        f.Control<QAbstractButton>("cmdOK").click();
        QCOMPARE(f.messages->Messages().size(), 0);
        const feldra::MachineSetupData& s = f.Setup();
        QCOMPARE(s.makerTag, QString("MARELON"));
        QCOMPARE(s.machineCode, QString("6"));
        QCOMPARE(Param(f, 893), 3.0);
        QCOMPARE(Param(f, 819), 1003.0);
        QCOMPARE(Param(f, 991), 1.0);
        QCOMPARE(s.backSpindleExtension, QString("1"));
        QCOMPARE(s.toolBreakageDetection, 1.0);
        QCOMPARE(s.faceAmount, 6.5); // cut-off tool: centre offset 10, width 3
        QCOMPARE(s.spindles[0]->workLength, workLength);
        QCOMPARE(s.stockFrontZ, 0.5);
        QCOMPARE(s.stockCode, QString("0"));
        for (const auto& head : s.heads) {
            QCOMPARE(head->programName, QString("O1000"));
            QCOMPARE(head->programNumber, 1000);
            QCOMPARE(head->outputUnit, 71);
        }
        QCOMPARE(s.heads[1]->comment, QString("Head 2 comment"));
        QCOMPARE(s.barLoaderCommand, QString("M155 X1. Z1. W1. R1 S1"));
        QVERIFY(marelon::Flags().dataPageAvailable);
    }

    // The face amount comes from the first cut-off operation's tool.
    void faceAmount_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("corner");
        QTest::addColumn<bool>("suppressed");
        QTest::addColumn<double>("amount");
        QTest::newRow("kind 23") << 23 << 13 << false << 6.5;
        QTest::newRow("kind 17, corner 14") << 17 << 14 << false << -0.5;
        QTest::newRow("a drill") << 16 << 13 << false << 0.0;
        QTest::newRow("cut-off suppressed") << 23 << 13 << true << 0.0;
    }

    void faceAmount()
    {
        QFETCH(int, kind);
        QFETCH(int, corner);
        QFETCH(bool, suppressed);
        QFETCH(double, amount);
        DataPageFixture f;
        f.document->data.tools[0]->toolType = kind;
        f.document->data.tools[0]->cornerCode = corner;
        f.document->data.operations[0]->suppressed = suppressed;
        f.Open();
        f.FillValid();
        f.Edit("Zamount").setText("-0.5");
        f.Control<QAbstractButton>("cmdOK").click();
        QCOMPARE(f.Setup().faceAmount, amount);
    }

    // A model other than "L4 25-32" leaves the extension; a back-spindle text
    // that is no entry leaves Param893.
    void okLeavesWhatItDoesNotOwn()
    {
        DataPageFixture f;
        f.Setup().backSpindleExtension = "2";
        SetParam(f, 893, 5);
        f.Open();
        f.SelectModel("A20");
        f.FillValid();
        f.Control<QAbstractButton>("cmdOK").click();
        QCOMPARE(f.Setup().backSpindleExtension, QString("2"));
        QCOMPARE(Param(f, 893), 5.0);
    }

    // A property the host refuses is skipped and the rest written; a failure
    // of the work length or the stock gives the general message, no defaults.
    void okGoesOnPastFailures_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<bool>("general");
        QTest::newRow("a parameter") << "MachineSetup.Param815 write" << false;
        QTest::newRow("the heads") << "NCHead.Comment write" << false;
        QTest::newRow("the face amount") << "Document.Operations" << false;
        QTest::newRow("the work length") << "Spindle.WorkLength write" << true;
        QTest::newRow("the stock code") << "MachineSetup.StockCode write" << true;
    }

    void okGoesOnPastFailures()
    {
        QFETCH(QString, failing);
        QFETCH(bool, general);
        DataPageFixture f;
        f.Open();
        f.SelectModel("L5 16-20");
        f.FillValid();
        f.Edit("txt816").setText("7");
        f.host.Faults().Fail(failing);
        f.Control<QAbstractButton>("cmdOK").click();
        QCOMPARE(Param(f, 816), 7.0);
        QCOMPARE(f.Setup().makerTag, QString("MARELON"));
        QCOMPARE(f.messages->Messages().size(), general ? 1 : 0);
        if (general)
            QCOMPARE(f.messages->Last().prompt, QString("There was an error! Possibly some data is not set properly."));
        QCOMPARE(f.Setting("Cut Off Tool"), general ? QString("<none>") : QString("7"));
        QVERIFY(marelon::Flags().dataPageAvailable);
        QVERIFY(!f.form->isVisible());
    }

    // A profile stock needs its feature; a polygon stock is built once, replaced by the next OK.
    void stocks()
    {
        DataPageFixture f;
        f.Open();
        f.SelectModel("L5 16-20");
        f.FillValid();
        Pick(f, "StockTypeC", marelon::kProfile);
        f.Control<QAbstractButton>("cmdOK").click();
        QCOMPARE(f.messages->Last().prompt, QString("Select a feature for the Stock Profile"));
        QCOMPARE(f.messages->Last().title, QString("Stock Definition"));
        QVERIFY(f.Setup().makerTag.isEmpty());
        QVERIFY(f.form->isVisible());

        Pick(f, "StockTypeC", marelon::kPolygon);
        f.Edit("CircleDiameter").setText("1");
        f.Edit("StockLength").setText("10");
        f.FillValid();
        f.Control<QAbstractButton>("cmdOK").click();
        QCOMPARE(f.Setup().stockCode, QString("20000"));
        QCOMPARE(f.document->data.simulation.stocks.size(), 1);
        f.Open();
        f.FillValid();
        f.Control<QAbstractButton>("cmdOK").click();
        QCOMPARE(f.messages->Messages().size(), 1);
        QCOMPARE(f.document->data.simulation.stocks.size(), 1);
        QCOMPARE(f.document->data.simulation.stocks[0]->name, QString("Main Stock"));
    }

    // OK draws a polygon stock's outline on "Temp" and takes away the one it
    // drew before, whatever the new stock: repeated OKs leave one outline. The
    // outline stays when the new stock is a profile swept from it, an
    // operation is made from it, or it was moved to another layer; a chain of
    // the user's on "Temp" ("Sketch") always stays.
    void formerPolygonOutline_data()
    {
        QTest::addColumn<int>("first");        // the stock type of the first OK
        QTest::addColumn<int>("change");       // an Outline: done after the first OK
        QTest::addColumn<int>("then");         // the stock type of the OKs after it
        QTest::addColumn<int>("oks");          // how many OKs after it
        QTest::addColumn<QStringList>("chains"); // the part's chains at the end
        QTest::addColumn<QString>("profile");  // what "Main Stock" is swept from at the end

        const int polygon = marelon::kPolygon;
        const int untouched = int(Outline::Untouched);
        QTest::newRow("polygon again") << polygon << untouched << polygon << 1 << QStringList{"F1", "Sketch", "Chain1"}
                                       << "Chain1";
        QTest::newRow("polygon four times more")
            << polygon << untouched << polygon << 4 << QStringList{"F1", "Sketch", "Chain1"} << "Chain1";
        QTest::newRow("a bar") << polygon << untouched << int(marelon::kBar) << 1 << QStringList{"F1", "Sketch"} << "";
        QTest::newRow("a profile swept from the outline") << polygon << int(Outline::ProfileOnIt)
                                                           << int(marelon::kProfile) << 1
                                                           << QStringList{"F1", "Sketch", "Chain1"} << "Chain1";
        QTest::newRow("an operation made from the outline")
            << polygon << int(Outline::OperationOnIt) << polygon << 1 << QStringList{"F1", "Sketch", "Chain1", "Chain2"}
            << "Chain2";
        QTest::newRow("the outline moved to layer 0")
            << polygon << int(Outline::MovedToLayer0) << polygon << 1 << QStringList{"F1", "Sketch", "Chain1", "Chain2"}
            << "Chain2";
        QTest::newRow("a profile swept from a chain of the user's on Temp, then a polygon")
            << int(marelon::kProfile) << untouched << polygon << 2 << QStringList{"F1", "Sketch", "Chain1"} << "Chain1";
    }

    void formerPolygonOutline()
    {
        QFETCH(int, first);
        QFETCH(int, change);
        QFETCH(int, then);
        QFETCH(int, oks);
        QFETCH(QStringList, chains);
        QFETCH(QString, profile);
        DataPageFixture f;
        auto temp = std::make_shared<feldra::LayerData>();
        temp->name = "Temp";
        f.document->data.layers.append(temp);
        auto sketch = std::make_shared<feldra::FeatureData>();
        sketch->key = "Sketch";
        sketch->layer = "Temp";
        sketch->elements = {{0, 0, 0}, {5, 0, 0}, {5, 0, -5}, {0, 0, 0}};
        f.document->data.features.append(sketch);
        auto ok = [&f](int type, const QString& profileKey) { OkWithStock(f, type, profileKey, "40"); };
        ok(first, "Sketch");
        const QString outline = f.document->data.simulation.stocks.value(0)->featureKey;
        if (change == int(Outline::OperationOnIt))
            f.document->data.operations.last()->featureKey = outline;
        if (change == int(Outline::MovedToLayer0))
            f.document->Feature(outline)->layer = "0";
        // OK on what the same OK wrote leaves the whole part as it was.
        const bool same = first == then && change == int(Outline::Untouched);
        for (int i = 0; i < oks; ++i) {
            const QByteArray before = feldra::WriteDocument(f.document->data);
            ok(then, change == int(Outline::ProfileOnIt) ? outline : QString());
            if (same)
                QCOMPARE(feldra::WriteDocument(f.document->data), before);
        }

        QCOMPARE(ChainKeys(f), chains);
        const auto& stocks = f.document->data.simulation.stocks;
        QCOMPARE(stocks.size(), profile.isEmpty() ? 0 : 1);
        if (!profile.isEmpty())
            QCOMPARE(stocks[0]->featureKey, profile);
        QCOMPARE(f.messages->Messages().size(), 0);
    }

    // A polygon stock the host does not build leaves no outline behind: the
    // general message says the stock is not set, the next OK draws one
    // outline, and OK once more leaves the part as it was.
    void aPolygonStockNotBuiltLeavesNoOutline_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QString>("length");
        QTest::newRow("a stock length of 0") << QString() << "0";
        QTest::newRow("the stock refused") << "Simulation.AddStock" << "40";
        QTest::newRow("the outline not turned") << "GeometryUtility.RotateAboutY" << "40";
        QTest::newRow("a side refused") << "Feature.AddSegment" << "40";
    }
    void aPolygonStockNotBuiltLeavesNoOutline()
    {
        QFETCH(QString, failing);
        QFETCH(QString, length);
        DataPageFixture f;
        auto ok = [&f](const QString& stockLength) { OkWithStock(f, marelon::kPolygon, QString(), stockLength, "0"); };
        const QStringList before = ChainKeys(f);
        if (!failing.isEmpty())
            f.host.Faults().Fail(failing);
        ok(length);
        QCOMPARE(ChainKeys(f), before);
        QVERIFY(f.document->data.simulation.stocks.isEmpty());
        QCOMPARE(f.messages->Messages().size(), 1);
        QCOMPARE(f.messages->Last().prompt, QString("There was an error! Possibly some data is not set properly."));

        f.host.Faults().HealAll();
        ok("40");
        QCOMPARE(ChainKeys(f).size(), before.size() + 1);
        QCOMPARE(f.document->data.simulation.stocks.value(0)->featureKey, ChainKeys(f).last());
        const QByteArray built = feldra::WriteDocument(f.document->data);
        ok("40");
        QCOMPARE(feldra::WriteDocument(f.document->data), built);
    }

    // A new part takes head 1's program name as its title; a saved one keeps its title.
    void titleOfANewPart()
    {
        for (bool isNew : {true, false}) {
            DataPageFixture f;
            marelon::Flags().newDocument = isNew;
            f.document->data.title = "part";
            f.Open();
            f.FillValid();
            f.Edit("ProgramName").setText("O1000");
            f.Control<QAbstractButton>("cmdOK").click();
            QCOMPARE(f.document->data.title, QString(isNew ? "O1000" : "part"));
        }
    }
};

QTEST_MAIN(tst_DataPageRound)
#include "tst_DataPageRound.moc"
