#include "TempStores.h"
#include "TestAddIn.h"
#include "addin/host/Application.h"
#include "addin/host/Feature.h"
#include "addin/host/FeatureChains.h"
#include "addin/host/GeometryUtility.h"
#include "addin/host/Layers.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/Spindles.h"
#include "addin/host/Point.h"
#include "addin/host/Simulation.h"
#include "addin/host/Stock.h"
#include "feldra/AddInLoader.h"
#include "feldra/DocumentFile.h"
#include "feldra/Host.h"
#include "feldra/HostActions.h"
#include "feldra/MessageBoxRecorder.h"
#include "feldra/NcListing.h"
#include "feldra/StockSection.h"
#include "feldra/app/DocumentTree.h"
#include "feldra/app/HelpViewer.h"
#include "feldra/app/MainWindow.h"
#include "feldra/app/MaskingPanel.h"
#include "feldra/app/PickDialog.h"
#include "feldra/app/SimulationPane.h"
#include "feldra/app/StockDrawing.h"
#include "numeric/NumberText.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QFileDialog>
#include <QPlainTextEdit>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>
#include <QUndoView>
#include <QtTest>

#include <csignal>
#include <numbers>
#include <sys/resource.h>

class tst_MainWindow : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void toolbarShowsAddInControlsWhereTheAddInPutThem();
    void controlsFollowTheAddInsStateAndVisibility();
    void commandsAreAskedAgainWhenAModelessDialogCloses();
    void dataPageCommandIsEnabledAgainAfterEscape();
    void languageSwitchTranslatesTheHostTexts();
    void languageSwitchReconnectsTheAddIn();
    void textsShownBeforeTheSwitchFollowIt();
    void ncListingFollowsTheLanguage();
    void logKeepsHostCallsBehindDetails();
    void editMenuUndoesAndRedoesTheLastCommand();
    void undoWaitsForAModalDialog();
    void changesAreMarkedAndAskedFor_data();
    void changesAreMarkedAndAskedFor();
    void savePromptHasQtsOwnButtonsInGerman();
    void failedSaveKeepsTheDocumentModified_data();
    void failedSaveKeepsTheDocumentModified();
    void documentViewTellsWhatTheAddInDid();
    void treeKeepsExpansionAndSelection();
    void mainStockBuiltThroughTheFacadeIsShown();
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

const QString kExamples = QStringLiteral(MARELON_SOURCE_DIR "/examples/");

// A copy of an example part that a test may change and save.
QString CopyOfExample(const QTemporaryDir& dir, const QString& name = QStringLiteral("L5-part.fdoc"))
{
    const QString copy = dir.filePath(QStringLiteral("part.fdoc"));
    QFile::copy(kExamples + name, copy);
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
    return copy;
}

// A copy of the example part and a shown window whose host has the test add-in.
struct ExamplePartWithTestAddIn {
    ExamplePartWithTestAddIn() { window.show(); }

    QTemporaryDir dir;
    const QString part = CopyOfExample(dir);
    feldra::Host host;
    TestAddIn addIn{host};
    feldra::MainWindow window{host};
};

QByteArray Contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

feldra::MessageBoxRecorder& Recorder(feldra::Host& host)
{
    return dynamic_cast<feldra::MessageBoxRecorder&>(*host.Services().messageBox);
}

// The active document as an add-in sees it.
std::shared_ptr<host::Document> AddInsDocument(feldra::Host& host)
{
    return host.ApplicationFor("Test.Connect")->ActiveDocument();
}

QTreeWidgetItem* Child(QTreeWidgetItem* parent, const QString& text)
{
    for (int i = 0; parent && i < parent->childCount(); ++i)
        if (parent->child(i)->text(0) == text)
            return parent->child(i);
    return nullptr;
}

QStringList ButtonTexts(const QMessageBox& box)
{
    QStringList texts;
    for (const QAbstractButton* button : box.buttons())
        texts << button->text().remove(QLatin1Char('&'));
    texts.sort();
    return texts;
}

} // namespace

void tst_MainWindow::toolbarShowsAddInControlsWhereTheAddInPutThem()
{
    feldra::Host host;
    TestAddIn addIn(host);
    feldra::MainWindow window(host);
    const QList<QAction*> lathe = window.CommandBarToolBar(23)->actions();
    QCOMPARE(Texts(lathe), (QStringList{"Turret Setup", "Simulate", "Ask", "Never", "Generate NC Code", "Panel"}));
    QCOMPARE(Action(lathe, "Ask")->toolTip(), QStringLiteral("Asks for a value"));
    QCOMPARE(Texts(window.CommandBarToolBar(2)->actions()), (QStringList{"Undo", "Redo", "|", "Cut", "Copy", "Paste"}));
    QCOMPARE(Texts(Menu(window, "Edit")->actions()), (QStringList{"Undo", "Redo"}));
    QMenu* help = Menu(window, "Help");
    QVERIFY(help);
    // The menus hold what runs: no host entry without a function, no empty menu.
    QCOMPARE(Texts(help->actions()), (QStringList{"About Feldra", "Toggle Ask", "Pick"}));
    QCOMPARE(Texts(Menu(window, "Operations")->actions()), (QStringList{"Simulate", "Generate NC Code"}));
    QStringList shown;
    for (QAction* menu : window.menuBar()->actions()) {
        shown << menu->text();
        QVERIFY2(!menu->menu()->actions().isEmpty(), qPrintable(menu->text()));
    }
    QCOMPARE(shown, (QStringList{"File", "Edit", "View", "Operations", "Help"}));
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

// Simulate and Generate NC Code need a document; an add-in's command is asked
// again when its modeless dialog goes away, whatever hid it.
void tst_MainWindow::commandsAreAskedAgainWhenAModelessDialogCloses()
{
    feldra::Host host;
    TestAddIn addIn(host);
    feldra::MainWindow window(host);
    window.show();
    const auto lathe = [&window](const char* text) { return Action(window.CommandBarToolBar(23)->actions(), text); };
    QVERIFY(!lathe("Simulate")->isEnabled());
    QVERIFY(!Action(Menu(window, "Operations")->actions(), "Generate NC Code")->isEnabled());
    QVERIFY(window.OpenDocument(kExamples + "L5-part.fdoc"));
    QVERIFY(lathe("Simulate")->isEnabled());
    QVERIFY(Action(Menu(window, "Operations")->actions(), "Generate NC Code")->isEnabled());

    lathe("Panel")->trigger();
    QDialog* panel = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == "frmPanel")
            panel = qobject_cast<QDialog*>(widget);
    QVERIFY(panel && panel->isVisible());
    QVERIFY(!lathe("Panel")->isEnabled());
    QTest::keyClick(panel, Qt::Key_Escape); // the dialog hides itself; no command runs
    QVERIFY(panel->isHidden());
    QTRY_VERIFY(lathe("Panel")->isEnabled());

    QVERIFY(window.CloseDocument());
    QVERIFY(!lathe("Simulate")->isEnabled());
}

// The case users met: the add-in's Data Page closed with Escape.
void tst_MainWindow::dataPageCommandIsEnabledAgainAfterEscape()
{
    TempStores stores;
    feldra::Host host;
    feldra::MainWindow window(host);
    window.show();
    QVERIFY(host.AddIns().Load("Marelon.Connect", QStringLiteral(MARELON_MODULE)));
    QVERIFY(window.OpenDocument(kExamples + "L5-part.fdoc"));
    const auto dataPage = [&window] { return Action(window.CommandBarToolBar(23)->actions(), "Data Page"); };
    dataPage()->trigger();
    QWidget* page = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == "frmMarelonDataPage" && widget->isVisible())
            page = widget;
    QVERIFY(page);
    QVERIFY(!dataPage()->isEnabled());
    QTest::keyClick(page, Qt::Key_Escape);
    QTRY_VERIFY(!page->isVisible());
    QTRY_VERIFY(dataPage()->isEnabled());
    host.AddIns().UnloadAll();
}

void tst_MainWindow::languageSwitchTranslatesTheHostTexts()
{
    feldra::Host host;
    feldra::MainWindow window(host);
    auto* panes = window.findChild<QTabWidget*>("panes");
    QMenu* languages = Menu(window, "View")->findChild<QMenu*>();
    Action(languages->actions(), "Deutsch")->trigger(); // kept in the settings
    QCOMPARE(feldra::MainWindow::StoredLanguage(), feldra::QtLocalizer::kGerman);
    QCOMPARE(host.App().languageCode, feldra::QtLocalizer::kGerman);
    QCOMPARE(panes->tabText(0), QStringLiteral("Simulation"));
    QCOMPARE(panes->tabText(2), QStringLiteral("Protokoll"));
    QVERIFY(Menu(window, "Datei"));
    QCOMPARE(host.Services().createLocalizer()->LanguageCode(), feldra::QtLocalizer::kGerman);
    Action(Menu(window, "Ansicht")->findChild<QMenu*>()->actions(), "English")->trigger();
    QCOMPARE(feldra::MainWindow::StoredLanguage(), feldra::QtLocalizer::kEnglish);
    QCOMPARE(panes->tabText(2), QStringLiteral("Log"));
    QVERIFY(Menu(window, "File"));
}

// What the window showed before a language switch is in the new language
// at once; each language is named in its own; file dialogs name the file
// types in the language chosen.
void tst_MainWindow::textsShownBeforeTheSwitchFollowIt()
{
    struct CancelsNcCode : host::ApplicationEvents {
        void BeforeCommandRun(int, int, bool& bOverride) override { bOverride = true; }
    } cancels;
    feldra::Host host;
    feldra::MainWindow window(host);
    QVERIFY(window.OpenDocument(kExamples + "L5-part.fdoc"));
    host.ApplicationFor("Test.Connect")->Advise(&cancels);
    window.GenerateNcCode();
    auto* nc = window.findChild<QPlainTextEdit*>("ncPane");
    QCOMPARE(nc->toPlainText(), QStringLiteral("NC code generation was cancelled."));

    const auto fileTypes = [&](const QString& menu, const QString& entry) {
        QStringList filters;
        QTimer::singleShot(0, [&] {
            if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
                filters = dialog->nameFilters();
                dialog->reject();
            }
        });
        Action(Menu(window, menu)->actions(), entry)->trigger();
        return filters;
    };
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QCOMPARE(fileTypes("File", "New from Template..."), QStringList{"Feldra templates (*.fdt)"});

    window.SetLanguage(feldra::QtLocalizer::kGerman);
    QCOMPARE(nc->toPlainText(), QStringLiteral("Die NC-Code-Erzeugung wurde abgebrochen."));
    QCOMPARE(Texts(Menu(window, "Ansicht")->findChild<QMenu*>()->actions()), (QStringList{"English", "Deutsch"}));
    QCOMPARE(fileTypes("Datei", "Neu aus Vorlage..."), QStringList{"Feldra-Vorlagen (*.fdt)"});
    QCOMPARE(fileTypes("Datei", "Öffnen..."), QStringList{"Feldra-Dokumente (*.fdoc)"});

    window.SetLanguage(feldra::QtLocalizer::kEnglish);
    QCOMPARE(nc->toPlainText(), QStringLiteral("NC code generation was cancelled."));
    QCOMPARE(Texts(Menu(window, "View")->findChild<QMenu*>()->actions()), (QStringList{"English", "Deutsch"}));
    host.ApplicationFor("Test.Connect")->Unadvise(&cancels);
}

// The NC pane shows the listing in the language of the window, and in the
// new language at once after a switch: the same listing, not a new one.
void tst_MainWindow::ncListingFollowsTheLanguage()
{
    feldra::Host host;
    feldra::MainWindow window(host);
    QVERIFY(window.OpenDocument(kExamples + "L5-part.fdoc"));
    window.GenerateNcCode();
    auto* nc = window.findChild<QPlainTextEdit*>("ncPane");
    const QString english = nc->toPlainText();
    QVERIFY2(english.startsWith("HEAD 1 OF 2\nPROGRAM O"), qPrintable(english.left(100)));
    host.ActiveDocument()->data.machineSetup.params[818] = 123.25; // after the listing was made

    window.SetLanguage(feldra::QtLocalizer::kGerman);
    const QString german = nc->toPlainText();
    QVERIFY2(german.startsWith("KANAL 1 VON 2\nPROGRAMM O"), qPrintable(german.left(100)));
    QVERIFY(german.contains("\nDATENBLATT\n") && german.contains("\nWERKZEUGE\n") && !german.contains("\nTOOLS\n"));
    QCOMPARE(german.count('\n'), english.count('\n'));
    QVERIFY(!german.contains("123.25"));

    window.SetLanguage(feldra::QtLocalizer::kEnglish);
    QCOMPARE(nc->toPlainText(), english);
}

// The log says what went wrong; the add-ins' calls of the host show only
// with the details switched on.
void tst_MainWindow::logKeepsHostCallsBehindDetails()
{
    feldra::Host host;
    feldra::MainWindow window(host);
    host.Log().RecordRequest("Application.NotifyCommandStart", {"1"});
    host.Log().RecordFailedCallback("AddInCommands.OnCommand", "Tool.XShift", "refused");
    window.RefreshLog();
    auto* log = window.findChild<QPlainTextEdit*>("logPane");
    QCOMPARE(log->toPlainText(), QStringLiteral("AddInCommands.OnCommand failed: Tool.XShift: refused"));
    window.findChild<QCheckBox*>("logDetails")->click();
    QVERIFY(log->toPlainText().endsWith("\nApplication.NotifyCommandStart(1)"));
}

// The add-in is connected again under the new language: its captions follow
// at once, and it stays whole (its commands still run and are enabled).
void tst_MainWindow::languageSwitchReconnectsTheAddIn()
{
    TempStores stores;
    feldra::Host host;
    feldra::MainWindow window(host);
    QVERIFY(host.AddIns().Load("Marelon.Connect", QStringLiteral(MARELON_MODULE)));
    QVERIFY(window.OpenDocument(kExamples + "L5-part.fdoc"));
    const auto lathe = [&window](const char* text) { return Action(window.CommandBarToolBar(23)->actions(), text); };
    QVERIFY(lathe("Tool Data") && lathe("Tool Data")->isEnabled());
    const int buttons = int(window.CommandBarToolBar(23)->actions().size());

    window.SetLanguage(feldra::QtLocalizer::kGerman);
    QVERIFY(!lathe("Tool Data"));
    QVERIFY(lathe("Werkzeugdaten") && lathe("Werkzeugdaten")->isEnabled());
    QCOMPARE(lathe("Werkzeugdaten")->toolTip(), QStringLiteral("Setzt Werkzeugversatz und Spindeldrehrichtung."));
    QVERIFY(Action(Menu(window, "Hilfe")->actions(), "Über Feldra"));
    QCOMPARE(host.AddIns().LoadedProgIds(), QStringList{"Marelon.Connect"});

    window.SetLanguage(feldra::QtLocalizer::kEnglish);
    QVERIFY(lathe("Tool Data") && lathe("Tool Data")->isEnabled());
    QCOMPARE(window.CommandBarToolBar(23)->actions().size(), buttons); // each button once
    QVERIFY2(host.Log().FailedCallbacks().isEmpty(), qPrintable(host.Log().FailedCallbacks().value(0).description));
    host.AddIns().UnloadAll();
}

// The title marks a document with changes (an add-in's writes count); every
// way of putting it away asks Save / Discard / Cancel through the host's
// message box, which the macro runner answers.
void tst_MainWindow::changesAreMarkedAndAskedFor_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("answer"); // empty: the document is not changed, nothing is asked
    QTest::addColumn<bool>("done");
    QTest::addColumn<bool>("saved");

    QTest::newRow("close unchanged") << "close" << "" << true << false;
    QTest::newRow("close, Cancel") << "close" << "Cancel" << false << false;
    QTest::newRow("close, Discard") << "close" << "Discard" << true << false;
    QTest::newRow("close, Save") << "close" << "Save" << true << true;
    QTest::newRow("open another, Cancel") << "open" << "Cancel" << false << false;
    QTest::newRow("open another, Save") << "open" << "Save" << true << true;
    QTest::newRow("new from template, Discard") << "new" << "Discard" << true << false;
    QTest::newRow("open template, Save") << "template" << "Save" << true << true;
    QTest::newRow("quit, Cancel") << "quit" << "Cancel" << false << false;
    QTest::newRow("quit, Save") << "quit" << "Save" << true << true;
}

void tst_MainWindow::changesAreMarkedAndAskedFor()
{
    QFETCH(QString, action);
    QFETCH(QString, answer);
    QFETCH(bool, done);
    QFETCH(bool, saved);
    QTemporaryDir dir;
    const QString part = CopyOfExample(dir);
    feldra::Host host;
    feldra::MainWindow window(host);
    window.show();
    QVERIFY(window.OpenDocument(part));
    QCOMPARE(window.windowTitle(), QStringLiteral("part.fdoc[*] - Feldra"));
    QVERIFY(!window.isWindowModified());
    const auto first = host.ActiveDocument();
    if (!answer.isEmpty()) {
        AddInsDocument(host)->MachineSetup()->setParam814(12.5);
        window.RefreshAll(); // as after the add-in's command
        QVERIFY(window.isWindowModified());
        Recorder(host).Answer(answer == "Save"      ? host::MsgResult::Yes
                              : answer == "Discard" ? host::MsgResult::No
                                                    : host::MsgResult::Cancel);
    }

    bool result = false;
    if (action == "close")
        result = window.CloseDocument();
    else if (action == "open")
        result = window.OpenDocument(kExamples + "inch-pin.fdoc");
    else if (action == "new")
        result = window.NewDocument(kExamples + "swiss-lathe.fdt");
    else if (action == "template")
        result = window.OpenTemplate(kExamples + "swiss-lathe.fdt");
    else
        result = window.close();

    QCOMPARE(result, done);
    const auto& messages = Recorder(host).Messages();
    QCOMPARE(messages.size(), answer.isEmpty() ? 0 : 1);
    if (!answer.isEmpty()) {
        QCOMPARE(messages.first().buttons, host::MsgButtons::YesNoCancel);
        QVERIFY(messages.first().prompt.contains("part.fdoc"));
    }
    QCOMPARE(feldra::LoadDocument(part).machineSetup.params.value(814) == 12.5, saved);
    if (!done) {
        QCOMPARE(host.ActiveDocument(), first);
        QVERIFY(window.isWindowModified());
    } else if (action != "quit") {
        QVERIFY(!host.Documents().contains(first)); // one document at a time
    }
}

// Edit > Undo names the command it takes back, brings the part back and
// clears the title's marker; Redo (Ctrl+Y) replays it; the History pane lists
// the steps.
void tst_MainWindow::editMenuUndoesAndRedoesTheLastCommand()
{
    ExamplePartWithTestAddIn example;
    QVERIFY(example.window.OpenDocument(example.part));
    feldra::Host& host = example.host;
    feldra::MainWindow& window = example.window;
    const QString name = host.ActiveDocument()->data.machineSetup.programName;
    QAction* undo = Action(Menu(window, "Edit")->actions(), "Undo");
    QAction* redo = Action(Menu(window, "Edit")->actions(), "Redo");
    QVERIFY(undo && redo && !undo->isEnabled() && !redo->isEnabled());

    host.Services().pickAnswers = {QStringLiteral("F-GROOVE")};
    Action(Menu(window, "Help")->actions(), "Pick")->trigger();
    const QString picked = host.ActiveDocument()->data.machineSetup.programName;
    QVERIFY(picked != name);
    QVERIFY(window.isWindowModified());
    QCOMPARE(undo->text(), QStringLiteral("Undo Pick"));
    QVERIFY(undo->isEnabled());
    QCOMPARE(window.findChild<QUndoView*>("historyPane")->model()->rowCount(), 2); // "As opened" and the step

    window.SendKeys(QStringLiteral("^z"));
    QCOMPARE(host.ActiveDocument()->data.machineSetup.programName, name);
    QVERIFY(!window.isWindowModified());
    QCOMPARE(undo->text(), QStringLiteral("Undo"));
    QVERIFY(!undo->isEnabled());
    QCOMPARE(redo->text(), QStringLiteral("Redo Pick"));

    window.SendKeys(QStringLiteral("^y"));
    QCOMPARE(host.ActiveDocument()->data.machineSetup.programName, picked);
    QVERIFY(window.isWindowModified());

    window.SetLanguage(feldra::QtLocalizer::kGerman);
    QCOMPARE(undo->text(), QStringLiteral("Rückgängig: Pick"));
    window.SetLanguage(feldra::QtLocalizer::kEnglish);
}

// While an add-in's modal dialog is open Undo is disabled and refused.
void tst_MainWindow::undoWaitsForAModalDialog()
{
    ExamplePartWithTestAddIn example;
    QVERIFY(example.window.OpenDocument(example.part));
    feldra::Host& host = example.host;
    feldra::MainWindow& window = example.window;
    host.Services().pickAnswers = {QStringLiteral("F-GROOVE")};
    Action(Menu(window, "Help")->actions(), "Pick")->trigger();

    bool enabledInside = true;
    QString refusal;
    QTimer::singleShot(0, &window, [&] {
        window.UpdateCommandStates();
        enabledInside = Action(Menu(window, "Edit")->actions(), "Undo Pick")->isEnabled();
        try {
            host.Undo();
        } catch (const host::HostError& error) {
            refusal = error.Description();
        }
        QApplication::activeModalWidget()->close();
    });
    Action(window.CommandBarToolBar(23)->actions(), "Ask")->trigger();
    QVERIFY(!enabledInside);
    QCOMPARE(refusal, QStringLiteral("A command is running."));
    window.UpdateCommandStates();
    QVERIFY(Action(Menu(window, "Edit")->actions(), "Undo Pick")->isEnabled());
}

// In German the prompt's buttons, like every button and dialog of Qt, come
// from Qt's own German catalogue.
void tst_MainWindow::savePromptHasQtsOwnButtonsInGerman()
{
    QTemporaryDir dir;
    const QString part = CopyOfExample(dir);
    feldra::Host host;
    feldra::MainWindow window(host);
    window.InstallInteractiveServices();
    window.show();
    QVERIFY(window.OpenDocument(part));
    AddInsDocument(host)->MachineSetup()->setParam814(12.5);

    for (const auto& [language, expected] :
         {std::pair{feldra::QtLocalizer::kGerman, QStringList{"Abbrechen", "Speichern", "Verwerfen"}},
          std::pair{feldra::QtLocalizer::kEnglish, QStringList{"Cancel", "Discard", "Save"}}}) {
        window.SetLanguage(language);
        QStringList shown;
        QTimer::singleShot(0, [&shown] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box)
                return;
            shown = ButtonTexts(*box);
            box->button(QMessageBox::Cancel)->click();
        });
        QVERIFY(!window.CloseDocument());
        QCOMPARE(shown, expected);
    }
    QCOMPARE(host.ActiveDocument()->fileName, part);
}

// A save that fails keeps the document open, modified and under its name,
// says why, and leaves no file half written.
void tst_MainWindow::failedSaveKeepsTheDocumentModified_data()
{
    QTest::addColumn<QString>("target"); // "" for the document's own file
    QTest::addColumn<bool>("fullDisk");
    QTest::addColumn<QString>("reason");

    QTest::newRow("a folder that is not writable") << "/proc/part.fdoc" << false << "cannot be written";
    QTest::newRow("a missing folder") << "missing/part.fdoc" << false << "cannot be written";
    QTest::newRow("a full disk") << "" << true << "cannot be written";
}

void tst_MainWindow::failedSaveKeepsTheDocumentModified()
{
    QFETCH(QString, target);
    QFETCH(bool, fullDisk);
    QFETCH(QString, reason);
    QTemporaryDir dir;
    const QString part = CopyOfExample(dir);
    const QByteArray before = Contents(part);
    feldra::Host host;
    feldra::MainWindow window(host);
    QVERIFY(window.OpenDocument(part));
    AddInsDocument(host)->MachineSetup()->setParam814(12.5);

    rlimit saved{};
    getrlimit(RLIMIT_FSIZE, &saved);
    if (fullDisk) {
        std::signal(SIGXFSZ, SIG_IGN); // the write fails instead of ending the test
        const rlimit small{4096, saved.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    const bool written = window.SaveDocument(target.isEmpty() ? part : QDir(dir.path()).absoluteFilePath(target));
    setrlimit(RLIMIT_FSIZE, &saved);

    QVERIFY(!written);
    QVERIFY(window.isWindowModified());
    QVERIFY(host.ActiveDocument()->modified);
    QCOMPARE(host.ActiveDocument()->fileName, part);
    QCOMPARE(Recorder(host).Last().icon, host::MsgIcon::Critical);
    QVERIFY2(Recorder(host).Last().prompt.contains(reason), qPrintable(Recorder(host).Last().prompt));
    QCOMPARE(Contents(part), before);
    QCOMPARE(QDir(dir.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList{"part.fdoc"});
}

// Machine setup values under the NC listing's captions, tools with what the
// add-in sets, synchronisations by type with the operations they tie, and
// one number per operation in the tree, the NC listing and the simulation.
void tst_MainWindow::documentViewTellsWhatTheAddInDid()
{
    feldra::Host host;
    feldra::MainWindow window(host);
    auto* simulation = window.Simulation()->Table();
    QCOMPARE(simulation->columnCount(), 5); // named before the first run
    QCOMPARE(simulation->horizontalHeaderItem(0)->text(), QStringLiteral("Operation"));
    QCOMPARE(simulation->horizontalHeaderItem(4)->text(), QStringLiteral("Back Spindle Axes"));
    QVERIFY(window.OpenDocument(kExamples + "L5-part.fdoc"));
    const feldra::DocumentData& data = host.ActiveDocument()->data;
    feldra::DocumentTree* tree = window.Tree();

    QTreeWidgetItem* receiver = tree->ItemAt("document/setup/813");
    QVERIFY(receiver);
    QCOMPARE(receiver->text(0), QStringLiteral("813 Work Receiver No.(##)"));
    QCOMPARE(receiver->text(1), numeric::NumberToText(data.machineSetup.params.value(813)));

    for (const auto& tool : data.tools) {
        QTreeWidgetItem* item = Child(tree->ItemAt("document/tools"), QStringLiteral("T%1 %2").arg(tool->number).arg(tool->toolId));
        QVERIFY(item);
        QVERIFY(item->text(1).contains(QStringLiteral("Z %1").arg(numeric::NumberToText(tool->zShift))));
        QVERIFY(item->text(1).contains(tool->spindleDirection == 1 ? "Reverse" : tool->spindleDirection == -1 ? "Forward" : "None"));
        QVERIFY(item->text(1).endsWith(QStringLiteral("Gear Ratio ") + numeric::NumberToText(tool->gearRatio)));
    }

    // "OP 3 "Groove"" in the listing is "3 Groove" in the tree and in the simulation.
    const QString listing = feldra::GenerateNcListing(data);
    const QList<feldra::SimulatedOperation> simulated = window.RunSimulation();
    QTreeWidgetItem* operations = tree->ItemAt("document/operations");
    QCOMPARE(operations->childCount(), data.operations.size());
    for (int i = 0; i < operations->childCount(); ++i) {
        const QString numbered = QStringLiteral("%1 %2").arg(i + 1).arg(data.operations[i]->name);
        QCOMPARE(operations->child(i)->text(0), numbered);
        QCOMPARE(simulation->item(i, 0)->text(), numbered);
        QVERIFY(listing.contains(QStringLiteral("OP %1 \"%2\"").arg(i + 1).arg(data.operations[i]->name)));
    }
    QVERIFY(!simulation->item(0, 4)->text().isEmpty());

    QTreeWidgetItem* syncs = tree->ItemAt("document/syncs");
    QCOMPARE(syncs->childCount(), data.syncs.size());
    for (int i = 0; i < syncs->childCount(); ++i) {
        // "#1 G821 OP 2 "Face" P3 E0, OP 10 "Back drill" P3 E1" lists the operations the tree names.
        const QString line = listing.section(QStringLiteral("\nSYNCS\n"), 1).split('\n').value(i);
        const QString type = syncs->child(i)->text(0) == "(no type)" ? "(NO TYPE)" : syncs->child(i)->text(0);
        QVERIFY2(line.contains(QStringLiteral(" %1 ").arg(type)), qPrintable(line));
        for (const QString& operation : syncs->child(i)->text(1).split(QStringLiteral(", "))) {
            const QString number = operation.section(' ', 0, 0);
            const QString name = operation.section(' ', 1);
            QVERIFY2(line.contains(QStringLiteral("OP %1 \"%2\"").arg(number, name)), qPrintable(line + " / " + operation));
        }
    }
}

// What the user expanded and chose stays so across commands and changes.
void tst_MainWindow::treeKeepsExpansionAndSelection()
{
    feldra::Host host;
    TestAddIn addIn(host);
    feldra::MainWindow window(host);
    QVERIFY(window.OpenDocument(kExamples + "L5-part.fdoc"));
    feldra::DocumentTree* tree = window.Tree();
    QVERIFY(tree->ItemAt("document")->isExpanded());
    QVERIFY(!tree->ItemAt("document/tools")->isExpanded());
    tree->ItemAt("document/tools")->setExpanded(true);
    QTreeWidgetItem* tool = tree->ItemAt("document/tools")->child(2);
    const QString path = feldra::DocumentTree::PathOf(tool);
    tool->setExpanded(true);
    tree->setCurrentItem(tool->child(1));

    Action(Menu(window, "Help")->actions(), "Toggle Ask")->trigger(); // a command: the window is refreshed
    AddInsDocument(host)->MachineSetup()->setParam814(3);
    window.RefreshAll();

    QVERIFY(tree->ItemAt("document/tools")->isExpanded());
    QVERIFY(tree->ItemAt(path)->isExpanded());
    QCOMPARE(tree->currentItem(), tree->ItemAt(path)->child(1));
    QVERIFY(!tree->ItemAt("document/operations")->isExpanded());
}

// "Main Stock" as the Data Page builds it: a regular polygon as a feature
// chain on the layer "Temp", turned a quarter about Y, made a stock; built
// again it replaces the first. The document view and the simulation pane show
// its kind, start, length and its cross-section as it was chosen; the document
// file keeps it.
void tst_MainWindow::mainStockBuiltThroughTheFacadeIsShown()
{
    QTemporaryDir dir;
    const QString part = CopyOfExample(dir);
    feldra::Host host;
    feldra::MainWindow window(host);
    QVERIFY(window.OpenDocument(part));
    auto application = host.ApplicationFor("Test.Connect");
    auto document = application->ActiveDocument();
    const auto buildPolygonStock = [&](int sides, double diameter, double baseAngle, double start, double length) {
        auto simulation = document->Simulation();
        if (feldra::MainStock(host.ActiveDocument()->data))
            simulation->DeleteStock("Main Stock");
        const auto segments =
            application->GeometryUtility()->RegularPolygon(document->MakePoint(0, 0, 0), 2, diameter, baseAngle, sides);
        auto chain = document->FeatureChains()->Add(segments.first());
        for (int k = 1; k < segments.size(); ++k)
            chain->AddSegment(segments[k]);
        auto layers = document->Layers();
        bool temp = false;
        for (int i = 1; i <= layers->Count(); ++i)
            temp = temp || host.ActiveDocument()->data.layers[i - 1]->name == "Temp";
        chain->setLayer(temp ? layers->Item("Temp") : layers->Add("Temp"));
        application->GeometryUtility()->RotateAboutY(chain, std::numbers::pi / 2);
        auto stock = simulation->AddStock("Main Stock", 1, chain, length, start);
        stock->setColour(simulation->DefaultStockColour());
        stock->setStyleCode(2);
        stock->setOptionFlag(false);
        stock->setSpindle(document->MachineSetup()->Spindles()->Item(1));
        stock->setPlacement({0, 0, 0, 0, 1, 0, 0, 0, 1, 1, 0, 0});
    };
    buildPolygonStock(6, 20, 0, 0, 40);
    buildPolygonStock(8, 30, std::numbers::pi / 8, 0.5, 38);
    window.RefreshAll();
    QVERIFY(window.isWindowModified());

    const auto checkShown = [&] {
        QTreeWidgetItem* stocks = window.Tree()->ItemAt("document/stocks");
        QTreeWidgetItem* stock = Child(stocks, "Main Stock");
        QVERIFY(stock);
        int mainStocks = 0;
        for (int i = 0; i < stocks->childCount(); ++i)
            mainStocks += stocks->child(i)->text(0) == "Main Stock" ? 1 : 0;
        QCOMPARE(mainStocks, 1);
        QCOMPARE(Child(stock, "Kind")->text(1), QStringLiteral("1 (swept profile)"));
        QCOMPARE(Child(stock, "Start")->text(1), QStringLiteral("0.5"));
        QCOMPARE(Child(stock, "Length")->text(1), QStringLiteral("38"));
        auto* drawing = qobject_cast<feldra::StockDrawing*>(window.Tree()->itemWidget(Child(stock, "Cross-section"), 1));
        QVERIFY(drawing);
        const QList<QPointF> outline = drawing->Outline();
        QCOMPARE(outline.size(), 9); // eight sides, closed
        for (int k = 0; k < 8; ++k) { // as drawn: a corner at 22.5 degrees, 15 from the centre
            const double angle = std::numbers::pi / 8 + k * std::numbers::pi / 4;
            QVERIFY(std::hypot(outline[k].x() - 15 * std::cos(angle), outline[k].y() - 15 * std::sin(angle)) < 1e-4);
        }
        auto* paneDrawing = window.Simulation()->findChild<feldra::StockDrawing*>();
        QCOMPARE(paneDrawing->Outline(), outline);
        QVERIFY(window.Simulation()->findChild<QLabel*>("lblStock")->text().contains("Main Stock"));
    };
    checkShown();

    QVERIFY(window.SaveDocument(part));
    QVERIFY(!window.isWindowModified());
    QVERIFY(window.CloseDocument());
    QVERIFY(window.OpenDocument(part));
    checkShown();
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
