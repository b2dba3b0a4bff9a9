#include "DataPageFixture.h"

#include "addin/ui/TabStop.h"

#include <QRadioButton>
#include <QTest>

using marelon::TabStop;

// The Data Page's handlers, driven as a user drives them: typing and leaving
// fields, picking list entries, clicking buttons.
class tst_frmMarelonDataPage : public QObject {
    Q_OBJECT

    static void Pick(DataPageFixture& f, const QString& list, int position)
    {
        QComboBox& combo = f.List(list);
        combo.setCurrentIndex(position);
        emit combo.activated(position);
    }
    static void Click(DataPageFixture& f, const QString& button) { f.Control<QAbstractButton>(button).click(); }

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    // A field takes an expression with "." or "," and shows its value with four decimals.
    void numericEntry_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("invalid");
        for (const char* locale : {"en_US", "de_DE"}) {
            const bool german = QLatin1String(locale) == QLatin1String("de_DE");
            QTest::addRow("%s comma", locale) << locale << "txt814" << "12,5" << (german ? "12,5000" : "12.5000") << false;
            QTest::addRow("%s expression", locale) << locale << "StockLength" << "2*3" << (german ? "6,0000" : "6.0000") << false;
            QTest::addRow("%s invalid", locale) << locale << "StockLength" << "2*" << "2*" << true;
            QTest::addRow("%s empty", locale) << locale << "Zamount" << "" << "" << false;
        }
        QTest::newRow("invalid keeps the point") << "de_DE" << "PartLength" << "1,5+" << "1.5+" << true;
    }

    void numericEntry()
    {
        QFETCH(QString, locale);
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(bool, invalid);
        QLocale::setDefault(QLocale(locale));
        DataPageFixture f;
        f.Open();
        f.Type(field, typed);
        QCOMPARE(f.Text(field), shown);
        QCOMPARE(f.messages->Messages().size(), invalid ? 1 : 0);
        if (invalid) {
            QCOMPARE(f.messages->Last().prompt, QString("Invalid Expression"));
            QCOMPARE(f.messages->Last().title, QString("Error"));
            QCOMPARE(f.messages->Last().icon, host::MsgIcon::Information);
            QCOMPARE(f.Edit(field).selectedText(), shown);
            QCOMPARE(f.form->focusWidget(), &f.Edit(field));
        }
    }

    // The polygon's bar stock O.D.: the circle's diameter on OD, across the corners on ID.
    void polygonDiameter_data()
    {
        QTest::addColumn<int>("sides");
        QTest::addColumn<QString>("circle");
        QTest::addColumn<QString>("diameter");
        QTest::addColumn<QString>("txt814");
        QTest::newRow("hexagon ID") << 1 << "IDCircle" << "10" << "11.5470053837925";
        QTest::newRow("hexagon OD") << 1 << "ODCircle" << "10" << "10.0000";
        QTest::newRow("square ID") << 0 << "IDCircle" << "20" << "28.2842712474619";
        QTest::newRow("not a number") << 2 << "IDCircle" << "abc" << "unchanged";
    }

    void polygonDiameter()
    {
        QFETCH(int, sides);
        QFETCH(QString, circle);
        QFETCH(QString, diameter);
        QFETCH(QString, txt814);
        DataPageFixture f;
        f.Open();
        Pick(f, "StockTypeC", marelon::kPolygon);
        QVERIFY(f.Control("PolygonFrame").isVisibleTo(f.form.get()));
        QVERIFY(!f.Edit("txt814").isEnabled());
        f.List("Sides").setCurrentIndex(sides);
        Click(f, circle);
        f.Edit("txt814").setText("unchanged");
        f.Type("CircleDiameter", diameter);
        QCOMPARE(f.Text("txt814"), txt814);
        QVERIFY(!f.Control<QLabel>("CirclePicture").pixmap().isNull());
    }

    // The base angle ends in the first pitch of the polygon below 90 degrees.
    void baseAngle_data()
    {
        QTest::addColumn<int>("sides");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("-10 on a square") << 0 << "-10" << "80";
        QTest::newRow("200 on an octagon") << 2 << "200" << "20";
        QTest::newRow("90 on a hexagon") << 1 << "90" << "30";
        QTest::newRow("not a number") << 1 << "abc" << "0";
    }

    void baseAngle()
    {
        QFETCH(int, sides);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        DataPageFixture f;
        f.Open();
        Pick(f, "StockTypeC", marelon::kPolygon);
        f.List("Sides").setCurrentIndex(sides);
        f.Type("BaseAngle", typed);
        QCOMPARE(f.Text("BaseAngle"), shown);
    }

    // Each stock type shows its fields and gives 814 and 820.
    void stockTypes()
    {
        DataPageFixture f;
        f.Setup().stockInsideDiameter = 4;
        f.Open();
        Pick(f, "StockTypeC", marelon::kTube);
        QCOMPARE(f.Text("txt814"), QString("12"));
        QCOMPARE(f.Text("txt820"), QString("4"));
        f.Type("InsideDiameter", "-5");
        QCOMPARE(f.Text("InsideDiameter"), QString("5"));
        QCOMPARE(f.Text("txt820"), QString("5"));
        Pick(f, "StockTypeC", marelon::kPolygon);
        QVERIFY(!f.Edit("StockDiameter").isVisibleTo(f.form.get()));
        Pick(f, "StockTypeC", marelon::kBar);
        QCOMPARE(f.Text("StockDiameter"), QString("12"));
        QCOMPARE(f.Text("txt820"), QString("0"));
        QVERIFY(!f.Edit("InsideDiameter").isVisibleTo(f.form.get()));
        f.Type("StockDiameter", "-20");
        QCOMPARE(f.Text("StockDiameter"), QString("20"));
        QCOMPARE(f.Text("txt814"), QString("20"));
        Pick(f, "StockTypeC", marelon::kProfile);
        QVERIFY(f.Edit("txt814").isEnabled());
        QVERIFY(f.Control("SelectButton").isVisibleTo(f.form.get()));
    }

    // The profile's feature is picked in the document; a cancelled pick keeps the one before.
    void profileFeaturePick()
    {
        DataPageFixture f;
        f.Open();
        Pick(f, "StockTypeC", marelon::kProfile);
        f.host.Services().pickAnswers = {"F1", ""};
        Click(f, "SelectButton");
        QCOMPARE(f.Text("FeatureKey"), QString("F1"));
        QVERIFY(f.form->isVisible());
        Click(f, "SelectButton");
        QCOMPARE(f.Text("FeatureKey"), QString("F1"));
        QVERIFY(f.form->isVisible());
        QVERIFY(!marelon::Flags().dataPageAvailable);
    }

    // The holder lists write their codes into the parameter fields.
    void holderLists_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("code");
        QTest::newRow("L5 front free tool") << "L5 16-20" << "cmbFrontDrillHolder" << 1 << "txt991" << "52";
        QTest::newRow("L7 back free tool") << "L7 16-20" << "cmbBackDrillHolder" << 1 << "txt992" << "62";
        QTest::newRow("M2-3 back free tool") << "M2-3 20-32" << "cmbBackDrillHolder" << 1 << "txt992" << "1";
        QTest::newRow("L5 gang pattern") << "L5 16-20" << "cmbGangHolder" << 10 << "txt990" << "29";
        QTest::newRow("C gang pattern") << "C12-16" << "cmbGangHolder" << 2 << "txt990" << "1";
        QTest::newRow("M2-3 gang free tool") << "M2-3 20-32" << "cmbGangHolder" << 13 << "txt990" << "49";
    }

    void holderLists()
    {
        QFETCH(QString, model);
        QFETCH(QString, list);
        QFETCH(int, position);
        QFETCH(QString, field);
        QFETCH(QString, code);
        DataPageFixture f;
        f.Open();
        f.SelectModel(model);
        Pick(f, list, position);
        QCOMPARE(f.Text(field), code);
        if (model == "L5 16-20" && field == "txt990")
            QCOMPARE(f.Control<QLabel>("imgGangHolder").pixmap().toImage(),
                     QPixmap(":/datapage/L5-16/20-29").toImage());
    }

    // Magazine starts from a sub program; the M code enables the line's fields; hydrostatic none.
    void barLoaderOptions()
    {
        DataPageFixture f;
        f.Open();
        auto enabled = [&f] {
            QString result;
            for (const char* name : {"txtBarLoaderSubNum", "cmbBarLoaderProgType", "TxtChamferDistX", "TxtSpindleRPM"})
                result += f.Control(name).isEnabled() ? '1' : '0';
            return result;
        };
        Click(f, "optMagazine");
        QCOMPARE(f.List("cmbBarLoaderProgType").currentIndex(), 0);
        QCOMPARE(enabled(), QString("1100"));
        Pick(f, "cmbBarLoaderProgType", 1);
        QCOMPARE(enabled(), QString("0111"));
        Click(f, "optHydrostatic");
        QCOMPARE(enabled(), QString("0000"));
        QVERIFY(!f.Control<QRadioButton>("optMagazine").isChecked());
        Click(f, "optMagazine");
        QCOMPARE(f.List("cmbBarLoaderProgType").currentIndex(), 0);
        QCOMPARE(enabled(), QString("1100"));
    }

    // Each head keeps its own comment while the user switches between them.
    void headComments()
    {
        DataPageFixture f;
        f.Open();
        QCOMPARE(f.List("cmbHeadComment").count(), 2);
        QCOMPARE(f.List("cmbHeadComment").itemText(1), QString("Head-2"));
        QCOMPARE(f.Text("Comments"), QString("Head 1 comment"));
        Pick(f, "cmbHeadComment", 1);
        QCOMPARE(f.Text("Comments"), QString("Head 2 comment"));
        f.Edit("Comments").setText("Back side");
        Pick(f, "cmbHeadComment", 0);
        QCOMPARE(f.Text("Comments"), QString("Head 1 comment"));
        QCOMPARE(f.form->HeadComments(), QStringList({"Head 1 comment", "Back side"}));
    }

    // The tab shown decides which group is in the tab order; Part Data changes nothing.
    void tabOrderByTab()
    {
        DataPageFixture f;
        f.Open();
        QTabWidget& tabs = f.Control<QTabWidget>("MyTabs");
        tabs.setCurrentIndex(1);
        QVERIFY(TabStop(&f.Control("txt815")) && !TabStop(&f.Control("txtDwell")));
        tabs.setCurrentIndex(0);
        QVERIFY(TabStop(&f.Control("txt815")) && !TabStop(&f.Control("txtDwell")));
        tabs.setCurrentIndex(2);
        QVERIFY(!TabStop(&f.Control("txt815")) && TabStop(&f.Control("txtDwell")));
        QVERIFY(!TabStop(&f.Control("cmbMachineName")) && TabStop(&f.Control("optMagazine")));
    }

    void programNumber_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("negative") << "-1200" << "1200";
        QTest::newRow("not a number") << "O1200" << "0";
    }

    void programNumber()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        DataPageFixture f;
        f.Open();
        f.Type("ProgramNumber", typed);
        QCOMPARE(f.Text("ProgramNumber"), shown);
    }

    // Leaving the collet extension writes it into every pick-up operation; an
    // invalid value is refused and writes nothing.
    void colletExtension()
    {
        DataPageFixture f;
        f.Open();
        f.Type("txtColletExt", "4.25");
        QCOMPARE(f.document->data.operations[1]->technology->colletExtension, 4.25);
        f.Type("txtColletExt", "-1");
        QCOMPARE(f.document->data.operations[1]->technology->colletExtension, 4.25);
        QVERIFY(f.messages->Last().prompt.startsWith("Bad data entered for -"));
    }

    // The update buttons take their values from the document's operations.
    void updateButtons()
    {
        DataPageFixture f;
        f.Open();
        f.SelectModel("L5 16-20");
        Click(f, "CmdUpd816");
        QCOMPARE(f.Text("txt816"), QString("5.0000"));
        Click(f, "CmdUpdColletExt");
        QCOMPARE(f.Text("txtColletExt"), QString("3.5000"));
    }

    // A chuck position of 1,000 or more is taken as the number it is, not as an invalid expression.
    void chuckPositionBeyondAThousand_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("shown");
        QTest::newRow("en") << "en_US" << "1485.0000";
        QTest::newRow("de") << "de_DE" << "1485,0000";
    }

    void chuckPositionBeyondAThousand()
    {
        QFETCH(QString, locale);
        QFETCH(QString, shown);
        QLocale::setDefault(QLocale(locale));
        DataPageFixture f(71);
        f.Setup().partLength = 1500;
        f.document->data.operations[1]->technology->colletExtension = 5;
        f.document->data.operations[1]->geometry = {{903, {feldra::Point3{20, 0, 0}}, {}}};
        f.Open();
        f.SelectModel("L5 16-20");
        Click(f, "CmdUpd821");
        QCOMPARE(f.Text("txt821"), shown);
        f.Edit("txt821").clear();
        f.Type("txtColletExt", "5"); // leaving it writes the pick-up and derives 821 again
        QCOMPARE(f.Text("txt821"), shown);
        f.Type("txt821", f.Text("txt821"));
        QCOMPARE(f.Text("txt821"), shown);
        QVERIFY(f.messages->Messages().isEmpty());
    }

    // The setups of the model and unit; a missing or outside file is not loaded.
    void machineSetups()
    {
        DataPageFixture f;
        f.AddSetupFile("L5 16-20", "Small_Inch.EMS");
        f.AddSetupFile("L5 16-20", "Small_Metric.EMS");
        f.Open();
        f.SelectModel("L5 16-20");
        QComboBox& setups = f.List("cmbMachineSetup");
        QCOMPARE(setups.count(), 2);
        QCOMPARE(setups.itemText(1), QString("Small"));
        QCOMPARE(setups.currentText(), QString("??????????"));
        for (const char* typed : {"Large", "../L4 25-32/Small"}) {
            f.messages->Clear();
            marelon::Flags().dataPageAvailable = false;
            setups.setEditText(typed);
            Click(f, "cmdRefresh");
            QCOMPARE(f.messages->Last().prompt, QString("Machine Setup File not available for this machine"));
            QVERIFY(marelon::Flags().dataPageAvailable);
        }
        f.messages->Clear();
        setups.setEditText("??????????");
        Click(f, "cmdRefresh");
        QVERIFY(f.messages->Messages().isEmpty());

        // The command, enabled again by the message, shows the open page as the user left it.
        f.Edit("txt815").setText("typed");
        marelon::DataPageInstance() = f.form.get();
        marelon::ShowDataPage();
        marelon::DataPageInstance() = nullptr;
        QCOMPARE(f.Text("txt815"), QString("typed"));
        QVERIFY(!marelon::Flags().dataPageAvailable);
    }
};

QTEST_MAIN(tst_frmMarelonDataPage)
#include "tst_frmMarelonDataPage.moc"
