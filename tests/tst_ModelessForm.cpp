#include "addin/ui/ModelessForm.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QVBoxLayout>

using namespace marelon;

namespace {

// A small dialog: three text boxes (the middle one disabled), a hidden and a
// no-tab-stop button, a check box, and two frames of option buttons.
struct Form {
    QWidget window;
    QLineEdit* first = new QLineEdit(&window);
    QLineEdit* disabled = new QLineEdit(&window);
    QPushButton* hidden = new QPushButton(&window);
    QPushButton* noTabStop = new QPushButton(&window);
    QCheckBox* check = new QCheckBox(&window);
    QGroupBox* frameA = new QGroupBox(&window);
    QRadioButton* a1 = new QRadioButton(frameA);
    QRadioButton* a2 = new QRadioButton(frameA);
    QRadioButton* a3 = new QRadioButton(frameA);
    QGroupBox* frameB = new QGroupBox(&window);
    QRadioButton* b1 = new QRadioButton(frameB);
    QLineEdit* last = new QLineEdit(&window);

    Form()
    {
        auto* layout = new QVBoxLayout(&window);
        for (QWidget* w : {(QWidget*)first, (QWidget*)disabled, (QWidget*)hidden, (QWidget*)noTabStop,
                           (QWidget*)check, (QWidget*)frameA, (QWidget*)frameB, (QWidget*)last})
            layout->addWidget(w);
        auto* a = new QVBoxLayout(frameA);
        a->addWidget(a1);
        a->addWidget(a2);
        a->addWidget(a3);
        (new QVBoxLayout(frameB))->addWidget(b1);
        disabled->setEnabled(false);
        hidden->setVisible(false);
        noTabStop->setFocusPolicy(Qt::ClickFocus);
        a1->setChecked(true);
        b1->setChecked(true);
    }
};

QWidget* focused()
{
    return QApplication::focusWidget();
}

} // namespace

class tst_ModelessForm : public QObject {
    Q_OBJECT

    QMainWindow host_;

private slots:
    void initTestCase()
    {
        host_.resize(400, 300);
        host_.show();
        SetHostWindow(&host_);
    }

    void hookExistsExactlyWhileAFormIsRegistered()
    {
        Form one, two;
        QVERIFY(!IsKeyboardHookInstalled());
        ShowForm(&one.window, false);
        ShowForm(&one.window, false); // shown twice, registered once
        ShowForm(&two.window, false);
        QVERIFY(IsKeyboardHookInstalled());
        HideModelessForm(&one.window);
        QVERIFY(IsKeyboardHookInstalled());
        QVERIFY(!IsFormRegistered(&one.window));
        HideModelessForm(&two.window);
        QVERIFY(!IsKeyboardHookInstalled());
        UnregisterForm(&two.window); // a missing key is ignored
        QVERIFY(!IsKeyboardHookInstalled());
    }

    void tabMovesThroughTabStops_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<bool>("backwards");
        QTest::addColumn<QString>("expected");

        QTest::newRow("skips disabled, hidden and no-tab-stop") << "first" << false << "check";
        QTest::newRow("wraps from last to first") << "last" << false << "first";
        QTest::newRow("backwards wraps from first to last") << "first" << true << "last";
        QTest::newRow("backwards skips the same controls") << "check" << true << "first";
    }
    void tabMovesThroughTabStops()
    {
        QFETCH(QString, start);
        QFETCH(bool, backwards);
        QFETCH(QString, expected);

        Form form;
        const QMap<QString, QWidget*> byName{{"first", form.first}, {"check", form.check}, {"last", form.last}};
        ShowForm(&form.window, false);
        QVERIFY(QTest::qWaitForWindowActive(&form.window));
        byName[start]->setFocus();

        QTest::keyClick(focused(), backwards ? Qt::Key_Backtab : Qt::Key_Tab,
                        backwards ? Qt::ShiftModifier : Qt::NoModifier);
        QCOMPARE(focused(), byName[expected]);
        HideModelessForm(&form.window);
    }

    void arrowsMoveAmongOptionButtonsOfOneFrame_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");

        QTest::newRow("right to next") << int(Qt::Key_Right) << 1 << 2;
        QTest::newRow("down wraps to first") << int(Qt::Key_Down) << 2 << 0;
        QTest::newRow("up wraps to last") << int(Qt::Key_Up) << 0 << 2;
        QTest::newRow("left to previous") << int(Qt::Key_Left) << 2 << 1;
    }
    void arrowsMoveAmongOptionButtonsOfOneFrame()
    {
        QFETCH(int, key);
        QFETCH(int, from);
        QFETCH(int, to);

        Form form;
        QRadioButton* buttons[] = {form.a1, form.a2, form.a3};
        ShowForm(&form.window, false);
        QVERIFY(QTest::qWaitForWindowActive(&form.window));
        buttons[from]->setChecked(true);
        buttons[from]->setFocus();

        QTest::keyClick(buttons[from], Qt::Key(key));
        QCOMPARE(focused(), buttons[to]);
        QVERIFY(buttons[to]->isChecked());
        QVERIFY(form.b1->isChecked()); // the other frame is untouched
        HideModelessForm(&form.window);
    }

    void arrowsKeepTheirMeaningInTextBoxes()
    {
        Form form;
        ShowForm(&form.window, false);
        QVERIFY(QTest::qWaitForWindowActive(&form.window));
        form.first->setText("abc");
        form.first->setFocus();
        form.first->setCursorPosition(3);
        QTest::keyClick(form.first, Qt::Key_Left);
        QCOMPARE(form.first->cursorPosition(), 2);
        HideModelessForm(&form.window);
    }

    void escapeHidesAndUnregistersTheActiveForm()
    {
        Form form;
        ShowForm(&form.window, false);
        QVERIFY(QTest::qWaitForWindowActive(&form.window));
        form.first->setFocus();
        QTest::keyClick(form.first, Qt::Key_Escape);
        QVERIFY(!form.window.isVisible());
        QVERIFY(!IsFormRegistered(&form.window));
        QVERIFY(!IsKeyboardHookInstalled());
    }

    void keysOfUnregisteredWindowsPassThrough()
    {
        Form form;
        form.window.show();
        QVERIFY(QTest::qWaitForWindowActive(&form.window));
        form.first->setFocus();
        QTest::keyClick(form.first, Qt::Key_Escape);
        QVERIFY(form.window.isVisible());
    }

    void minimisingTheHostHidesRegisteredForms()
    {
        Form form;
        ShowForm(&form.window, false);
        host_.showMinimized();
        QTRY_VERIFY(!form.window.isVisible());
        host_.showNormal();
        QTRY_VERIFY(form.window.isVisible());
        HideModelessForm(&form.window);
    }

    void parentToHostMakesTheHostTheOwner()
    {
        Form form;
        ParentToHost(&form.window);
        QCOMPARE(form.window.parentWidget(), &host_);
        QVERIFY(form.window.isWindow());
    }
};

QTEST_MAIN(tst_ModelessForm)
#include "tst_ModelessForm.moc"
