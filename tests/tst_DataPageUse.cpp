#include "DataPageFixture.h"

#include "addin/ui/ModelessForm.h"
#include "datapage/DataPageOutput.h"
#include "numeric/NumberText.h"

#include <QApplication>
#include <QTabWidget>
#include <QRadioButton>
#include <QTest>

// The Data Page as a machinist uses it: the keys, clicks that change nothing,
// the setups the list offers, and values OK must not lose without a word.
class tst_DataPageUse : public QObject {
    Q_OBJECT

    static void Click(DataPageFixture& f, const QString& button) { f.Control<QAbstractButton>(button).click(); }
    static void Pick(DataPageFixture& f, const QString& list, int position)
    {
        f.form->SelectList(f.List(list), position);
    }
    static double Param(DataPageFixture& f, int number) { return f.Setup().params.value(number, -999); }

    // The page shown and active, with the focus in a control.
    static void FocusIn(DataPageFixture& f, QWidget& control)
    {
        f.form->show();
        QApplication::setActiveWindow(f.form.get());
        control.setFocus(Qt::OtherFocusReason);
        QVERIFY(control.hasFocus());
    }

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    // Enter in a field runs the field's own check and keeps the page open;
    // nothing is written. Enter on the focused OK button presses it.
    void enterConfirmsTheField_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("an expression") << "txt815" << "2*3" << "6.0000";
        QTest::newRow("a decimal comma") << "txt821" << "12,5" << "12.5000";
        QTest::newRow("a field without a check") << "txt817" << "250" << "250";
        QTest::newRow("a diameter made positive") << "StockDiameter" << "-12" << "12";
    }

    void enterConfirmsTheField()
    {
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        DataPageFixture f;
        f.Open();
        f.SelectModel("L5 16-20");
        f.FillValid();
        QLineEdit& box = f.Edit(field);
        FocusIn(f, box);
        box.selectAll();
        QTest::keyClicks(&box, typed);
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(box.text(), shown);
        QVERIFY(f.form->isVisible());
        QVERIFY(box.hasFocus());
        QCOMPARE(box.selectedText(), shown);
        QVERIFY(f.Setup().makerTag.isEmpty());
        QVERIFY(f.messages->Messages().isEmpty());

        FocusIn(f, f.Control("cmdOK"));
        QTest::keyClick(&f.Control("cmdOK"), Qt::Key_Return);
        QCOMPARE(f.Setup().makerTag, QString("MARELON"));
        QVERIFY(!f.form->isVisible());
    }

    // Enter on an expression that does not evaluate says so and keeps the focus.
    void enterOnAnInvalidExpression()
    {
        DataPageFixture f;
        f.Open();
        QLineEdit& box = f.Edit("StockLength");
        FocusIn(f, box);
        box.setText("2*");
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(f.messages->Last().prompt, QString("Invalid Expression"));
        QVERIFY(box.hasFocus());
        QVERIFY(f.form->isVisible());
        QVERIFY(f.Setup().makerTag.isEmpty());
    }

    // Enter in a slot marked as carried over keeps its value for the model shown.
    void enterKeepsACarriedOverValue()
    {
        DataPageFixture f;
        f.Open();
        f.SelectModel("L5 16-20");
        QLineEdit& endPoint = f.Edit("txt824");
        endPoint.setText("0.5");
        f.SelectModel("B12"); // 824 is "044 - Cut Off End Point" there
        QVERIFY(endPoint.font().italic());
        QCOMPARE(endPoint.toolTip(),
                 QString("Carried over from L5 16-20: press Enter in the field to keep it, or type another value"));
        FocusIn(f, endPoint);
        QTest::keyClick(&endPoint, Qt::Key_Return);
        QVERIFY(endPoint.toolTip().isEmpty());
        QVERIFY(!endPoint.font().italic());
        QVERIFY(f.form->isVisible());
    }

    // A slot is marked only where it means something else on the new model:
    // another caption or parameter number.
    void carriedOverOnlyWhereTheMeaningChanges_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("slot");
        QTest::addColumn<bool>("marked");
        QTest::newRow("816 from C to L5") << "C12-16" << "L5 16-20" << "txt816" << false;
        QTest::newRow("821 from E2 to M2-3") << "E2 16J" << "M2-3 20-32" << "txt821" << false;
        QTest::newRow("822 from L7 to M20") << "L7 16-20" << "M20" << "txt822" << false;
        QTest::newRow("824 from L5 to C20-32") << "L5 16-20" << "C20-32" << "txt824" << false;
        QTest::newRow("816 from A20 to L5: 032 there") << "A20" << "L5 16-20" << "txt816" << true;
        QTest::newRow("821 from L5 to B2: 928 there") << "L5 16-20" << "B2 12-20" << "txt821" << true;
        QTest::newRow("824 from L5 to B12: 044 there") << "L5 16-20" << "B12" << "txt824" << true;
        QTest::newRow("822 from L5 to B12: 040 there") << "L5 16-20" << "B12" << "txt822" << true;
    }

    void carriedOverOnlyWhereTheMeaningChanges()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, slot);
        QFETCH(bool, marked);
        DataPageFixture f;
        f.Open();
        f.SelectModel(from);
        f.Edit(slot).setText("7");
        f.SelectModel(to);
        QCOMPARE(f.Edit(slot).font().italic(), marked);
        QCOMPARE(f.Edit(slot).toolTip().contains(from), marked);
    }

    // A click on the loader option already chosen changes nothing: the
    // program type stays "M Code". Choosing it anew starts from a sub program.
    void aClickThatChangesNothing()
    {
        DataPageFixture f;
        f.Open();
        Click(f, "optMagazine");
        Pick(f, "cmbBarLoaderProgType", 1);
        Click(f, "optMagazine");
        QCOMPARE(f.List("cmbBarLoaderProgType").currentIndex(), 1);
        QVERIFY(f.Edit("TxtChamferDistX").isEnabled());
        Click(f, "optHydrostatic");
        Click(f, "optHydrostatic");
        QVERIFY(!f.List("cmbBarLoaderProgType").isEnabled());
        Click(f, "optMagazine");
        QCOMPARE(f.List("cmbBarLoaderProgType").currentIndex(), 0);
        QVERIFY(f.Edit("txtBarLoaderSubNum").isEnabled());
    }

    // The arrow keys move the loader option as a click does, with its handler.
    void arrowKeysChangeTheOption()
    {
        DataPageFixture f;
        f.Open();
        QVERIFY(f.Control<QRadioButton>("optHydrostatic").isChecked());
        f.Control<QTabWidget>("MyTabs").setCurrentIndex(2);
        marelon::ShowForm(f.form.get(), false);
        QVERIFY(QTest::qWaitForWindowActive(f.form.get()));
        QWidget& hydrostatic = f.Control("optHydrostatic");
        hydrostatic.setFocus();
        QTest::keyClick(&hydrostatic, Qt::Key_Up);
        QVERIFY(f.Control<QRadioButton>("optMagazine").isChecked());
        QCOMPARE(f.List("cmbBarLoaderProgType").currentIndex(), 0);
        QVERIFY(f.Edit("txtBarLoaderSubNum").isEnabled());
        marelon::HideModelessForm(f.form.get());
    }

    // Every name the setup list shows loads; the part's setup shows as its name.
    void everyListedSetupLoads()
    {
        DataPageFixture f;
        QFile standard(MARELON_SOURCE_DIR "/data/MachineSetups/L5 16-20/Standard_Inch.EMS");
        QVERIFY(standard.open(QIODevice::ReadOnly));
        const QByteArray setup = standard.readAll();
        for (const char* file : {"Pin_INCH.EMS", "small_inch.ems", "Rev..2_Inch.EMS", "Plain_Inch.EMS"})
            f.AddSetupFile("L5 16-20", file, setup);
        f.Open();
        f.SelectModel("L5 16-20");
        QComboBox& setups = f.List("cmbMachineSetup");
        QCOMPARE(setups.count(), 5);
        for (int i = 1; i < setups.count(); ++i) {
            const QString name = setups.itemText(i);
            f.messages->Clear();
            Pick(f, "cmbMachineSetup", i);
            Click(f, "cmdRefresh");
            QVERIFY2(f.messages->Messages().isEmpty(), qPrintable(name));
            QCOMPARE(f.Setup().machineSetupName, name);
        }

        DataPageFixture reopened;
        reopened.AddSetupFile("L5 16-20", "Pin_INCH.EMS", setup);
        reopened.Setup().makerTag = "MARELON";
        reopened.Setup().machineCode = "7";
        reopened.Setup().machineSetupName = "Pin";
        reopened.Open();
        QCOMPARE(reopened.Text("cmbMachineSetup"), QString("Pin"));
    }

    // A program number that is no number is refused by name before anything
    // is written; the program name goes first, so a refused number keeps it.
    void programNumberIsChecked_data()
    {
        QTest::addColumn<QString>("number");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("a letter first") << "O1200" << false;
        QTest::newRow("0") << "0" << true;
        QTest::newRow("negative") << "-1" << false;
        QTest::newRow("the largest") << "2147483647" << true;
        QTest::newRow("beyond the largest") << "2147483648" << false;
    }

    void programNumberIsChecked()
    {
        QFETCH(QString, number);
        QFETCH(bool, accepted);
        DataPageFixture f;
        f.Open();
        f.SelectModel("L5 16-20");
        f.FillValid();
        f.Edit("ProgramName").setText("O9");
        f.Edit("ProgramNumber").setText(number);
        Click(f, "cmdOK");
        QCOMPARE(f.Setup().makerTag == "MARELON", accepted);
        if (accepted)
            return;
        QVERIFY(f.messages->Last().prompt.startsWith("Bad data entered for - Program Number\r\n\r\n"));
        QVERIFY(f.form->isVisible());
    }

    // Leaving the field with a text that is no number: told, then 0 as the rule says.
    void programNumberLeftAsText()
    {
        DataPageFixture f;
        f.Open();
        f.Type("ProgramNumber", "O1200");
        QCOMPARE(f.Text("ProgramNumber"), QString("0"));
        QCOMPARE(f.messages->Messages().size(), 1);
        QVERIFY(f.messages->Last().prompt.startsWith("Bad data entered for - Program Number\r\n\r\n"));
        f.Type("ProgramNumber", "");
        QCOMPARE(f.Text("ProgramNumber"), QString("0"));
        QCOMPARE(f.messages->Messages().size(), 1);
    }

    void programNameBeforeTheNumber()
    {
        DataPageFixture f;
        f.Open();
        f.Edit("ProgramName").setText("O9");
        f.Edit("ProgramNumber").setText("O1200");
        QVERIFY_THROWS_EXCEPTION(numeric::NumberError, marelon::WriteNCOutput(*f.form));
        QCOMPARE(f.Setup().programName, QString("O9"));
    }

    // The face amount comes from the first cut-off operation; a read the host
    // refuses on the way leaves the part's face amount as it was.
    void faceAmountFromTheFirstCutOff()
    {
        DataPageFixture f;
        auto other = std::make_shared<feldra::ToolData>(*f.document->data.tools[0]);
        other->toolId = "T6";
        other->centreOffset = 20;
        f.document->data.tools.append(other);
        auto second = std::make_shared<feldra::OperationData>(*f.document->data.operations[0]);
        second->technology = std::make_shared<feldra::TechnologyData>(*second->technology);
        second->technology->parameters["498"].value = "T6";
        f.document->data.operations.append(second);
        f.Open();
        f.FillValid();
        f.Edit("Zamount").setText("-0.5");
        Click(f, "cmdOK");
        QCOMPARE(f.Setup().faceAmount, 6.5); // T5: 10 - 3 - 0.5
    }

    void faceAmountKeptWhenAReadFails_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::newRow("the operations") << "Document.Operations";
        QTest::newRow("an operation's technology") << "Operation.Technology";
        QTest::newRow("the tool's identifier") << "Technology.Parameter";
        QTest::newRow("a tool") << "Tools.Item";
        QTest::newRow("a tool's ID") << "Tool.ToolID";
        QTest::newRow("the tool's kind") << "Tool.ToolType";
    }

    void faceAmountKeptWhenAReadFails()
    {
        QFETCH(QString, failing);
        DataPageFixture f;
        f.Setup().faceAmount = 99;
        f.Open();
        f.FillValid();
        f.Edit("Zamount").setText("-0.5");
        f.host.Faults().Fail(failing);
        Click(f, "cmdOK");
        QCOMPARE(f.Setup().faceAmount, 99.0);
        QCOMPARE(f.Setup().makerTag, QString("MARELON"));
    }

    // The bar-change line is written from the disabled fields too, each text
    // read by its leading number; the part never keeps an old line.
    void barLoaderLineFromDisabledFields_data()
    {
        QTest::addColumn<QString>("chamferX");
        QTest::addColumn<QString>("line");
        QTest::newRow("not a number") << "abc" << "M155 X0. Z1. W1. R1 S1";
        QTest::newRow("a leading number") << "0.5mm" << "M155 X0.5 Z1. W1. R1 S1";
        QTest::newRow("a number") << "0.25" << "M155 X0.25 Z1. W1. R1 S1";
    }

    void barLoaderLineFromDisabledFields()
    {
        QFETCH(QString, chamferX);
        QFETCH(QString, line);
        DataPageFixture f;
        f.Setup().barLoaderCommand = "M155 X9 Z9 W9";
        f.Open();
        f.FillValid();
        QVERIFY(!f.Edit("TxtChamferDistX").isEnabled()); // a hydrostatic loader
        f.Edit("TxtChamferDistX").setText(chamferX);
        Click(f, "cmdOK");
        QVERIFY(f.messages->Messages().isEmpty());
        QCOMPARE(f.Setup().barLoaderCommand, line);
    }

    // A part's polar mode survives reopening and OK: one the list knows is
    // selected, one it does not know is kept and shown as kept.
    void polarModeRoundTrip_data()
    {
        QTest::addColumn<double>("stored");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("partsPerChuck");
        QTest::newRow("X and C") << 5.0 << "X and C" << "5";
        QTest::newRow("X and Y") << 1005.0 << "X and Y" << "5";
        QTest::newRow("a mode the list does not have") << 2005.0 << "Mode 2 of the part (kept)" << "5";
        QTest::newRow("a hundred parts and more") << 1120.0 << "X and Y" << "120";
    }

    void polarModeRoundTrip()
    {
        QFETCH(double, stored);
        QFETCH(QString, shown);
        QFETCH(QString, partsPerChuck);
        DataPageFixture f;
        f.Setup().makerTag = "MARELON";
        f.Setup().machineCode = "7";
        f.Setup().params[819] = stored;
        f.Open();
        QComboBox& polar = f.List("CmbPolarMode");
        QCOMPARE(polar.currentIndex() >= 0 ? polar.currentText() : polar.placeholderText(), shown);
        QCOMPARE(f.Text("txt819"), partsPerChuck);
        f.FillValid();
        f.Edit("txt819").setText(partsPerChuck);
        Click(f, "cmdOK");
        QCOMPARE(Param(f, 819), stored);
        f.form->InitOp();
        QCOMPARE(polar.currentIndex() >= 0 ? polar.currentText() : polar.placeholderText(), shown);
    }

    // An OK that changes no value leaves the part unchanged: no save prompt.
    // (The first reopening shows 814 and 820 from the bar stock, as loading does.)
    void okWithoutEditsChangesNothing()
    {
        DataPageFixture f(71); // a 12 mm bar: within the machine's bar capacity
        f.Open();
        f.SelectModel("L5 16-20");
        f.FillValid();
        Click(f, "cmdOK");
        QVERIFY(f.document->modified);
        f.Open();
        Click(f, "cmdOK");
        f.document->modified = false;
        f.Open();
        Click(f, "cmdOK");
        QVERIFY(f.messages->Messages().isEmpty());
        QVERIFY(!f.document->modified);
    }

    // Every value with a unit says it beside its field, in the part's unit;
    // beside the unit for NC code a note says what the choice changes.
    void unitsBesideTheValues_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<QStringList>("shown"); // 815, 822, startup speed, dwell, base angle, note Inch, note Metric
        QTest::newRow("millimetre part")
            << 71 << QStringList{"mm", "mm/rev", "rpm", "s", "°", "written in in;", "the part's unit, mm."};
        QTest::newRow("inch part")
            << 70 << QStringList{"in", "in/rev", "rpm", "s", "°", "the part's unit, in.", "written in mm;"};
    }

    void unitsBesideTheValues()
    {
        QFETCH(int, unit);
        QFETCH(QStringList, shown);
        DataPageFixture f(unit);
        f.Open();
        f.SelectModel("L5 16-20");
        auto unitOf = [&](const char* field) { return f.Text(QStringLiteral("unit") + field); };
        QCOMPARE((QStringList{unitOf("txt815"), unitOf("txt822"), unitOf("txtStartupSpeed"), unitOf("txtDwell"),
                              unitOf("BaseAngle")}),
                 shown.mid(0, 5));
        for (const char* without : {"unittxt819", "unittxt816", "unittxt990"})
            QVERIFY2(!f.form->findChild<QLabel*>(without), without);

        auto& note = f.Control<QLabel>("lblNCCodeUnitNote");
        f.List("NCCodeUnit").setCurrentIndex(0);
        QVERIFY2(note.text().contains(shown[5]), qPrintable(note.text()));
        f.List("NCCodeUnit").setCurrentIndex(1);
        QVERIFY2(note.text().contains(shown[6]), qPrintable(note.text()));

        // A unit goes and comes with its field.
        Pick(f, "StockTypeC", marelon::kBar);
        QVERIFY(f.Control("unitInsideDiameter").isHidden());
        Pick(f, "StockTypeC", marelon::kTube);
        QVERIFY(!f.Control("unitInsideDiameter").isHidden());
        QVERIFY(!f.Control("unittxt814").isEnabled());
    }

    // A value OK refuses is said over the page, which stays open where it
    // was; then the page shows the field: its tab, the focus in it, its text
    // selected. Nothing is written.
    void okShowsTheRefusedField_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("tab");
        QTest::newRow("part data") << "PartLength" << "abc" << 0;
        QTest::newRow("machine data") << "txt815" << "1e9" << 1;
        QTest::newRow("miscellaneous") << "txtDwell" << "-1" << 2;
    }

    void okShowsTheRefusedField()
    {
        QFETCH(QString, field);
        QFETCH(QString, value);
        QFETCH(int, tab);
        DataPageFixture f(71);
        f.Open();
        f.SelectModel("L5 16-20");
        f.FillValid();
        auto& tabs = f.Control<QTabWidget>("MyTabs");
        tabs.setCurrentIndex((tab + 1) % 3);
        f.Edit(field).setText(value);
        const QPoint where = f.form->pos();
        bool shownBehind = false;
        f.messages->whileShown = [&](const auto&) { shownBehind = f.form->isVisible() && f.form->pos() == where; };
        Click(f, "cmdOK");
        QCOMPARE(f.messages->Messages().size(), 1);
        QVERIFY(shownBehind);
        QVERIFY(f.form->isVisible());
        QCOMPARE(f.form->pos(), where);
        QVERIFY(f.Setup().makerTag.isEmpty());
        QCOMPARE(tabs.currentIndex(), tab);
        QCOMPARE(f.form->focusWidget(), &f.Edit(field));
        QCOMPARE(f.Edit(field).selectedText(), value);
    }

    // The bar stock O.D. computed from the stock may lie beyond the machine's
    // bar capacity (a 40 mm hexagon across its corners on a 32 mm machine):
    // the field is marked, and OK asks once; No returns to the stock field,
    // Yes writes it.
    void computedBarStockBeyondCapacity_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<int>("stock");
        QTest::addColumn<QString>("diameter");
        QTest::addColumn<bool>("beyond");
        QTest::newRow("hexagon across its corners") << 71 << int(marelon::kPolygon) << "40" << true;
        QTest::newRow("hexagon within") << 71 << int(marelon::kPolygon) << "27" << false;
        QTest::newRow("bar at the capacity") << 71 << int(marelon::kBar) << "32" << false;
        QTest::newRow("bar beyond") << 71 << int(marelon::kBar) << "32.001" << true;
        QTest::newRow("inch tube beyond") << 70 << int(marelon::kTube) << "1.26" << true;
    }

    void computedBarStockBeyondCapacity()
    {
        QFETCH(int, unit);
        QFETCH(int, stock);
        QFETCH(QString, diameter);
        QFETCH(bool, beyond);
        DataPageFixture f(unit);
        f.Open();
        f.SelectModel("L5 16-20");
        f.FillValid();
        Pick(f, "StockTypeC", stock);
        const QString source = stock == marelon::kPolygon ? "CircleDiameter" : "StockDiameter";
        if (stock == marelon::kPolygon) {
            Pick(f, "Sides", 1);
            f.Control<QAbstractButton>("IDCircle").click();
        }
        f.Edit("InsideDiameter").setText("0.5");
        f.Type(source, diameter);
        QLineEdit& od = f.Edit("txt814");
        QVERIFY(!od.isEnabled());
        QCOMPARE(od.toolTip().contains(unit == 70 ? "0 to 1.2598" : "0 to 32"), beyond);
        QCOMPARE(od.font().bold(), beyond);
        f.messages->Clear();

        f.messages->Answer(host::MsgResult::No);
        Click(f, "cmdOK");
        QCOMPARE(f.messages->Messages().size(), beyond ? 1 : 0);
        if (!beyond) {
            QCOMPARE(f.Setup().makerTag, QString("MARELON"));
            return;
        }
        QCOMPARE(f.messages->Last().buttons, host::MsgButtons::YesNo);
        QVERIFY(f.messages->Last().prompt.contains(od.text()));
        QVERIFY(f.Setup().makerTag.isEmpty());
        QVERIFY(f.form->isVisible());
        QCOMPARE(f.form->focusWidget(), &f.Edit(source));

        f.messages->Clear();
        f.messages->Answer(host::MsgResult::Yes);
        Click(f, "cmdOK");
        QCOMPARE(f.messages->Messages().size(), 1);
        QCOMPARE(f.Setup().makerTag, QString("MARELON"));
        QCOMPARE(Param(f, 814), numeric::ToDouble(od.text()));
    }

    // Every part of a message reaches a German user in German.
    void setupFolderMessageInGerman()
    {
        DataPageFixture f(70, feldra::QtLocalizer::kGerman);
        QFile blocker(f.addIn.path() + "/MachineSetups/L5 16-20");
        QVERIFY(blocker.open(QIODevice::WriteOnly)); // a file where the folder belongs
        blocker.close();
        f.Open();
        f.SelectModel("L5 16-20");
        const QString prompt = f.messages->Last().prompt;
        QVERIFY2(prompt.startsWith("Die Maschineneinrichtungen dieser Maschine können nicht aufgelistet werden.\n"),
                 qPrintable(prompt));
        QVERIFY2(prompt.endsWith("“ ist kein Ordner."), qPrintable(prompt));
    }
};

QTEST_MAIN(tst_DataPageUse)
#include "tst_DataPageUse.moc"
