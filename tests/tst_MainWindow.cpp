#include "TestAddIn.h"
#include "feldra/app/HelpViewer.h"
#include "feldra/app/MainWindow.h"
#include "feldra/app/MaskingPanel.h"
#include "addin/host/Application.h"
#include "feldra/Host.h"
#include "feldra/app/PickDialog.h"

#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>
#include <QtTest>

class tst_MainWindow : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void toolbarShowsAddInControlsWhereTheAddInPutThem();
    void controlsFollowTheAddInsStateAndVisibility();
    void languageSwitchTranslatesTheHostTexts();
    void pickDialogAnswersTheChosenKey();
    void controlMTogglesTheMaskingPanel();
    void helpRequestsReachTheViewer();
};

namespace {

QStringList Texts(const QList<QAction*>& actions)
{
    QStringList texts;
    for (const QAction* action : actions)
        texts << (action->isSeparator() ? QStringLiteral("|") : action->text());
    return texts;
}

QAction* Action(const QList<QAction*>& actions, const QString& text)
{
    for (QAction* action : actions)
        if (action->text() == text)
            return action;
    return nullptr;
}

QMenu* Menu(QMainWindow& window, const QString& title)
{
    for (QAction* action : window.menuBar()->actions())
        if (action->menu() && action->text() == title)
            return action->menu();
    return nullptr;
}

} // namespace

void tst_MainWindow::toolbarShowsAddInControlsWhereTheAddInPutThem()
{
    feldra::Host host;
    TestAddIn addIn(host);
    feldra::MainWindow window(host);
    const QList<QAction*> lathe = window.CommandBarToolBar(23)->actions();
    QCOMPARE(Texts(lathe), (QStringList{"Turret Setup", "Simulate", "Ask", "Never", "Generate NC Code"}));
    QCOMPARE(Action(lathe, "Ask")->toolTip(), QStringLiteral("Asks for a value"));
    QCOMPARE(Texts(window.CommandBarToolBar(2)->actions()), (QStringList{"Cut", "Copy", "Paste"}));
    QMenu* help = Menu(window, "Help");
    QVERIFY(help);
    QCOMPARE(Texts(help->actions()), (QStringList{"Help Topics", "|", "About Feldra", "Toggle Ask", "Pick"}));
}

void tst_MainWindow::controlsFollowTheAddInsStateAndVisibility()
{
    feldra::Host host;
    TestAddIn addIn(host);
    feldra::MainWindow window(host);
    QVERIFY(Action(window.CommandBarToolBar(23)->actions(), "Ask")->isEnabled());
    QVERIFY(!Action(window.CommandBarToolBar(23)->actions(), "Never")->isEnabled());

    Action(Menu(window, "Help")->actions(), "Toggle Ask")->trigger(); // asked again after each command
    QVERIFY(!Action(window.CommandBarToolBar(23)->actions(), "Ask")->isEnabled());

    host.ApplicationFor("Test.Connect")->CommandBars()->Item(23)->Control(4)->setVisible(false); // "Never"
    host.ApplicationFor("Test.Connect")->RefreshCommandBars();
    QVERIFY(!Action(window.CommandBarToolBar(23)->actions(), "Never")->isVisible());
    QVERIFY(Action(window.CommandBarToolBar(23)->actions(), "Ask")->isVisible());
}

void tst_MainWindow::languageSwitchTranslatesTheHostTexts()
{
    feldra::Host host;
    feldra::MainWindow window(host);
    auto* panes = window.findChild<QTabWidget*>("panes");
    QMenu* languages = Menu(window, "View")->findChild<QMenu*>();
    Action(languages->actions(), "German")->trigger(); // kept in the settings
    QCOMPARE(feldra::MainWindow::StoredLanguage(), feldra::QtLocalizer::kGerman);
    QCOMPARE(host.App().languageCode, feldra::QtLocalizer::kGerman);
    QCOMPARE(panes->tabText(0), QStringLiteral("Simulation"));
    QCOMPARE(panes->tabText(2), QStringLiteral("Protokoll"));
    QVERIFY(Menu(window, "Datei"));
    QCOMPARE(host.Services().createLocalizer()->LanguageCode(), feldra::QtLocalizer::kGerman);
    Action(Menu(window, "Ansicht")->findChild<QMenu*>()->actions(), "Englisch")->trigger();
    QCOMPARE(feldra::MainWindow::StoredLanguage(), feldra::QtLocalizer::kEnglish);
    QCOMPARE(panes->tabText(2), QStringLiteral("Log"));
    QVERIFY(Menu(window, "File"));
}

void tst_MainWindow::pickDialogAnswersTheChosenKey()
{
    feldra::DocumentData document;
    auto feature = std::make_shared<feldra::FeatureData>();
    feature->key = "F-GROOVE";
    document.features << feature;
    auto operation = std::make_shared<feldra::OperationData>();
    operation->key = "OP-7";
    operation->name = "Cut-Off";
    document.operations << operation;

    feldra::PickDialog dialog(document, "Pick the groove");
    auto* objects = dialog.findChild<QListWidget*>("lstObjects");
    QCOMPARE(objects->count(), 2);
    QCOMPARE(dialog.PickedKey(), QString()); // nothing chosen yet
    objects->setCurrentRow(1);
    QCOMPARE(dialog.PickedKey(), QStringLiteral("OP-7"));
    objects->setCurrentRow(0);
    QCOMPARE(dialog.PickedKey(), QStringLiteral("F-GROOVE"));
}

// A help request of an add-in reaches the window's help viewer, which tells
// in the window's language what it cannot show.
void tst_MainWindow::helpRequestsReachTheViewer()
{
    QTemporaryDir folder;
    const QString helpFile = folder.filePath("G-Code Help.chm");
    feldra::Host host;
    feldra::MainWindow window(host);
    window.SetLanguage(feldra::QtLocalizer::kGerman);
    host.Services().showHelpTopic(helpFile, "posting.htm#Warning");
    feldra::HelpViewer* viewer = window.Help();
    QVERIFY(viewer->isVisible());
    QCOMPARE(viewer->HelpFile(), helpFile);
    QCOMPARE(viewer->Message(), QStringLiteral("Die Hilfedatei %1 wurde nicht gefunden.").arg(helpFile));
}

// An add-in's keystroke "^m" reaches the window as Ctrl+M, which shows and
// hides the masking panel; a masked operation leaves the document view.
void tst_MainWindow::controlMTogglesTheMaskingPanel()
{
    feldra::Host host;
    auto document = std::make_shared<feldra::DocumentState>();
    for (const char* name : {"Face", "Cut-Off"}) {
        auto operation = std::make_shared<feldra::OperationData>();
        operation->name = name;
        document->data.operations.append(operation);
    }
    feldra::MainWindow window(host);
    host.OpenDocument(document);
    window.RefreshDocumentView();
    window.show();
    auto application = host.ApplicationFor("Test.Connect");

    application->SendKeys("^m");
    QVERIFY(window.Masks()->isVisible());
    auto* list = window.Masks()->findChild<QListWidget*>("maskList");
    QCOMPARE(list->count(), 2);
    list->item(1)->setCheckState(Qt::Checked);
    auto* operations = window.findChild<QTreeWidget*>()->topLevelItem(0)->child(2);
    QCOMPARE(operations->childCount(), 1);
    QCOMPARE(operations->child(0)->text(0), QStringLiteral("1 Face"));

    application->SendKeys("^m");
    QVERIFY(!window.Masks()->isVisible());
    application->SendKeys("^q"); // no action has it: nothing happens
    QVERIFY(!window.Masks()->isVisible());
}

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
