#include "ConnectFixture.h"

#include "addin/frmWarning.h"
#include "addin/modGlobals.h"
#include "addin/settings/SettingsStore.h"
#include "addin/ui/HelpAccess.h"
#include "addin/ui/ModelessForm.h"
#include "datapage/frmMarelonDataPage.h"
#include "feldra/DocumentFile.h"
#include "addin/host/Document.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/Tool.h"
#include "addin/host/Tools.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

using namespace marelon;

namespace {

feldra::Point3 Cross(const feldra::Point3& a, const feldra::Point3& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// The example part, as the host opens it.
std::shared_ptr<feldra::DocumentState> ExamplePart(double stockLength = 0)
{
    auto document = std::make_shared<feldra::DocumentState>();
    document->fileName = QStringLiteral(MARELON_SOURCE_DIR "/examples/L5-part.fdoc");
    document->data = feldra::LoadDocument(document->fileName);
    if (stockLength != 0)
        document->data.machineSetup.stockLength = stockLength;
    return document;
}

using PartAct = std::function<void(ConnectedHost&)>;

// A command of the host that changes the part's stock length or a tool's shift.
void StockLengthCommand(ConnectedHost& h)
{
    const feldra::Host::Step step(h.host, QStringLiteral("Test"));
    h.host.DocumentObject(h.host.ActiveDocument())->MachineSetup()->setStockLength(99);
}
void ToolCommand(ConnectedHost& h)
{
    const feldra::Host::Step step(h.host, QStringLiteral("Test"));
    h.host.DocumentObject(h.host.ActiveDocument())->Tools()->Item(1)->setXShift(-4);
}

} // namespace

Q_DECLARE_METATYPE(PartAct)

class tst_ConnectEvents : public QObject {
    Q_OBJECT

private slots:
    void commandEnabling_data()
    {
        QTest::addColumn<int>("machineType"); // 0: no document open
        QTest::addColumn<bool>("dataPageAvailable");
        QTest::addColumn<bool>("ownCookie");
        QTest::addColumn<int>("id");
        QTest::addColumn<bool>("proposed");
        QTest::addColumn<bool>("enabled");

        QTest::newRow("no document: tool data") << 0 << true << true << 1 << true << false;
        QTest::newRow("no document: add-in help") << 0 << true << true << 5 << true << false;
        QTest::newRow("lathe: tool data") << 1 << true << true << 1 << false << true;
        QTest::newRow("mill: tool data") << 2 << true << true << 1 << true << false;
        QTest::newRow("lathe: data page closed") << 1 << true << true << 2 << false << true;
        QTest::newRow("lathe: data page open") << 1 << false << true << 2 << true << false;
        QTest::newRow("mill: data page") << 2 << true << true << 2 << true << false;
        QTest::newRow("mill: g-code help") << 2 << true << true << 4 << true << false;
        QTest::newRow("lathe: auto sync") << 1 << true << true << 6 << false << true;
        QTest::newRow("mill: masks as proposed") << 2 << true << true << 3 << true << true;
        QTest::newRow("another add-in's cookie") << 0 << true << false << 1 << true << true;
    }
    void commandEnabling()
    {
        QFETCH(int, machineType);
        QFETCH(bool, dataPageAvailable);
        QFETCH(bool, ownCookie);
        QFETCH(int, id);
        QFETCH(bool, proposed);
        QFETCH(bool, enabled);

        ConnectedHost fixture;
        fixture.Connect();
        if (machineType)
            fixture.host.Activate(fixture.Document(machineType));
        Flags().dataPageAvailable = dataPageAvailable;
        bool result = proposed;
        bool checked = false;
        fixture.addIn.AddIn_OnCommandUI(fixture.addIn.Cookie() + (ownCookie ? 0 : 1), id, result, checked);
        QCOMPARE(result, enabled);
        QVERIFY(!checked);
    }

    void commandsDoTheirWork_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("dialog");   // the modal dialog shown; empty: none
        QTest::addColumn<int>("notified");     // NotifyCommandStart calls
        QTest::addColumn<QString>("request");  // the host request made; empty: none
        QTest::addColumn<QStringList>("arguments");

        QTest::newRow("Tool Data") << 1 << "frmToolData" << 1 << "" << QStringList{};
        QTest::newRow("masks") << 3 << "" << 0 << "Application.SendKeys" << QStringList{"^m"};
        QTest::newRow("g-code help") << 4 << "" << 0 << "Application.ShowHelpTopic"
                                     << QStringList{"Help/1033/G-Code Help.chm", ""};
        QTest::newRow("add-in help") << 5 << "" << 0 << "Application.ShowHelpTopic"
                                     << QStringList{"Help/1033/Marelon Help.chm", "Index.htm"};
        QTest::newRow("Auto Sync") << 6 << "frmAutoSync" << 0 << "" << QStringList{};
    }
    void commandsDoTheirWork()
    {
        QFETCH(int, id);
        QFETCH(QString, dialog);
        QFETCH(int, notified);
        QFETCH(QString, request);
        QFETCH(QStringList, arguments);

        ConnectedHost fixture;
        fixture.AddHelpFile(marelon::kGCodeHelpFile);
        fixture.AddHelpFile(marelon::kAddInHelpFile);
        fixture.Connect();
        fixture.host.Activate(fixture.Document());

        const QString shown = AnswerModal([&] { QVERIFY(fixture.host.InvokeCommand(fixture.addIn.CommandHandle(id))); },
                                          [](QWidget& modal) { modal.close(); });
        QCOMPARE(shown, dialog);
        QCOMPARE(fixture.host.Log().RequestsOf("Application.NotifyCommandStart").size(), notified);
        if (!request.isEmpty()) {
            const auto requests = fixture.host.Log().RequestsOf(request);
            QCOMPARE(requests.size(), 1);
            if (id != 3)
                arguments[0].prepend(fixture.host.App().installFolder);
            QCOMPARE(requests.first().arguments, arguments);
        }
        QVERIFY(fixture.host.Log().FailedCallbacks().isEmpty());
    }

    void aCommandOfAnotherCookieDoesNothing()
    {
        ConnectedHost fixture;
        fixture.Connect();
        fixture.host.Activate(fixture.Document());
        fixture.addIn.AddIn_OnCommand(fixture.addIn.Cookie() + 1, 3);
        fixture.addIn.AddIn_OnCommand(fixture.addIn.Cookie() + 1, 2);
        QVERIFY(fixture.host.Log().Requests().isEmpty());
        QVERIFY(!DataPageInstance()->isVisible());
    }

    // The Data Page command is disabled while the Data Page is open and
    // enabled again whichever way it closes; the dialog stays loaded.
    void theDataPageCommandFollowsTheDialog_data()
    {
        QTest::addColumn<QString>("exit");
        QTest::newRow("Cancel") << "Cancel";
        QTest::newRow("close box") << "close box";
        QTest::newRow("Escape") << "Escape";
        QTest::newRow("Escape, caught by the dialog host") << "Escape active";
    }
    void theDataPageCommandFollowsTheDialog()
    {
        QFETCH(QString, exit);
        ConnectedHost fixture;
        fixture.Connect();
        fixture.host.Activate(fixture.Document(1, {}, 3));
        const int command = fixture.addIn.CommandHandle(2);
        QVERIFY(fixture.host.CommandEnabled(command));

        fixture.host.InvokeCommand(command);
        QPointer<frmMarelonDataPage> page = DataPageInstance();
        QVERIFY(page->isVisible());
        QVERIFY(IsFormRegistered(page));
        QVERIFY(!fixture.host.CommandEnabled(command));
        auto* heads = page->findChild<QComboBox*>("cmbHeadComment");
        QCOMPARE(heads->count(), 3);
        QCOMPARE(heads->itemText(2), QStringLiteral("Head-3"));
        page->findChild<QTabWidget*>("MyTabs")->setCurrentIndex(2);

        if (exit == QLatin1String("close box"))
            page->close();
        else if (exit.startsWith(QLatin1String("Escape"))) {
            if (exit.endsWith(QLatin1String("active")))
                QApplication::setActiveWindow(page);
            QTest::keyClick(page->focusWidget() ? page->focusWidget() : page.data(), Qt::Key_Escape);
        }
        else
            QTest::mouseClick(page->findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
        QVERIFY(page);
        QVERIFY(!page->isVisible());
        QVERIFY(!IsFormRegistered(page));
        QVERIFY(fixture.host.CommandEnabled(command));

        fixture.host.InvokeCommand(command); // the same dialog, prepared afresh
        QCOMPARE(DataPageInstance().data(), page.data());
        QVERIFY(page->isVisible());
        QCOMPARE(page->findChild<QTabWidget*>("MyTabs")->currentIndex(), 0);
    }

    // An open Data Page follows the part: after an undo or redo, or when
    // another part is opened, it shows that part's values on the tab it
    // showed, and says so when they differ from what it showed; a part that
    // is no lathe part closes it.
    void anOpenDataPageFollowsThePart_data()
    {
        QTest::addColumn<PartAct>("before");    // before the Data Page opens
        QTest::addColumn<QString>("typed");     // into the stock length, then
        QTest::addColumn<PartAct>("whileOpen"); // while it is open
        QTest::addColumn<QString>("shown");     // the stock length shown at the end; empty: closed
        QTest::addColumn<int>("messages");

        const PartAct undo = [](ConnectedHost& h) { h.host.Undo(); };
        const PartAct redo = [](ConnectedHost& h) { h.host.Redo(); };
        const PartAct stockThenUndo = [](ConnectedHost& h) {
            StockLengthCommand(h);
            h.host.Undo();
        };
        QTest::newRow("undo of a change to the stock") << PartAct(StockLengthCommand) << "" << undo << "50" << 1;
        QTest::newRow("undo of a change to a tool") << PartAct(ToolCommand) << "" << undo << "50" << 0;
        QTest::newRow("undo after typing") << PartAct(ToolCommand) << "55" << undo << "50" << 1;
        QTest::newRow("redo of a change to the stock") << stockThenUndo << "" << redo << "99" << 1;
        QTest::newRow("another lathe part opened") << PartAct([](ConnectedHost&) {}) << "" << PartAct([](ConnectedHost& h) {
            h.host.OpenDocument(ExamplePart(77));
        }) << "77" << 1;
        QTest::newRow("a new lathe part") << PartAct([](ConnectedHost&) {}) << "" << PartAct([](ConnectedHost& h) {
            h.host.OpenNewDocument(h.Document(1, {"XYZ", "YZX", "ZXY"}));
        }) << "0" << 1;
        QTest::newRow("a mill part opened") << PartAct([](ConnectedHost&) {}) << "" << PartAct([](ConnectedHost& h) {
            h.host.OpenDocument(h.Document(2));
        }) << "" << 0;
    }
    void anOpenDataPageFollowsThePart()
    {
        QFETCH(PartAct, before);
        QFETCH(QString, typed);
        QFETCH(PartAct, whileOpen);
        QFETCH(QString, shown);
        QFETCH(int, messages);
        ConnectedHost h;
        h.Connect();
        h.host.OpenDocument(ExamplePart(50));
        const int command = h.addIn.CommandHandle(2);
        before(h);
        h.host.InvokeCommand(command);
        QPointer<frmMarelonDataPage> page = DataPageInstance();
        page->findChild<QTabWidget*>("MyTabs")->setCurrentIndex(1);
        if (!typed.isEmpty())
            page->findChild<QLineEdit*>("StockLength")->setText(typed);
        auto& recorder = static_cast<feldra::MessageBoxRecorder&>(*h.host.Services().messageBox);
        const qsizetype messagesBefore = recorder.Messages().size();

        whileOpen(h);
        QVERIFY(h.host.Log().FailedCallbacks().isEmpty());
        QCOMPARE(recorder.Messages().size() - messagesBefore, messages);
        if (messages > 0)
            QVERIFY(recorder.Last().prompt.startsWith("The part has changed: the Data Page shows its values again."));
        QCOMPARE(page->isVisible(), !shown.isEmpty());
        QCOMPARE(Flags().dataPageAvailable, shown.isEmpty());
        if (!shown.isEmpty()) {
            QCOMPARE(page->findChild<QLineEdit*>("StockLength")->text(), shown);
            QCOMPARE(page->findChild<QTabWidget*>("MyTabs")->currentIndex(), 1);
        }
        if (page->isVisible())
            page->cmdCancel_Click();
    }

    void documentEvents_data()
    {
        QTest::addColumn<QString>("event");
        QTest::addColumn<int>("machineType");
        QTest::addColumn<bool>("dataPage");
        QTest::addColumn<bool>("workPlanes");
        QTest::addColumn<bool>("newDocument");

        QTest::newRow("new lathe document") << "new" << 1 << true << true << true;
        QTest::newRow("new mill document") << "new" << 2 << false << false << true;
        QTest::newRow("lathe template") << "template" << 1 << true << false << true;
        QTest::newRow("mill template") << "template" << 2 << false << false << true;
        QTest::newRow("existing lathe document") << "open" << 1 << false << false << false;
    }
    void documentEvents()
    {
        QFETCH(QString, event);
        QFETCH(int, machineType);
        QFETCH(bool, dataPage);
        QFETCH(bool, workPlanes);
        QFETCH(bool, newDocument);

        ConnectedHost fixture;
        fixture.Connect();
        Flags().newDocument = !newDocument;
        const auto document = fixture.Document(machineType, {"XYZ", "YZX", "ZXY"});
        if (event == QLatin1String("new"))
            fixture.host.OpenNewDocument(document);
        else if (event == QLatin1String("template"))
            fixture.host.OpenTemplate(document);
        else
            fixture.host.OpenDocument(document);

        QVERIFY(fixture.host.Log().FailedCallbacks().isEmpty());
        QCOMPARE(DataPageInstance()->isVisible(), dataPage);
        QCOMPARE(Flags().dataPageAvailable, !dataPage);
        QCOMPARE(document->data.workPlanes.size(), workPlanes ? 5 : 3);
        QCOMPARE(Flags().newDocument, newDocument);
        QVERIFY(document->simulationEvents.IsAdvised(&fixture.addIn));
        QVERIFY(document->technologyUtilityEvents.IsAdvised(&fixture.addIn));
    }

    // The add-in listens to the active document only: saving another document
    // leaves the new-document flag alone.
    void theAddInFollowsTheActiveDocument()
    {
        ConnectedHost fixture;
        fixture.Connect();
        const auto first = fixture.Document(2);
        const auto second = fixture.Document(2);
        fixture.host.OpenNewDocument(first);
        fixture.host.OpenNewDocument(second);
        QVERIFY(!first->documentEvents.IsAdvised(&fixture.addIn));
        QVERIFY(!first->simulationEvents.IsAdvised(&fixture.addIn));
        fixture.host.DocumentSaved(*first);
        QVERIFY(Flags().newDocument);
        fixture.host.DocumentSaved(*second);
        QVERIFY(!Flags().newDocument);
    }

    void theNcCodeWarning_data()
    {
        QTest::addColumn<QString>("dontShow"); // the stored setting; empty: none stored
        QTest::addColumn<int>("command");
        QTest::addColumn<QString>("answer");   // the warning's button
        QTest::addColumn<bool>("warned");
        QTest::addColumn<bool>("cancelled");

        QTest::newRow("no setting, answered No") << "" << 3320 << "cmdNo" << true << true;
        QTest::newRow("no setting, answered Yes") << "" << 3320 << "cmdYes" << true << false;
        QTest::newRow("1 stored: no warning") << "1" << 3320 << "" << false << false;
        QTest::newRow("another command") << "0" << 3321 << "" << false << false;
    }
    void theNcCodeWarning()
    {
        QFETCH(QString, dontShow);
        QFETCH(int, command);
        QFETCH(QString, answer);
        QFETCH(bool, warned);
        QFETCH(bool, cancelled);

        ConnectedHost fixture;
        fixture.Connect();
        if (!dontShow.isEmpty())
            SaveSetting(kAppName, kNcCodeDialogSection, kDontShowKey, dontShow);
        Flags().ncWarningCancel = !cancelled;

        bool overridden = false;
        const bool shown = AnswerModal([&] { overridden = fixture.host.BeforeCommandRun(command); },
                                       [&](QWidget& warning) {
                                           QTest::mouseClick(warning.findChild<QPushButton*>(answer), Qt::LeftButton);
                                       }) == QLatin1String("frmWarning");
        QCOMPARE(shown, warned);
        QCOMPARE(overridden, cancelled);
        QVERIFY(fixture.host.Log().FailedCallbacks().isEmpty());
    }

    void workPlanes_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<int>("machineType");
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QStringList>("after");
        QTest::addColumn<QString>("active");

        const QStringList lathe{"Turning", "Cross Gang", "Back Face", "Cross Turret", "Front Face"};
        QTest::newRow("standard planes replaced") << 1033 << 1 << QStringList{"XYZ", "YZX", "ZXY"} << lathe
                                                  << "Turning";
        QTest::newRow("a user's plane stays") << 1033 << 1 << QStringList{"XYZ", "Mine", "ZXY"}
                                              << QStringList{"Mine"} + lathe << "Turning";
        QTest::newRow("German names")
            << 1031 << 1 << QStringList{"XYZ", "YZX", "ZXY"}
            << QStringList{"Drehen", "Kamm quer", "Stirnseite hinten", "Revolver quer", "Stirnseite vorn"}
            << "Drehen";
    }
    void workPlanes()
    {
        QFETCH(int, language);
        QFETCH(int, machineType);
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        QFETCH(QString, active);

        ConnectedHost fixture(language);
        fixture.Connect();
        const auto document = fixture.Document(machineType, before);
        fixture.host.OpenNewDocument(document);

        QStringList names;
        for (const auto& plane : document->data.workPlanes) {
            names.append(plane->name);
            QCOMPARE(plane->w, Cross(plane->u, plane->v));
            QCOMPARE(plane->origin, feldra::Point3{});
            QCOMPARE(plane->flag, 0);
        }
        QCOMPARE(names, after);
        QCOMPARE(document->data.activeWorkPlane, active);
    }
};

QTEST_MAIN(tst_ConnectEvents)
#include "tst_ConnectEvents.moc"
