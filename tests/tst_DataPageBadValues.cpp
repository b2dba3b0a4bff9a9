#include "DataPageFixture.h"

#include <QRadioButton>
#include <QTest>

// The Data Page under values it cannot use: a setup file the host cannot
// read, codes that do not convert, a store that cannot be written. Nothing
// is destroyed before it succeeds, and one bad value spoils no other.
class tst_DataPageBadValues : public QObject {
    Q_OBJECT

    static void Click(DataPageFixture& f, const QString& button) { f.Control<QAbstractButton>(button).click(); }
    static QStringList EntryNames(DataPageFixture& f)
    {
        QStringList names;
        for (const auto& entry : f.Setup().setupEntries)
            names << entry->name;
        return names;
    }
    static void TagPart(DataPageFixture& f, const QString& machineCode)
    {
        f.Setup().makerTag = "MARELON";
        f.Setup().machineCode = machineCode;
    }

private slots:
    // A setup file that does not load leaves the part's entries and setup
    // name as they were, and says why.
    void failedLoadKeepsTheSetup_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("failing");
        QTest::newRow("truncated") << QByteArray("{\"format\": \"feldra-machine-se") << "";
        QTest::newRow("empty") << QByteArray() << "";
        QTest::newRow("random bytes") << QByteArray("\x01\xff\xfe\x80 garbage \x00\x02", 16) << "";
        QTest::newRow("UTF-16") << QByteArray("\xff\xfe{\0}\0", 6) << "";
        QTest::newRow("a part renamed") << QByteArray("{\"format\": \"feldra-document\", \"version\": 1}") << "";
        QTest::newRow("the host refuses") << QByteArray("{}") << "MachineSetup.LoadSetupFile";
    }

    void failedLoadKeepsTheSetup()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QString, failing);
        DataPageFixture f;
        f.Setup().machineSetupName = "Before";
        f.AddSetupFile("L5 16-20", "Broken_Inch.EMS", contents);
        if (!failing.isEmpty()) {
            QFile standard(MARELON_SOURCE_DIR "/data/MachineSetups/L5 16-20/Standard_Inch.EMS");
            QVERIFY(standard.open(QIODevice::ReadOnly));
            f.AddSetupFile("L5 16-20", "Broken_Inch.EMS", standard.readAll());
            f.host.Faults().Fail(failing);
        }
        const QStringList before = EntryNames(f);
        f.Open();
        f.SelectModel("L5 16-20");
        QComboBox& setups = f.List("cmbMachineSetup");
        f.form->SelectList(setups, setups.findText("Broken"));
        Click(f, "cmdRefresh");
        QCOMPARE(EntryNames(f), before);
        QCOMPARE(f.Setup().machineSetupName, QString("Before"));
        QCOMPARE(f.messages->Messages().size(), 1);
        QVERIFY2(f.messages->Last().prompt.startsWith("The machine setup file \""), qPrintable(f.messages->Last().prompt));
        QVERIFY(f.messages->Last().prompt.contains("Broken_Inch.EMS\" cannot be loaded; the part keeps its setup.\n"));
    }

    // A machine code that does not convert is an unknown code: the list's
    // first model with its layout, in the part and in the store alike.
    void unreadableMachineCode_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<bool>("inThePart");
        for (const char* code : {"abc", "1e10", "99999999", " "}) {
            QTest::addRow("part: \"%s\"", code) << code << true;
            QTest::addRow("store: \"%s\"", code) << code << false;
        }
    }

    void unreadableMachineCode()
    {
        QFETCH(QString, code);
        QFETCH(bool, inThePart);
        DataPageFixture f;
        if (inThePart)
            TagPart(f, code);
        else
            f.SaveSetting("Machine Name", code);
        f.Open();
        const QString first = marelon::MachineModelNames(false).first();
        QCOMPARE(f.Text("cmbMachineName"), first);
        f.FillValid();
        Click(f, "cmdOK");
        QCOMPARE(f.Setup().machineCode, QString::number(marelon::ListIndexToMachineCode(0)));
    }

    // OK never runs without a model or a stock type.
    void okNeedsAModelAndAStockType_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("caption");
        QTest::newRow("no model") << "cmbMachineName" << "Machine Name";
        QTest::newRow("no stock type") << "StockTypeC" << "Stock Type";
    }

    void okNeedsAModelAndAStockType()
    {
        QFETCH(QString, list);
        QFETCH(QString, caption);
        DataPageFixture f;
        f.Open();
        f.FillValid();
        f.List(list).setCurrentIndex(-1);
        Click(f, "cmdOK");
        QVERIFY(f.Setup().makerTag.isEmpty());
        QCOMPARE(f.messages->Last().prompt, "Bad data entered for - " + caption
                                                + "\r\n\r\nPlease choose an entry of the list");
    }

    // A stock code that cannot be read or names no stock type shows a bar,
    // and OK never writes a negative code.
    void unreadableStockCode_data()
    {
        QTest::addColumn<QString>("code");
        for (const char* code : {"abc", "99999", "-5", "1e400", "40000"})
            QTest::newRow(code) << code;
    }

    void unreadableStockCode()
    {
        QFETCH(QString, code);
        DataPageFixture f;
        TagPart(f, "7");
        f.Setup().stockCode = code;
        f.Open();
        QCOMPARE(f.Text("StockTypeC"), QString("Bar"));
        f.FillValid();
        Click(f, "cmdOK");
        QCOMPARE(f.Setup().stockCode, QString("0"));
    }

    // One bar loader value that cannot be read changes only itself.
    void oneBadBarLoaderValue()
    {
        DataPageFixture f;
        TagPart(f, "7");
        f.Setup().barLoaderType = 1e10;
        f.Setup().barLoaderSubProgram = "9000";
        f.Setup().barLoaderCommand = "M155 X0.5 Z0.3 W2.25 R1 S800";
        f.Open();
        QCOMPARE(f.Text("txtBarLoaderSubNum"), QString("9000"));
        QCOMPARE(f.Text("TxtChamferDistX"), QString("0.5"));
        QCOMPARE(f.Text("TxtSpindleRPM"), QString("800"));
        f.FillValid();
        for (const char* field : {"TxtChamferDistX", "TxtChamferDistZ", "TxtPullBackAmount", "TxtSpindleRPM"})
            f.Edit(field).setText(QString());
        f.Open();
        Click(f, "cmdOK");
        QCOMPARE(f.Setup().barLoaderSubProgram, QString("9000"));
        QCOMPARE(f.Setup().barLoaderCommand, QString("M155 X0.5 Z0.3 W2.25 R1 S800"));
    }

    // A stock field that is not a number is refused by name before anything
    // is written: no general error, no second "Main Stock".
    void stockFieldNotANumber()
    {
        DataPageFixture f;
        f.Open();
        f.FillValid();
        f.Edit("PartLength").setText("1e308*10");
        f.form->CheckNumericEntry(f.Edit("PartLength"));
        Click(f, "cmdOK");
        QVERIFY(f.Setup().makerTag.isEmpty());
        QVERIFY(f.messages->Last().prompt.startsWith("Bad data entered for - Part Length\r\n\r\n"));
        QVERIFY(f.document->data.simulation.stocks.isEmpty());
    }

    // A huge number never spells out hundreds of digits in its field.
    void hugeNumbersStayShort()
    {
        DataPageFixture f;
        f.Open();
        f.Type("txt815", "1e308");
        QCOMPARE(f.Text("txt815"), QString("1E+308"));
        f.Type("txt815", "12345678901234");
        QCOMPARE(f.Text("txt815"), QString("12345678901234.0000"));
    }

    // A store that cannot be written is said once, naming the file; the part is written.
    void storeThatCannotBeWritten()
    {
        DataPageFixture f;
        const QString file = marelon::SettingsFolder() + "/Marelon Add-In.ini";
        QVERIFY(QDir().mkpath(file)); // a folder where the file belongs
        f.Open();
        f.FillValid();
        Click(f, "cmdOK");
        QCOMPARE(f.Setup().makerTag, QString("MARELON"));
        QCOMPARE(f.messages->Messages().size(), 1);
        QVERIFY(f.messages->Last().prompt.contains(QDir::toNativeSeparators(file)));
    }

    // The words True and False in the store, in any case; anything else by its number.
    void storedBooleans_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("magazine");
        QTest::newRow("True") << "True" << true;
        QTest::newRow("true") << "true" << true;
        QTest::newRow("TRUE") << "TRUE" << true;
        QTest::newRow("FALSE") << "FALSE" << false;
        QTest::newRow("1") << "1" << true;
        QTest::newRow("0") << "0" << false;
        QTest::newRow("yes: not read, the default") << "yes" << false;
    }

    void storedBooleans()
    {
        QFETCH(QString, stored);
        QFETCH(bool, magazine);
        DataPageFixture f;
        f.SaveSetting("Magazine Bar Loader", stored);
        f.Open();
        QCOMPARE(f.Control<QRadioButton>("optMagazine").isChecked(), magazine);
    }

    // The bar-change line carries " M1" only for polygon and profile stock.
    void lineM1ByStockType_data()
    {
        QTest::addColumn<int>("stockType");
        QTest::addColumn<bool>("m1");
        QTest::newRow("bar") << int(marelon::kBar) << false;
        QTest::newRow("tube") << int(marelon::kTube) << false;
        QTest::newRow("profile") << int(marelon::kProfile) << true;
    }

    void lineM1ByStockType()
    {
        QFETCH(int, stockType);
        QFETCH(bool, m1);
        DataPageFixture f;
        f.Open();
        f.form->SelectList(f.List("StockTypeC"), stockType);
        f.Edit("FeatureKey").setText("F1");
        f.FillValid();
        for (const char* field : {"StockDiameter", "InsideDiameter", "Zamount", "PartLength"})
            f.Edit(field).setText("1");
        f.Edit("StockLength").setText("40");
        Click(f, "cmdOK");
        QVERIFY2(f.messages->Messages().isEmpty(), qPrintable(f.messages->Messages().value(0).prompt));
        QCOMPARE(f.Setup().barLoaderCommand.endsWith(" M1"), m1);
    }
};

QTEST_MAIN(tst_DataPageBadValues)
#include "tst_DataPageBadValues.moc"
