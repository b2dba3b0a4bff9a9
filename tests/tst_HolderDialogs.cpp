#include "ToolDataFixture.h"

#include "addin/host/HostError.h"
#include "tooldata/frmEditHolder.h"
#include "tooldata/frmNewHolder.h"

#include <QApplication>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace marelon;

namespace {

const QString kFile = QStringLiteral("L5-16-20 ToolHolders.txt");
const QByteArray kHolders = "\"GTF5101\",\"Gang 1\",1,.5,.25,-1,1,2\r\n"
                            "\"TWICE\",\"First\",0,0,0,1,1,1\r\n"
                            "\"TWICE\",\"Second\",0,0,0,1,1,1\r\n";
const QString kCrLf = QStringLiteral("\r\n");

QLineEdit* field(QWidget& dialog, const QString& name)
{
    return dialog.findChild<QLineEdit*>(name);
}

// Fills the fields of a holder dialog: name, X, Z, Y, gear 1, gear 2, description.
void fill(QWidget& dialog, const QStringList& values)
{
    const char* names[] = {"txtHolderName", "txtXShift", "txtZShift", "txtYShift", "txtGear1", "txtGear2", "txtHolderDesc"};
    for (int i = 0; i < values.size(); ++i)
        field(dialog, QString::fromLatin1(names[i]))->setText(values[i]);
}

// A New Holder or an Edit Holder dialog of the GTF5101 holder.
std::unique_ptr<HolderDialog> holderDialog(ToolDataFixture& f, const QString& kind)
{
    if (kind == QLatin1String("new"))
        return std::make_unique<frmNewHolder>(f.application, f.LibraryPath(kFile));
    return std::make_unique<frmEditHolder>(f.application, f.LibraryPath(kFile), QStringLiteral("GTF5101"));
}

void leave(QLineEdit* field, Qt::FocusReason reason = Qt::TabFocusReason)
{
    QFocusEvent focusOut(QEvent::FocusOut, reason);
    QApplication::sendEvent(field, &focusOut);
}

QString badNumber(const QString& caption)
{
    return QStringLiteral("Bad data entered for - ") + caption + kCrLf + kCrLf
        + QStringLiteral("Please enter a numeric value");
}

} // namespace

class tst_HolderDialogs : public QObject {
    Q_OBJECT

private slots:
    void init() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }

    void okChecksInOrder_data()
    {
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QString>("message");
        const QString quote = QStringLiteral("Quotation mark (\")");
        QTest::newRow("quote in name") << QStringList{"GT\"F", "x", "x", "x", "x", "x", "a\"b"}
                                       << QStringLiteral("Invalid Holder Name.") + kCrLf + quote + QStringLiteral(" is not allowed.");
        QTest::newRow("empty name") << QStringList{"", "x", "0", "0", "1", "1", ""} << "Please enter a Holder Name.";
        QTest::newRow("X before Z") << QStringList{"A", "x", "x", "0", "1", "1", "d"} << badNumber("X Shift");
        QTest::newRow("Z before Y") << QStringList{"A", "0", "", "x", "1", "1", "d"} << badNumber("Z Shift");
        QTest::newRow("Y") << QStringList{"A", "0", "0", "1..2", "1", "1", "d"} << badNumber("Y Shift");
        QTest::newRow("gear ratio 1") << QStringList{"A", "0", "0", "0", "one", "x", "d"} << badNumber("Gear Ratio 1");
        QTest::newRow("gear ratio 2") << QStringList{"A", "0", "0", "0", "1", "", "d"} << badNumber("Gear Ratio 2");
        QTest::newRow("quote in description") << QStringList{"A", "0", "0", "0", "1", "2", "\""}
                                              << QStringLiteral("Invalid Holder Description.") + kCrLf + quote + QStringLiteral(" is not allowed");
        QTest::newRow("empty description") << QStringList{"A", "0", "0", "0", "1", "2", ""} << "Please enter a Holder Description.";
    }
    void okChecksInOrder()
    {
        QFETCH(QStringList, values);
        QFETCH(QString, message);
        ToolDataFixture f;
        f.WriteLibrary(kFile, kHolders);
        for (bool edit : {false, true}) {
            std::unique_ptr<HolderDialog> dialog;
            if (edit)
                dialog = std::make_unique<frmEditHolder>(f.application, f.LibraryPath(kFile), QStringLiteral("GTF5101"));
            else
                dialog = std::make_unique<frmNewHolder>(f.application, f.LibraryPath(kFile));
            dialog->show();
            fill(*dialog, values);
            f.messages->Clear();
            QTest::mouseClick(dialog->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
            QCOMPARE(f.messages->Messages().size(), 1);
            QCOMPARE(f.messages->Last().prompt, message);
            QCOMPARE(f.messages->Last().title, kDefaultTitle);
            QVERIFY(dialog->isVisible());
            QCOMPARE(f.ReadLibrary(kFile), kHolders);
        }
    }

    void newHolderAppends_data()
    {
        QTest::addColumn<int>("units");
        QTest::addColumn<QString>("locale");
        QTest::addColumn<bool>("reverse");
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("inches, forward") << 70 << "en_US" << false << QStringList{"GTF, 9", "0.5", "-1.25", "0", "1", "1.5", "Angle head, 1:1.5"}
                                         << QByteArray("\"GTF, 9\",\"Angle head, 1:1.5\",0.5,-1.25,0,-1,1,1.5\r\n");
        QTest::newRow("millimetres, reverse") << 71 << "en_US" << true << QStringList{"M", "25.4", "-12.7", "2.54", "2", "1", "d"}
                                              << QByteArray("\"M\",\"d\",1,-0.5,0.1,1,2,1\r\n");
        QTest::newRow("millimetres, German") << 71 << "de_DE" << false << QStringList{"G", "1.270", "-12,7", "0", "1", "2,5", "d"}
                                             << QByteArray("\"G\",\"d\",50,-0.5,0,-1,1,2.5\r\n");
    }
    void newHolderAppends()
    {
        QFETCH(int, units);
        QFETCH(QString, locale);
        QFETCH(bool, reverse);
        QFETCH(QStringList, values);
        QFETCH(QByteArray, line);
        QLocale::setDefault(QLocale(locale));
        ToolDataFixture f(units);
        f.WriteLibrary(kFile, kHolders);
        frmNewHolder dialog(f.application, f.LibraryPath(kFile));
        fill(dialog, values);
        dialog.findChild<QRadioButton*>(reverse ? "opReverse" : "opForward")->setChecked(true);
        dialog.cmdOK_Click();
        QVERIFY(f.messages->Messages().isEmpty());
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(f.ReadLibrary(kFile), kHolders + line);
    }

    void editHolderLoads_data()
    {
        QTest::addColumn<int>("units");
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("shown"); // name, X, Z, Y, gear 1, gear 2, description
        QTest::addColumn<bool>("forward");
        QTest::newRow("millimetres") << 71 << "de_DE" << "GTF5101" << QStringList{"GTF5101", "25,4", "12,7", "6,35", "1", "2", "Gang 1"} << true;
        QTest::newRow("first of two") << 70 << "en_US" << "TWICE" << QStringList{"TWICE", "0", "0", "0", "1", "1", "First"} << false;
    }
    void editHolderLoads()
    {
        QFETCH(int, units);
        QFETCH(QString, locale);
        QFETCH(QString, name);
        QFETCH(QStringList, shown);
        QFETCH(bool, forward);
        QLocale::setDefault(QLocale(locale));
        ToolDataFixture f(units);
        f.WriteLibrary(kFile, kHolders);
        frmEditHolder dialog(f.application, f.LibraryPath(kFile), name);
        QStringList values;
        for (const char* n : {"txtHolderName", "txtXShift", "txtZShift", "txtYShift", "txtGear1", "txtGear2", "txtHolderDesc"})
            values << field(dialog, QString::fromLatin1(n))->text();
        QCOMPARE(values, shown);
        QCOMPARE(dialog.findChild<QRadioButton*>(forward ? "opForward" : "opReverse")->isChecked(), true);
    }

    void shiftsEvaluateExpressions_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown"); // empty: "Invalid Expression"
        for (const char* kind : {"new", "edit"}) {
            const QString row = QString::fromLatin1(kind) + QStringLiteral(": ");
            QTest::newRow(qPrintable(row + "expression")) << kind << "en_US" << "25.4/2" << "12.700000";
            QTest::newRow(qPrintable(row + "expression, German")) << kind << "de_DE" << "25.4/2" << "12,700000";
            QTest::newRow(qPrintable(row + "invalid")) << kind << "en_US" << "25.4/" << "";
            QTest::newRow(qPrintable(row + "decimal comma is no expression")) << kind << "de_DE" << "12,7" << "";
        }
    }
    void shiftsEvaluateExpressions()
    {
        QFETCH(QString, kind);
        QFETCH(QString, locale);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QLocale::setDefault(QLocale(locale));
        ToolDataFixture f(71);
        f.WriteLibrary(kFile, kHolders);
        const auto dialog = holderDialog(f, kind);
        dialog->show();
        QLineEdit* x = field(*dialog, "txtXShift");
        x->clear();
        QTest::keyClicks(x, typed);
        leave(x);
        if (shown.isEmpty()) {
            QCOMPARE(f.messages->Messages().size(), 1);
            QCOMPARE(f.messages->Last().prompt, QStringLiteral("Invalid Expression"));
            QCOMPARE(f.messages->Last().title, QStringLiteral("Error"));
            QCOMPARE(f.messages->Last().icon, host::MsgIcon::Information);
            QCOMPARE(x->text(), typed);
            QCOMPARE(x->selectedText(), typed);
            return;
        }
        QVERIFY(f.messages->Messages().isEmpty());
        QCOMPARE(x->text(), shown);
        dialog->txtXShift_LostFocus(); // the dialog's own text is not evaluated again
        QVERIFY(f.messages->Messages().isEmpty());
        if (kind == QLatin1String("new")) { // and OK takes the value shown
            fill(*dialog, {"NEW"});
            field(*dialog, "txtHolderDesc")->setText(QStringLiteral("d"));
            QTest::mouseClick(dialog->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
            QCOMPARE(ReadHolderFile(f.LibraryPath(kFile)).last().xShift, 0.5);
        }
    }

    // Escape, the close box and Cancel close without writing, and a shift
    // field left with an expression that is no number is not evaluated on the way.
    void closingWritesAndEvaluatesNothing_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("close");
        for (const char* kind : {"new", "edit"})
            for (const char* close : {"escape", "close box", "cancel"})
                QTest::newRow(qPrintable(QStringLiteral("%1, %2").arg(kind, close))) << kind << close;
    }
    void closingWritesAndEvaluatesNothing()
    {
        QFETCH(QString, kind);
        QFETCH(QString, close);
        ToolDataFixture f(71);
        f.WriteLibrary(kFile, kHolders);
        const auto dialog = holderDialog(f, kind);
        dialog->show();
        QApplication::setActiveWindow(dialog.get());
        fill(*dialog, {"CHANGED"});
        QLineEdit* x = field(*dialog, "txtXShift");
        x->setFocus();
        x->clear();
        QTest::keyClicks(x, QStringLiteral("25.4/"));
        if (close == QLatin1String("escape"))
            QTest::keyClick(x, Qt::Key_Escape);
        else if (close == QLatin1String("close box"))
            dialog->close();
        else
            QTest::mouseClick(dialog->findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
        leave(x, Qt::ActiveWindowFocusReason); // the window system's word that the dialog has gone
        QVERIFY(!dialog->isVisible());
        QCOMPARE(dialog->result(), int(QDialog::Rejected));
        QVERIFY(f.messages->Messages().isEmpty());
        QCOMPARE(f.ReadLibrary(kFile), kHolders);
    }

    // The holder file holds the Windows-1252 code page: a name or description
    // it cannot hold is refused with the characters named; one it can is written in it.
    void textsTheFileCannotHold_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("message"); // empty: written
        QTest::addColumn<QByteArray>("line");
        const QString cannot = QStringLiteral("\r\nThe holder file cannot hold these characters: ");
        for (const char* kind : {"new", "edit"}) {
            const QString row = QString::fromLatin1(kind) + QStringLiteral(": ");
            QTest::newRow(qPrintable(row + "Cyrillic name"))
                << kind << QStringLiteral("Фреза €1") << "d" << QStringLiteral("Invalid Holder Name.") + cannot + QStringLiteral("Ф р е з а")
                << QByteArray();
            QTest::newRow(qPrintable(row + "Greek and emoji in the description"))
                << kind << "A" << QStringLiteral("Ø 6 mm, α 90° 🙂 α") << QStringLiteral("Invalid Holder Description.") + cannot + QStringLiteral("α 🙂")
                << QByteArray();
            QTest::newRow(qPrintable(row + "Western European text"))
                << kind << QStringLiteral("Fräse €1") << QStringLiteral("„Größe“ – Ø 6 mm, Œ")
                << QString() << QByteArray("\"Fr\xe4se \x80" "1\",\"\x84Gr\xf6\xdf" "e\x93 \x96 \xd8 6 mm, \x8c\",0,0,0,-1,1,1\r\n");
        }
    }
    void textsTheFileCannotHold()
    {
        QFETCH(QString, kind);
        QFETCH(QString, name);
        QFETCH(QString, description);
        QFETCH(QString, message);
        QFETCH(QByteArray, line);
        ToolDataFixture f;
        f.WriteLibrary(kFile, kHolders);
        const auto dialog = holderDialog(f, kind);
        dialog->show();
        fill(*dialog, {name, "0", "0", "0", "1", "1", description});
        dialog->findChild<QRadioButton*>("opForward")->setChecked(true);
        QTest::mouseClick(dialog->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        if (!message.isEmpty()) {
            QCOMPARE(f.messages->Messages().size(), 1);
            QCOMPARE(f.messages->Last().prompt, message);
            QVERIFY(dialog->isVisible());
            QCOMPARE(f.ReadLibrary(kFile), kHolders);
            return;
        }
        QVERIFY(f.messages->Messages().isEmpty());
        const QList<QByteArray> lines = f.ReadLibrary(kFile).split('\n');
        QCOMPARE(lines[kind == QLatin1String("new") ? 3 : 0] + '\n', line);
        QCOMPARE(ReadHolderFile(f.LibraryPath(kFile))[kind == QLatin1String("new") ? 3 : 0].description, description);
    }

    // The first holder of a name is changed, its shifts stored in inches.
    void editStoresTheFirstOfTwoInInches()
    {
        ToolDataFixture f(71);
        f.WriteLibrary(kFile, kHolders);
        frmEditHolder dialog(f.application, f.LibraryPath(kFile), QStringLiteral("TWICE"));
        field(dialog, "txtXShift")->setText(QStringLiteral("12.7"));
        field(dialog, "txtHolderDesc")->setText(QStringLiteral("Changed"));
        dialog.findChild<QRadioButton*>("opForward")->setChecked(true);
        dialog.cmdOK_Click();
        const QList<QByteArray> lines = f.ReadLibrary(kFile).split('\n');
        QCOMPARE(lines[1], QByteArray("\"TWICE\",\"Changed\",0.5,0,0,-1,1,1\r"));
        QCOMPARE(lines[2], QByteArray("\"TWICE\",\"Second\",0,0,0,1,1,1\r"));
    }

    void editOfAHolderThatIsGone()
    {
        ToolDataFixture f;
        f.WriteLibrary(kFile, kHolders);
        frmEditHolder dialog(f.application, f.LibraryPath(kFile), QStringLiteral("GONE"));
        dialog.show();
        fill(dialog, {"GONE", "0", "0", "0", "1", "1", "d"});
        dialog.cmdOK_Click();
        QCOMPARE(f.messages->Last().prompt,
                 QStringLiteral("The holder is no longer in the holder file. Nothing has been changed."));
        QVERIFY(dialog.isVisible());
        QCOMPARE(f.ReadLibrary(kFile), kHolders);
    }

    void aHostFailureOnOkWritesNothing()
    {
        ToolDataFixture f;
        f.WriteLibrary(kFile, kHolders);
        frmNewHolder dialog(f.application, f.LibraryPath(kFile));
        dialog.show();
        fill(dialog, {"NEW", "1", "1", "1", "1", "1", "d"});
        f.host.Faults().Fail(QStringLiteral("Document.UnitSystem"));
        QVERIFY_THROWS_EXCEPTION(host::HostError, dialog.cmdOK_Click());
        QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        QCOMPARE(f.messages->Last().icon, host::MsgIcon::Critical);
        QVERIFY(dialog.isVisible());
        QCOMPARE(f.ReadLibrary(kFile), kHolders);
    }

    void cancelWritesNothing()
    {
        ToolDataFixture f;
        f.WriteLibrary(kFile, kHolders);
        frmEditHolder edit(f.application, f.LibraryPath(kFile), QStringLiteral("GTF5101"));
        fill(edit, {"CHANGED", "1", "1", "1", "1", "1", "d"});
        QTest::mouseClick(edit.findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
        QCOMPARE(edit.result(), int(QDialog::Rejected));
        QCOMPARE(f.ReadLibrary(kFile), kHolders);
    }
};

QTEST_MAIN(tst_HolderDialogs)
#include "tst_HolderDialogs.moc"
