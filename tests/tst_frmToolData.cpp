#include "ToolDataFixture.h"

#include "addin/host/HostError.h"
#include "addin/host/Tool.h"
#include "addin/settings/MachineCodes.h"
#include "addin/settings/SettingsStore.h"
#include "addin/settings/cRegistry.h"
#include "tooldata/frmEditHolder.h"
#include "tooldata/frmNewHolder.h"
#include "tooldata/frmToolData.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QFileInfo>

using namespace marelon;

namespace {

const QString kL5 = QStringLiteral("L5-16-20 ToolHolders.txt");
// Three holders: X/Z/Y in inches, rotation, gear ratio.
const QByteArray kThreeHolders = "\"GTF5101\",\"Gang 1\",1.5,.5,.25,-1,1,2\r\n"
                                 "\"GTF5102\",\"Gang 2\",0,1,0,0,1,0\r\n"
                                 "\"GDB5101\",\"Back drill\",-.1,-1.6,0,1,2,3\r\n";

template <class T>
T* control(QWidget& form, const char* name)
{
    auto* widget = form.findChild<T*>(QString::fromLatin1(name));
    if (!widget)
        qFatal("no control %s", name);
    return widget;
}

QString text(QWidget& form, const char* name)
{
    QWidget* widget = control<QWidget>(form, name);
    if (auto* label = qobject_cast<QLabel*>(widget))
        return label->text();
    if (auto* line = qobject_cast<QLineEdit*>(widget))
        return line->text();
    if (auto* list = qobject_cast<QComboBox*>(widget))
        return list->currentText();
    return qobject_cast<QAbstractButton*>(widget)->text();
}

void setText(QWidget& form, const char* name, const QString& value)
{
    control<QLineEdit>(form, name)->setText(value);
}

// Chooses a holder in the list as the user does.
void selectHolder(frmToolData& form, int position)
{
    control<QComboBox>(form, "cmbHolders")->setCurrentIndex(position);
    form.cmbHolders_Click();
}

QString cell(QWidget& form, int row, int column)
{
    auto* item = control<QTableWidget>(form, "ToolGrid")->item(row, column);
    return item ? item->text() : QStringLiteral("<none>");
}

void setTovricVersion(int value)
{
    cRegistry registry;
    registry.setClassKey(kHKeyLocalMachine);
    registry.setSectionKey(kAddInKey);
    registry.setValueKey(kTovricVersionValue);
    registry.setValueType(kRegDword);
    registry.setValue(value);
}

} // namespace

class tst_frmToolData : public QObject {
    Q_OBJECT

private slots:
    void init() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }

    void machineSelection_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("setting"); // empty: none stored
        QTest::addColumn<int>("tovric");
        QTest::addColumn<QString>("machine");
        QTest::newRow("document code wins over the setting") << "MARELON" << "7" << "12" << 0 << "L5 16-20";
        QTest::newRow("document code empty") << "MARELON" << "" << "7" << 0 << "A20";
        QTest::newRow("document code no number") << "MARELON" << "L5" << "" << 0 << "A20";
        QTest::newRow("other maker: setting 7") << "OTHER" << "13" << "7" << 0 << "L5 16-20";
        QTest::newRow("other maker: no setting") << "" << "13" << "" << 0 << "B12";
        QTest::newRow("reduced list, code 14") << "MARELON" << "14" << "" << 1 << "L7 16-20";
    }
    void machineSelection()
    {
        QFETCH(QString, tag);
        QFETCH(QString, code);
        QFETCH(QString, setting);
        QFETCH(int, tovric);
        QFETCH(QString, machine);
        ToolDataFixture f;
        f.Setup().makerTag = tag;
        f.Setup().machineCode = code;
        if (!setting.isEmpty())
            SaveSetting(kAppName, QStringLiteral("Data Page Settings"), QStringLiteral("Machine Name"), setting);
        setTovricVersion(tovric);
        const QString file = HolderFileName(machine);
        f.WriteLibrary(file, kThreeHolders);

        frmToolData form(f.application);
        QCOMPARE(text(form, "cmbMachineName"), machine);
        QCOMPARE(control<QComboBox>(form, "cmbMachineName")->count(), tovric ? 6 : 19);
        QCOMPARE(form.ToolDataFile(), f.LibraryPath(file));
        QCOMPARE(control<QComboBox>(form, "cmbHolders")->count(), 3);
        QCOMPARE(text(form, "lblHolderDesc"), QStringLiteral("Gang 1")); // the first holder is shown
        QVERIFY(f.messages->Messages().isEmpty());
    }

    // Captions and the missing-library message pass through the localiser when
    // shown; a document without tools leaves the grid empty and disabled.
    void missingLibraryAndCaptionsInTheUsersLanguage()
    {
        ToolDataFixture f;
        class Marking : public host::Localizer {
            int LanguageCode() const override { return 1031; }
            void setLanguageCode(int) override {}
            void Initialise() override {}
            QString Translate(const QString& english) const override { return QLatin1Char('<') + english + QLatin1Char('>'); }
            void TranslateForm(QWidget*) const override {}
        };
        InstallUiServices(std::make_shared<Marking>(), f.messages);
        frmToolData form(f.application);
        QCOMPARE(f.messages->Messages().size(), 1);
        QCOMPARE(f.messages->Last().prompt, QStringLiteral("<The file - >") + QDir::toNativeSeparators(f.LibraryPath(kL5))
                                                + QStringLiteral("< - is not installed! This is needed to set the tool holder shift data!>"));
        QCOMPARE(control<QComboBox>(form, "cmbHolders")->count(), 0);
        QCOMPARE(form.windowTitle(), QStringLiteral("<Tool Data>"));
        QCOMPARE(control<QGroupBox>(form, "fraToolSettings")->title(), QStringLiteral("<Tool Settings>"));
        QCOMPARE(cell(form, 0, 3), QStringLiteral("<Tool ID>"));
        QCOMPARE(cell(form, 0, 1), QStringLiteral("T#"));
        QVERIFY(!control<QTableWidget>(form, "ToolGrid")->isEnabled());
        QCOMPARE(control<QTableWidget>(form, "ToolGrid")->rowCount(), 1);

        // Another machine with its library installed.
        f.WriteLibrary(QStringLiteral("R6-04-07 ToolHolders.txt"), "\"R1\",\"Only\",0,0,0,-1,1,1\r\n");
        auto* machines = control<QComboBox>(form, "cmbMachineName");
        machines->setCurrentIndex(machines->findText(QStringLiteral("R6 04-07")));
        emit machines->activated(machines->currentIndex());
        QCOMPARE(form.HolderTable().size(), 1);
        QCOMPARE(text(form, "lblHolderDesc"), QStringLiteral("Only"));
    }

    void holderShownInDocumentUnits_data()
    {
        QTest::addColumn<int>("units");
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QByteArray>("library");
        QTest::addColumn<int>("holder");
        QTest::addColumn<QStringList>("shown"); // X, Z, Y, rotation, gear 1, gear 2
        QTest::newRow("inches") << 70 << "en_US" << kThreeHolders << 0 << QStringList{"1.5", "0.5", "0.25", "Forward", "1", "2"};
        QTest::newRow("millimetres, German") << 71 << "de_DE" << kThreeHolders << 0 << QStringList{"38,1", "12,7", "6,35", "Forward", "1", "2"};
        QTest::newRow("not applicable") << 70 << "en_US" << kThreeHolders << 1 << QStringList{"0", "1", "0", "N/A", "1", "0"};
        QTest::newRow("reverse") << 70 << "de_DE" << kThreeHolders << 2 << QStringList{"-0,1", "-1,6", "0", "Reverse", "2", "3"};
        // -42.5 and 5 mm, stored in inches with the file's 15 digits
        const QByteArray typedInMillimetres = "\"M1\",\"Typed in mm\",-1.67322834645669,.196850393700787,0,-1,1,1\r\n";
        QTest::newRow("millimetres typed in millimetres") << 71 << "en_US" << typedInMillimetres << 0
                                                          << QStringList{"-42.5", "5", "0", "Forward", "1", "1"};
        QTest::newRow("the same in inches") << 70 << "en_US" << typedInMillimetres << 0
                                            << QStringList{"-1.67322834645669", "0.196850393700787", "0", "Forward", "1", "1"};
    }
    void holderShownInDocumentUnits()
    {
        QFETCH(int, units);
        QFETCH(QString, locale);
        QFETCH(QByteArray, library);
        QFETCH(int, holder);
        QFETCH(QStringList, shown);
        QLocale::setDefault(QLocale(locale));
        ToolDataFixture f(units);
        f.WriteLibrary(kL5, library);
        frmToolData form(f.application);
        selectHolder(form, holder);
        QCOMPARE((QStringList{text(form, "txtHolderXShift"), text(form, "txtHolderZShift"), text(form, "txtHolderYShift"),
                              text(form, "lblHolderSpdlRot"), text(form, "lblGear1"), text(form, "lblGear2")}),
                 shown);
    }

    void gridEditing_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("offset");
        QTest::addColumn<QString>("toolId");
        QTest::newRow("tool number rounds") << "de_DE" << 1 << "12,6" << "13" << 13 << 3 << "Tool 3";
        QTest::newRow("tool number not numeric") << "en_US" << 1 << "x" << "03" << 3 << 3 << "Tool 3";
        QTest::newRow("tool number too large") << "en_US" << 1 << "1e12" << "03" << 3 << 3 << "Tool 3";
        QTest::newRow("offset") << "en_US" << 2 << "7" << "07" << 3 << 7 << "Tool 3";
        QTest::newRow("tool id") << "en_US" << 3 << "FACE" << "FACE" << 3 << 3 << "FACE";
    }
    void gridEditing()
    {
        QFETCH(QString, locale);
        QFETCH(int, column);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(int, number);
        QFETCH(int, offset);
        QFETCH(QString, toolId);
        QLocale::setDefault(QLocale(locale));
        ToolDataFixture f;
        auto tool = f.AddTool(3, 3);
        f.AddTool(9, 9);
        frmToolData form(f.application);
        auto* grid = control<QTableWidget>(form, "ToolGrid");
        grid->setCurrentCell(1, column);
        QTest::keyClick(grid, Qt::Key_Return);
        auto* box = control<QLineEdit>(form, "EditBox");
        QVERIFY(box->isVisibleTo(&form));
        QCOMPARE(box->text(), cell(form, 1, column));
        box->setText(typed);
        QTest::keyClick(box, Qt::Key_Return);

        QVERIFY(box->isHidden());
        QCOMPARE(cell(form, 1, column), shown);
        QCOMPARE(tool->number, number);
        QCOMPARE(tool->parameters.value(QStringLiteral("121")).value.toInt(), offset);
        QCOMPARE(tool->toolId, toolId);
        QCOMPARE(grid->currentColumn(), column + 1);
        QCOMPARE(cell(form, 2, 1), QStringLiteral("09")); // the order stays until Sort
    }

    void editorOpensOverToolCellsOnly()
    {
        ToolDataFixture f;
        auto tool = f.AddTool(3, 3);
        frmToolData form(f.application);
        auto* grid = control<QTableWidget>(form, "ToolGrid");
        auto* box = control<QLineEdit>(form, "EditBox");
        grid->setCurrentCell(1, 4);
        form.ToolGrid_DblClick();
        QVERIFY(box->isHidden());
        grid->setCurrentCell(1, 3);
        form.ToolGrid_DblClick();
        QVERIFY(!box->isHidden());
        QCOMPARE(box->geometry(), grid->visualItemRect(grid->item(1, 3)));
        form.EditBox_LostFocus(); // leaving the box does not commit
        QVERIFY(box->isHidden());
        QCOMPARE(tool->toolId, QStringLiteral("Tool 3"));

        grid->setCurrentCell(1, 1);
        QTest::keyClick(grid, Qt::Key_Delete);
        QCOMPARE(cell(form, 1, 1), QString());
        QCOMPARE(tool->number, 3);
    }

    // A larger font than the twips widths were made for must not cut a header
    // off, and a list longer than the grid scrolls only up and down.
    void headersFitTheirColumns()
    {
        ToolDataFixture f;
        for (int number = 1; number <= 40; ++number)
            f.AddTool(number, number);
        frmToolData form(f.application);
        auto* grid = control<QTableWidget>(form, "ToolGrid");
        QFont large = grid->font();
        large.setPointSize(2 * QFontInfo(large).pointSize());
        grid->setFont(large);
        form.ToolListUpdate();
        form.show();
        for (int column = 1; column <= 3; ++column)
            QVERIFY(grid->fontMetrics().horizontalAdvance(cell(form, 0, column)) < grid->columnWidth(column));
        QCOMPARE(grid->horizontalScrollBar()->maximum(), 0);
    }

    void refusedToolIdShowsWhatTheToolHolds()
    {
        ToolDataFixture f;
        f.AddTool(3, 3);
        frmToolData form(f.application);
        f.host.Faults().Fail(QStringLiteral("Tool.ToolID write"));
        auto* grid = control<QTableWidget>(form, "ToolGrid");
        grid->setCurrentCell(1, 3);
        form.ToolGrid_KeyDown(Qt::Key_Enter);
        setText(form, "EditBox", QStringLiteral("NEW"));
        form.EditBox_KeyDown(Qt::Key_Enter);
        QCOMPARE(cell(form, 1, 3), QStringLiteral("Tool 3"));
        QCOMPARE(grid->currentColumn(), 4);
    }

    // A click shows the tool; a step that fails is skipped and the next one runs.
    void clickingAToolShowsIt_data()
    {
        QTest::addColumn<QStringList>("faults");
        QTest::addColumn<QStringList>("shown"); // Feldra X, Z, holder, rotation, tool X, Z, Y, comment
        QTest::newRow("every step") << QStringList{} << QStringList{"0.5", "-2", "GDB5101", "Reverse", "0.6", "0", "0", "Finishing"};
        QTest::newRow("failing steps skipped") << QStringList{"Tool.ZShift", "Tool.AsLatheToolKind16"}
                                               << QStringList{"0.5", "", "GDB5101", "Reverse", "9", "0", "0", "Finishing"};
    }
    void clickingAToolShowsIt()
    {
        QFETCH(QStringList, faults);
        QFETCH(QStringList, shown);
        ToolDataFixture f;
        f.WriteLibrary(kL5, kThreeHolders);
        auto tool = f.AddTool(3, 3, 16);
        tool->xShift = 0.25;
        tool->zShift = -2;
        tool->holderIndex = 2;
        tool->spindleDirection = 1;
        tool->mountCode = 10;
        tool->centreOffset = 0.3;
        tool->comment = QStringLiteral("Finishing\r\nsecond line");
        for (const QString& fault : faults)
            f.host.Faults().Fail(fault);
        frmToolData form(f.application); // the opening shows the tool too
        setText(form, "txtToolXShift", QStringLiteral("9"));
        form.ToolGrid_MouseUp(Qt::LeftButton, 1, 2);

        QCOMPARE(form.CurrentTool()->Number(), 3);
        QVERIFY(control<QPushButton>(form, "cmdSetData")->isEnabled());
        QVERIFY(control<QTableWidget>(form, "ToolGrid")->item(1, 1)->font().bold());
        QCOMPARE((QStringList{text(form, "txtFeldraXShift"), text(form, "txtFeldraZShift"), text(form, "cmbHolders"),
                              text(form, "lblFeldraSpdlRot"), text(form, "txtToolXShift"), text(form, "txtToolZShift"),
                              text(form, "txtToolYShift"), text(form, "lblToolComment")}),
                 shown);
    }

    // The row the grid shows as chosen and the values beside it are one
    // tool's from the opening on, whether the row is chosen by the opening,
    // an arrow key, a click or a sort.
    void chosenRowAndValuesBelongTogether()
    {
        ToolDataFixture f;
        f.WriteLibrary(kL5, kThreeHolders);
        auto first = f.AddTool(1, 1, 16);
        first->holderIndex = 1;
        first->xShift = -20;
        first->comment = QStringLiteral("Rough turn");
        auto second = f.AddTool(2, 2, 16);
        second->holderIndex = 2;
        second->comment = QStringLiteral("Back drill");
        frmToolData form(f.application);
        auto* grid = control<QTableWidget>(form, "ToolGrid");
        auto shown = [&] {
            return QStringList{cell(form, grid->currentRow(), 1), text(form, "cmbHolders"), text(form, "txtFeldraXShift"),
                               text(form, "lblToolComment"), grid->item(grid->currentRow(), 1)->font().bold() ? "bold" : ""};
        };
        QCOMPARE(shown(), (QStringList{"01", "GTF5102", "-40", "Rough turn", "bold"}));
        QCOMPARE(form.CurrentTool()->Number(), 1);
        QVERIFY(control<QPushButton>(form, "cmdSetData")->isEnabled());

        form.show();
        grid->setFocus();
        QTest::keyClick(grid, Qt::Key_Down);
        QCOMPARE(shown(), (QStringList{"02", "GDB5101", "0", "Back drill", "bold"}));
        QVERIFY(!grid->item(1, 1)->font().bold());

        second->number = 0; // sorted first now: the row moves, the tool stays chosen
        form.findChild<QAction*>(QStringLiteral("Sort"))->trigger();
        QCOMPARE(shown(), (QStringList{"00", "GDB5101", "0", "Back drill", "bold"}));
        QCOMPARE(grid->currentRow(), 1);
    }

    // A first tool without a Z of its own opens with the dialog's "0" marked as no tool's.
    void openingValueMarkedOnTheFirstTool()
    {
        ToolDataFixture f(71);
        f.WriteLibrary(kL5, kThreeHolders);
        auto backDrill = f.AddTool(21, 21, 19);
        backDrill->zCode = 1;
        frmToolData form(f.application);
        auto* z = control<QLineEdit>(form, "txtToolZShift");
        QCOMPARE(form.CarriedOverFrom(*z), QStringLiteral("no tool (opening value)"));
        QTest::keyClick(z, Qt::Key_Return);
        QCOMPARE(form.CarriedOverFrom(*z), QString());
    }

    void setData_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<int>("documentUnits");
        QTest::addColumn<int>("toolUnits");
        QTest::addColumn<int>("holder");
        QTest::addColumn<QStringList>("toolFields"); // X, Z, Y typed
        QTest::addColumn<QStringList>("result");     // shown X, Z, Y
        QTest::addColumn<QList<double>>("written");  // XShift, ZShift, YShift, gear ratio
        QTest::addColumn<int>("direction");
        // Holder 0: 1.5/0.5/0.25 in, forward, 1 to 2. Holder 1: 0/1/0, N/A, 1 to 0. Holder 2: -0.1/-1.6/0, reverse, 2 to 3.
        QTest::newRow("same units") << "en_US" << 70 << 70 << 0 << QStringList{"2", "0", "0"}
                                    << QStringList{"3.5", "0.5", "0.25"} << QList<double>{1.75, 0.5, 0.25, 2} << -1;
        QTest::newRow("inch document, mm tool") << "en_US" << 70 << 71 << 1 << QStringList{"0", "0", "0"}
                                                << QStringList{"0", "1", "0"} << QList<double>{0, 25.4, 0, 1} << 0;
        QTest::newRow("mm document, inch tool") << "en_US" << 71 << 70 << 0 << QStringList{"-38.1", "0", "-6.35"}
                                                << QStringList{"0", "12.7", "0"} << QList<double>{0, 0.5, 0, 2} << -1;
        QTest::newRow("mm document, German") << "de_DE" << 71 << 71 << 2 << QStringList{"0,54", "1,6", "0,5"}
                                             << QStringList{"-2", "-39,04", "0,5"} << QList<double>{-1, -39.04, 0.5, 1.5} << 1;
    }
    void setData()
    {
        QFETCH(QString, locale);
        QFETCH(int, documentUnits);
        QFETCH(int, toolUnits);
        QFETCH(int, holder);
        QFETCH(QStringList, toolFields);
        QFETCH(QStringList, result);
        QFETCH(QList<double>, written);
        QFETCH(int, direction);
        QLocale::setDefault(QLocale(locale));
        ToolDataFixture f(documentUnits);
        f.WriteLibrary(kL5, kThreeHolders);
        auto tool = f.AddTool(3, 3, 5);
        tool->unitSystem = toolUnits;
        tool->gearRatio = 1;
        tool->comment = QStringLiteral("Keep me");
        frmToolData form(f.application);
        form.ToolGrid_MouseUp(Qt::LeftButton, 1, 1);
        selectHolder(form, holder);
        setText(form, "txtToolXShift", toolFields[0]);
        setText(form, "txtToolZShift", toolFields[1]);
        setText(form, "txtToolYShift", toolFields[2]);
        QTest::mouseClick(control<QPushButton>(form, "cmdSetData"), Qt::LeftButton);

        QVERIFY(f.messages->Messages().isEmpty());
        QCOMPARE((QStringList{text(form, "txtFeldraXShift"), text(form, "txtFeldraZShift"), text(form, "txtFeldraYShift")}),
                 result);
        QCOMPARE(tool->xShift, written[0]);
        QCOMPARE(tool->zShift, written[1]);
        QCOMPARE(tool->yShift, written[2]);
        QCOMPARE(tool->gearRatio, written[3]);
        QCOMPARE(tool->holderIndex, double(holder));
        QCOMPARE(tool->spindleDirection, direction);
        QCOMPARE(tool->comment, QStringLiteral("Keep me"));
        QVERIFY(!f.document->updateState);
    }

    void setDataRefusals_data()
    {
        QTest::addColumn<bool>("library");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("message");
        QTest::newRow("no holder") << false << "" << "" << "Please select a holder before setting the tool data.";
        QTest::newRow("tool Z not numeric") << true << "txtToolZShift" << "abc"
                                            << "Bad data entered for - Tool Z Shift\r\n\r\nPlease enter a numeric value";
        QTest::newRow("tool Y empty") << true << "txtToolYShift" << ""
                                      << "Bad data entered for - Tool Y Shift\r\n\r\nPlease enter a numeric value";
    }
    void setDataRefusals()
    {
        QFETCH(bool, library);
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QString, message);
        ToolDataFixture f;
        if (library)
            f.WriteLibrary(kL5, kThreeHolders);
        auto tool = f.AddTool(3, 3, 5);
        tool->xShift = 7;
        frmToolData form(f.application);
        form.ToolGrid_MouseUp(Qt::LeftButton, 1, 1);
        if (!field.isEmpty())
            setText(form, field.toLatin1().constData(), typed);
        f.messages->Clear();
        form.cmdSetData_Click();
        QCOMPARE(f.messages->Messages().size(), 1);
        QCOMPARE(f.messages->Last().prompt, message);
        QCOMPARE(tool->xShift, 7.0);
        QCOMPARE(tool->holderIndex, 0.0);
        QCOMPARE(f.document->updateState, !library); // no holder: nothing is touched
    }

    // A Tool field that the tool's geometry leaves alone keeps the text of the
    // tool before: marked with the tool it came from, and refused by Set Data,
    // until the user confirms it (Enter) or types the tool's own value.
    void carriedOverFields_data()
    {
        QTest::addColumn<QString>("confirm"); // how the user confirms the marked field
        QTest::addColumn<double>("zWritten");
        QTest::newRow("Enter keeps the value") << "enter" << -9.9; // holder 38.1 mm
        QTest::newRow("typing the tool's own value") << "type" << 38.1;
    }
    void carriedOverFields()
    {
        QFETCH(QString, confirm);
        QFETCH(double, zWritten);
        ToolDataFixture f(71);
        f.WriteLibrary(kL5, "\"GDB5101\",\"Back drill\",0,1.5,0,1,1,1\r\n");
        auto crossDrill = f.AddTool(7, 7, 19); // Z from its length
        crossDrill->zCode = 2;
        crossDrill->length = 48;
        auto backDrill = f.AddTool(21, 21, 19); // no Z of its own
        backDrill->zCode = 1;
        backDrill->zShift = -40;
        frmToolData form(f.application);
        form.show();
        auto* z = control<QLineEdit>(form, "txtToolZShift");
        auto* y = control<QLineEdit>(form, "txtToolYShift");

        // The opening chooses T07, whose Z comes from its length.
        QCOMPARE(z->text(), QStringLiteral("-48"));
        QCOMPARE(form.CarriedOverFrom(*z), QString());
        form.ToolGrid_MouseUp(Qt::LeftButton, 2, 1);
        QCOMPARE(z->text(), QStringLiteral("-48"));
        QCOMPARE(form.CarriedOverFrom(*z), QStringLiteral("T07"));
        QVERIFY(z->font().italic());
        QVERIFY(z->palette().color(QPalette::Base) != y->palette().color(QPalette::Base));
        QCOMPARE(z->toolTip(), QStringLiteral("Carried over from T07: press Enter in the field to keep it, or type another value"));
        QCOMPARE(form.CarriedOverFrom(*y), QString());
        QVERIFY(!y->font().italic());

        f.messages->Clear();
        QTest::mouseClick(control<QPushButton>(form, "cmdSetData"), Qt::LeftButton);
        QCOMPARE(f.messages->Messages().size(), 1);
        QCOMPARE(f.messages->Last().prompt,
                 QStringLiteral("Nothing was written. These fields still show a value carried over from another tool:\r\n"
                                "Tool Z Shift (T07)\r\n\r\n"
                                "Press Enter in a field to keep its value for T21, or type the tool's own value."));
        QCOMPARE(backDrill->zShift, -40.0);

        if (confirm == QLatin1String("enter")) {
            QTest::keyClick(z, Qt::Key_Return);
        } else {
            z->selectAll();
            QTest::keyClicks(z, QStringLiteral("0"));
        }
        QCOMPARE(form.CarriedOverFrom(*z), QString());
        QVERIFY(!z->font().italic());
        QCOMPARE(z->toolTip(), QString());
        QTest::mouseClick(control<QPushButton>(form, "cmdSetData"), Qt::LeftButton);
        QCOMPARE(f.messages->Messages().size(), 1);
        QCOMPARE(backDrill->zShift, zWritten);

        // Back to T07: its own value; to T21 again: its confirmed value is its own now.
        form.ToolGrid_MouseUp(Qt::LeftButton, 1, 1);
        QCOMPARE(form.CarriedOverFrom(*z), QString());
        form.ToolGrid_MouseUp(Qt::LeftButton, 2, 1);
        QCOMPARE(form.CarriedOverFrom(*z), QStringLiteral("T07"));

        // A geometry the host cannot give: the fields keep their texts, and
        // those of T07 (X and Z; Y was T21's own) are marked.
        form.ToolGrid_MouseUp(Qt::LeftButton, 1, 1);
        f.host.Faults().Fail(QStringLiteral("Tool.AsLatheToolKind19"));
        form.ToolGrid_MouseUp(Qt::LeftButton, 2, 1);
        QCOMPARE(form.CarriedOverFrom(*control<QLineEdit>(form, "txtToolXShift")), QStringLiteral("T07"));
        QCOMPARE(form.CarriedOverFrom(*z), QStringLiteral("T07"));
        QCOMPARE(form.CarriedOverFrom(*y), QString());
    }

    // Escape in the cell editor leaves the cell as it was and keeps the
    // dialog; Escape on the dialog closes it as Exit does.
    void escape()
    {
        ToolDataFixture f;
        f.WriteLibrary(kL5, kThreeHolders);
        auto tool = f.AddTool(3, 3);
        frmToolData form(f.application);
        form.show();
        QApplication::setActiveWindow(&form);
        auto* grid = control<QTableWidget>(form, "ToolGrid");
        auto* box = control<QLineEdit>(form, "EditBox");
        grid->setCurrentCell(1, 1);
        form.ToolGrid_KeyDown(Qt::Key_Enter);
        QVERIFY(box->isVisible());
        box->setText(QStringLiteral("9"));
        QTest::keyClick(box, Qt::Key_Escape);
        QVERIFY(!box->isVisible());
        QVERIFY(form.isVisible());
        QCOMPARE(cell(form, 1, 1), QStringLiteral("03"));
        QCOMPARE(tool->number, 3);

        QTest::keyClick(grid, Qt::Key_Escape);
        QVERIFY(!form.isVisible());
        QCOMPARE(f.ReadLibrary(kL5), kThreeHolders);
        QVERIFY(f.messages->Messages().isEmpty());
    }

    // From holder to holder the value columns keep their places and widths,
    // a value of 15 digits fits, the description is never cut, and the Gear
    // Ratio row lines up with the shift rows above it.
    void holderDataKeepsItsPlaces()
    {
        ToolDataFixture f;
        const QString longText = QStringLiteral("L5 16-20 rotary tool unit: 2 cross drilling spindles in position 1, "
                                                "3 face drilling spindles in position 2, or 3 face and 3 back drilling "
                                                "spindles with the extension block, 1:1.5 speed-up");
        f.WriteLibrary(kL5, "\"S\",\"Short\",0,0,0,0,1,1\r\n"
                            "\"L\",\"" + longText.toLatin1() + "\",-0.984251968503937,1.37795275590551,-2.36220472440945,-1,2,3\r\n");
        frmToolData form(f.application);
        form.show();
        QLabel& description = *control<QLabel>(form, "lblHolderDesc");
        const char* columns[] = {"txtHolderXShift", "txtToolXShift", "txtFeldraXShift"};
        QList<QRect> places;
        for (int holder : {0, 1, 0}) {
            selectHolder(form, holder);
            form.layout()->activate();
            QList<QRect> now;
            for (const char* name : columns)
                now << control<QWidget>(form, name)->geometry();
            if (places.isEmpty())
                places = now;
            QCOMPARE(now, places);
            QCOMPARE(description.toolTip(), description.text());
            QVERIFY(description.wordWrap());
            QVERIFY(description.height() >= description.heightForWidth(description.width()));
            for (const char* value : {"txtHolderXShift", "txtHolderZShift", "txtHolderYShift"}) {
                QLabel& label = *control<QLabel>(form, value);
                QVERIFY2(label.fontMetrics().horizontalAdvance(label.text()) < label.contentsRect().width(), value);
            }
        }
        QCOMPARE(text(form, "txtHolderXShift"), QStringLiteral("0"));
        const auto place = [&](const char* name) { return control<QWidget>(form, name)->geometry(); };
        for (const auto& [gear, above] : {std::pair{"lblGear1", "txtHolderZShift"}, {"lblTo", "txtToolZShift"},
                                          {"lblGear2", "txtFeldraZShift"}}) {
            QCOMPARE(place(gear).left(), place(above).left());
            QCOMPARE(place(gear).width(), place(above).width());
            QCOMPARE(place(gear).height(), place("txtToolZShift").height());
        }
    }

    void backSpindleChoice_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<int>("spindles");
        QTest::addColumn<int>("turret");
        QTest::addColumn<bool>("shownAtLoad");
        QTest::addColumn<bool>("enabledAfterClick");
        QTest::newRow("E2 16J, two spindles") << "3" << 2 << 1 << true << false;
        QTest::newRow("M2-3 12-16, turret 2") << "10" << 2 << 2 << true << true;
        QTest::newRow("M2-3 12-16, one spindle") << "10" << 1 << 2 << false << false;
        QTest::newRow("L5 16-20, two spindles") << "7" << 2 << 2 << false << false;
    }
    void backSpindleChoice()
    {
        QFETCH(QString, code);
        QFETCH(int, spindles);
        QFETCH(int, turret);
        QFETCH(bool, shownAtLoad);
        QFETCH(bool, enabledAfterClick);
        ToolDataFixture f;
        f.Setup().machineCode = code;
        f.Setup().turrets[1]->zOffset = 0.75;
        f.AddSpindles(QStringList{"Main", "Sub"}.mid(0, spindles));
        f.WriteLibrary(QStringLiteral("M2-3-12-16 ToolHolders.txt"), kThreeHolders);
        auto tool = f.AddTool(3, 3, 5);
        tool->turretNumber = turret;
        frmToolData form(f.application);
        auto* main = control<QRadioButton>(form, "Spindle_0");
        auto* back = control<QRadioButton>(form, "Spindle_1");
        QCOMPARE(back->isVisibleTo(&form), shownAtLoad);
        QCOMPARE(form.BackSpindleChoice(), enabledAfterClick); // the opening chose the tool
        if (shownAtLoad)
            QCOMPARE(back->text(), QStringLiteral("Sub"));
        form.ToolGrid_MouseUp(Qt::LeftButton, 1, 1);
        QCOMPARE(back->isEnabled(), enabledAfterClick);
        QCOMPARE(main->isEnabled(), enabledAfterClick);
        if (!enabledAfterClick)
            return;

        // On the back spindle the Z shift loses the turret's Z offset.
        QVERIFY(main->isChecked());
        back->setChecked(true);
        form.cmdSetData_Click();
        QCOMPARE(tool->zShift, 0.5 - 0.75);
        QCOMPARE(tool->backSpindle, 1);
        main->setChecked(true);
        form.cmdSetData_Click();
        QCOMPARE(tool->zShift, 0.5);
        QCOMPARE(tool->backSpindle, 0);
    }

    void gridListsSortsAndRenumbers()
    {
        ToolDataFixture f;
        auto onStation7 = f.AddTool(5, 5);
        onStation7->stationIndex = 7;
        auto unmounted = f.AddTool(3, 3);
        unmounted->turretNumber = 0;
        unmounted->toolId = QStringLiteral("DRILL");
        auto onBackTurret = f.AddTool(1, 1);
        onBackTurret->turretNumber = 2;
        onBackTurret->stationIndex = 2;
        auto operation = std::make_shared<feldra::OperationData>();
        operation->technology->parameters.insert(QStringLiteral("ToolID"), {QStringLiteral("DRILL"), QString(), {}});
        f.document->data.operations.append(operation);
        frmToolData form(f.application);
        auto* grid = control<QTableWidget>(form, "ToolGrid");
        QCOMPARE(grid->rowCount(), 4);
        QCOMPARE((QStringList{cell(form, 1, 1), cell(form, 2, 1), cell(form, 3, 1)}), (QStringList{"01", "03", "05"}));
        QCOMPARE((QStringList{cell(form, 2, 2), cell(form, 2, 3)}), (QStringList{"03", "DRILL"}));
        QVERIFY(!grid->item(2, 4)->data(Qt::DecorationRole).value<QPixmap>().isNull()); // used
        QVERIFY(grid->item(1, 4)->data(Qt::DecorationRole).isNull());
        QCOMPARE(grid->currentRow(), 1);
        QCOMPARE(form.CurrentTool()->Number(), 1); // the first row is chosen at the opening

        form.findChild<QAction*>(QStringLiteral("Renumber"))->trigger();
        QCOMPARE(onStation7->number, 7);
        QCOMPARE(onStation7->parameters.value(QStringLiteral("121")).value.toInt(), 7);
        QCOMPARE(onBackTurret->number, 2);
        QCOMPARE(unmounted->number, 3);
        QCOMPARE(unmounted->parameters.value(QStringLiteral("121")).value.toInt(), 3);
        QCOMPARE((QStringList{cell(form, 1, 1), cell(form, 2, 1), cell(form, 3, 1)}), (QStringList{"02", "03", "07"}));

        unmounted->number = 50;
        QCOMPARE(cell(form, 2, 1), QStringLiteral("03"));
        form.findChild<QAction*>(QStringLiteral("Sort"))->trigger();
        QCOMPARE((QStringList{cell(form, 1, 1), cell(form, 2, 1), cell(form, 3, 1)}), (QStringList{"02", "07", "50"}));
    }

    void renumberStopsAtAHostRefusal()
    {
        ToolDataFixture f;
        auto tool = f.AddTool(5, 5);
        frmToolData form(f.application);
        f.host.Faults().Fail(QStringLiteral("Stations.Item"));
        QVERIFY_THROWS_EXCEPTION(host::HostError, form.Renumber_Click());
        QCOMPARE(tool->number, 5);
        // Run from the menu, the failure ends the command and is shown.
        form.findChild<QAction*>(QStringLiteral("Renumber"))->trigger();
        QCOMPARE(f.messages->Last().icon, host::MsgIcon::Critical);
    }

    void rightButtonShowsTheContextMenu()
    {
        ToolDataFixture f;
        f.AddTool(5, 5);
        f.AddTool(6, 6);
        frmToolData form(f.application);
        form.ToolGrid_MouseUp(Qt::RightButton, 2, 1);
        QVERIFY(form.MnuContext()->isVisible());
        form.MnuContext()->hide();
        QCOMPARE(form.CurrentTool()->Number(), 5); // the right button chooses no tool
    }

    void deleteHolder_data()
    {
        QTest::addColumn<QByteArray>("library");
        QTest::addColumn<int>("selected");
        QTest::addColumn<QStringList>("left");
        QTest::addColumn<QString>("shown");
        QTest::newRow("middle of three") << kThreeHolders << 1 << QStringList{"GTF5101", "GDB5101"} << "GDB5101";
        QTest::newRow("last of three") << kThreeHolders << 2 << QStringList{"GTF5101", "GTF5102"} << "GTF5101";
        QTest::newRow("the only holder") << QByteArray("\"A\",\"Only\",1,1,1,-1,1,1\r\n") << 0 << QStringList{} << "";
    }
    void deleteHolder()
    {
        QFETCH(QByteArray, library);
        QFETCH(int, selected);
        QFETCH(QStringList, left);
        QFETCH(QString, shown);
        ToolDataFixture f;
        f.WriteLibrary(kL5, library);
        frmToolData form(f.application);
        auto* holders = control<QComboBox>(form, "cmbHolders");
        holders->setCurrentIndex(selected);
        QTest::mouseClick(control<QPushButton>(form, "cmdDelete"), Qt::LeftButton);
        QStringList names, inFile;
        for (int i = 0; i < holders->count(); ++i)
            names << holders->itemText(i);
        for (const auto& holder : ReadHolderFile(f.LibraryPath(kL5)))
            inFile << holder.name;
        QCOMPARE(names, left);
        QCOMPARE(inFile, left);
        QCOMPARE(holders->currentText(), shown);
        QCOMPARE(text(form, "txtHolderXShift").isEmpty(), left.isEmpty());
    }

    void newHolderIsSelectedAfterwards()
    {
        ToolDataFixture f(71);
        f.WriteLibrary(kL5, kThreeHolders);
        frmToolData form(f.application);
        control<QComboBox>(form, "cmbHolders")->setCurrentIndex(1);
        whenModal<frmNewHolder>([](frmNewHolder& dialog) {
            setText(dialog, "txtHolderName", QStringLiteral("GTF, new"));
            setText(dialog, "txtHolderDesc", QStringLiteral("Added"));
            setText(dialog, "txtXShift", QStringLiteral("25.4"));
            QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        });
        form.cmdNew_Click();
        QCOMPARE(text(form, "cmbHolders"), QStringLiteral("GTF, new"));
        QCOMPARE(form.HolderTable().last().xShift, 1.0);
        QCOMPARE(text(form, "txtHolderXShift"), QStringLiteral("25.4"));

        whenModal<frmNewHolder>([](frmNewHolder& dialog) { dialog.cmdCancel_Click(); });
        control<QComboBox>(form, "cmbHolders")->setCurrentIndex(1);
        form.cmdNew_Click();
        QCOMPARE(control<QComboBox>(form, "cmbHolders")->currentIndex(), 1); // nothing added: as before
    }

    void editedHolderStaysSelected()
    {
        ToolDataFixture f;
        f.WriteLibrary(kL5, kThreeHolders);
        frmToolData form(f.application);
        control<QComboBox>(form, "cmbHolders")->setCurrentIndex(1);
        whenModal<frmEditHolder>([](frmEditHolder& dialog) {
            QCOMPARE(dialog.findChild<QLineEdit*>("txtHolderName")->text(), QStringLiteral("GTF5102"));
            setText(dialog, "txtHolderDesc", QStringLiteral("Gang 2, changed"));
            dialog.cmdOK_Click();
        });
        form.cmdEdit_Click();
        QCOMPARE(control<QComboBox>(form, "cmbHolders")->currentIndex(), 1);
        QCOMPARE(text(form, "lblHolderDesc"), QStringLiteral("Gang 2, changed"));
    }

    void helpTopics()
    {
        ToolDataFixture f;
        f.host.App().installFolder = f.addIn.path() + QLatin1Char('/');
        QDir(f.addIn.path()).mkpath(QStringLiteral("Help/1033"));
        QFile(f.addIn.path() + QStringLiteral("/Help/1033/Marelon Help.chm")).open(QIODevice::WriteOnly);
        frmToolData form(f.application);
        QTest::mouseClick(control<QPushButton>(form, "cmdHelp"), Qt::LeftButton);
        whenModal<frmNewHolder>([](frmNewHolder& dialog) {
            dialog.cmdHelp_Click();
            dialog.cmdCancel_Click();
        });
        form.cmdNew_Click();
        QStringList topics;
        for (const auto& request : f.host.Log().RequestsOf(QStringLiteral("Application.ShowHelpTopic")))
            topics << QFileInfo(request.arguments.at(0)).fileName() + QLatin1Char('|') + request.arguments.at(1);
        QCOMPARE(topics, (QStringList{"Marelon Help.chm|TooData.htm", "Marelon Help.chm|TooData.htm#Holder"}));
    }
};

QTEST_MAIN(tst_frmToolData)
#include "tst_frmToolData.moc"
