#include "ConnectFixture.h"

#include "addin/modGlobals.h"
#include "datapage/frmMarelonDataPage.h"

#include <QImage>
#include <QTest>

using namespace marelon;

namespace {

const QStringList kHostLatheBar{"Turret Setup", "Simulate", "Generate NC Code"};
const QStringList kHostEditBar{"Cut", "Copy", "Paste"};
const QStringList kHostHelpMenu{"Help Topics", "|", "About Feldra"};
const QStringList kAddInHelpEntries{"|", "Marelon Add-In Help", "Marelon G-Code Help"};
const QStringList kLatheBar = kHostLatheBar + QStringList{"|", "Data Page", "Tool Data", "G-Code List", "Auto Sync"};

} // namespace

class tst_Connect : public QObject {
    Q_OBJECT

private slots:
    void eachButtonIsTranslatedAndHasItsPictures_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<int>("bar");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("toolTip");

        QTest::newRow("Tool Data") << 1 << 23 << 6 << "Tool Data" << "Sets tool shift and spindle rotation.";
        QTest::newRow("Data Page") << 2 << 23 << 5 << "Data Page"
                                   << "Generates data page settings for Marelon Swiss-style lathes.";
        QTest::newRow("Masks") << 3 << 2 << 4 << "Masks" << "Mask Graphic Objects";
        QTest::newRow("G-Code List") << 4 << 23 << 7 << "G-Code List" << "Display Help about G codes";
        QTest::newRow("Auto Sync") << 6 << 23 << 8 << "Auto Sync"
                                   << "Orders the operations and rebuilds the main and back spindle synchronisations.";
    }
    void eachButtonIsTranslatedAndHasItsPictures()
    {
        QFETCH(int, id);
        QFETCH(int, bar);
        QFETCH(int, position);
        QFETCH(QString, caption);
        QFETCH(QString, toolTip);

        ConnectedHost fixture(feldra::QtLocalizer::kGerman);
        fixture.Connect();
        feldra::QtLocalizer german;
        german.setLanguageCode(feldra::QtLocalizer::kGerman);
        german.Initialise();

        const auto control = fixture.host.App().CommandBar(bar)->controls.at(position - 1);
        QCOMPARE(control->commandHandle, fixture.addIn.CommandHandle(id));
        QVERIFY(german.Translate(caption) != caption);
        QCOMPARE(control->caption, german.Translate(caption));
        QCOMPARE(control->toolTip, german.Translate(toolTip));
        QVERIFY(control->visible);
        const QString folder = fixture.host.App().temporaryFolder;
        QCOMPARE(control->smallBitmap, folder + QStringLiteral("TB%1_16.bmp").arg(id));
        QCOMPARE(control->largeBitmap, folder + QStringLiteral("TB%1_32.bmp").arg(id));
        QCOMPARE(QImage(control->smallBitmap).size(), QSize(16, 16));
        QCOMPARE(QImage(control->largeBitmap).size(), QSize(32, 32));
    }

    void helpMenuHoldsTheEntriesOnce_data()
    {
        QTest::addColumn<QString>("before");
        QTest::newRow("first connection") << "";
        QTest::newRow("disconnect and reconnect") << "reconnect";
        QTest::newRow("entries left by a session that ended abruptly") << "leftovers";
    }
    void helpMenuHoldsTheEntriesOnce()
    {
        QFETCH(QString, before);
        ConnectedHost fixture;
        if (before == QLatin1String("reconnect")) {
            fixture.Connect();
            fixture.Disconnect();
        } else if (before == QLatin1String("leftovers")) {
            auto& entries = fixture.host.App().Menu(9)->entries;
            for (const QString& caption : {QString(), QStringLiteral("Marelon Add-In Help"),
                                           QStringLiteral("Marelon G-Code Help")}) {
                entries.append(std::make_shared<feldra::ControlData>());
                entries.last()->type = caption.isEmpty() ? feldra::ControlData::Separator : feldra::ControlData::Button;
                entries.last()->caption = caption;
            }
        }
        fixture.Connect();
        QCOMPARE(fixture.HelpMenu(), kHostHelpMenu + kAddInHelpEntries);
        const auto& entries = fixture.host.App().Menu(9)->entries;
        QCOMPARE(entries.at(entries.size() - 2)->commandHandle, fixture.addIn.CommandHandle(5));
        QCOMPARE(entries.last()->commandHandle, fixture.addIn.CommandHandle(4));
        QCOMPARE(fixture.BarCaptions(2), kHostEditBar + QStringList{"Masks"});
    }

    // Host calls that fail during the connection: before the commands exist the
    // connection fails; afterwards the add-in connects with what it could place.
    void aFailingHostCallAtConnection_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<int>("missingBar");  // a command bar the host does not have
        QTest::addColumn<int>("missingMenu"); // a main-menu popup the host does not have
        QTest::addColumn<bool>("fails");
        QTest::addColumn<QStringList>("lathe");
        QTest::addColumn<QStringList>("edit");
        QTest::addColumn<QStringList>("help");

        const QStringList edit = kHostEditBar + QStringList{"Masks"};
        const QStringList help = kHostHelpMenu + kAddInHelpEntries;
        for (const char* fault : {"Application.Advise", "Application.InstallFolder", "Application.CreateLocalizer",
                                  "Configuration.LanguageCode", "Application.MessageBoxes",
                                  "Application.AddInCommands", "AddInCommands.Advise", "AddInCommands.Cookie",
                                  "AddInCommands.AddCommand"})
            QTest::newRow(fault) << fault << 0 << 0 << true << kHostLatheBar << kHostEditBar << kHostHelpMenu;

        QTest::newRow("no command bar 2") << "" << 2 << 0 << false << kLatheBar << QStringList{} << help;
        QTest::newRow("no command bar 23") << "" << 23 << 0 << false << QStringList{} << edit << help;
        QTest::newRow("no help menu") << "" << 0 << 9 << false << kLatheBar << edit << QStringList{};
        QTest::newRow("no temporary folder") << "Application.TemporaryFolder" << 0 << 0 << false << kLatheBar
                                             << edit << help;
        QTest::newRow("pictures refused") << "CommandBarControl.SetBitmaps" << 0 << 0 << false << kLatheBar
                                          << edit << help;
        // The refused separator costs nothing else: Tool Data still at the end, Data Page before it.
        QTest::newRow("no separator on bars")
            << "CommandBar.AddSeparator" << 0 << 0 << false
            << (kHostLatheBar + QStringList{"Data Page", "Tool Data", "G-Code List", "Auto Sync"}) << edit << help;
        QTest::newRow("no help entries") << "MenuControls.Add" << 0 << 0 << false << kLatheBar << edit
                                         << kHostHelpMenu;
    }
    void aFailingHostCallAtConnection()
    {
        QFETCH(QString, fault);
        QFETCH(int, missingBar);
        QFETCH(int, missingMenu);
        QFETCH(bool, fails);
        QFETCH(QStringList, lathe);
        QFETCH(QStringList, edit);
        QFETCH(QStringList, help);

        ConnectedHost fixture;
        auto& app = fixture.host.App();
        const auto hide = [](auto& list, int number) {
            list.removeIf([number](const auto& item) { return item->number == number; });
        };
        hide(app.commandBars, missingBar);
        hide(app.mainMenus, missingMenu);
        fixture.host.Faults().Fail(fault);

        bool failed = false;
        try {
            fixture.Connect();
        } catch (const host::HostError& error) {
            failed = true;
            QCOMPARE(error.Operation(), fault);
        }
        QCOMPARE(failed, fails);
        if (app.CommandBar(23))
            QCOMPARE(fixture.BarCaptions(23), lathe);
        if (app.CommandBar(2))
            QCOMPARE(fixture.BarCaptions(2), edit);
        if (app.Menu(9))
            QCOMPARE(fixture.HelpMenu(), help);
        if (!fails) {
            QVERIFY(fixture.addIn.IsConnected());
            QVERIFY(DataPageInstance());
            QVERIFY(!DataPageInstance()->isVisible());
            QVERIFY(Flags().dataPageAvailable);
        }
    }

    // Disconnection, the start of the host's shutdown and its quitting each
    // release the add-in; whichever comes later finds nothing left to release.
    void theAddInIsReleasedOnce_data()
    {
        QTest::addColumn<QStringList>("sequence");
        QTest::newRow("Shutdown twice") << QStringList{"Shutdown", "Shutdown"};
        QTest::newRow("quit, then disconnection") << QStringList{"Quit", "OnDisconnection"};
        QTest::newRow("begin shutdown, quit, disconnection")
            << QStringList{"OnBeginShutdown", "BeforeQuit", "OnDisconnection"};
    }
    void theAddInIsReleasedOnce()
    {
        QFETCH(QStringList, sequence);
        ConnectedHost fixture;
        fixture.Connect();
        auto& faults = fixture.host.Faults();
        faults.ResetCounts();
        QVariantList custom;
        int callsAfterFirst = -1;
        for (const QString& step : sequence) {
            if (step == QLatin1String("Shutdown"))
                fixture.addIn.Shutdown();
            else if (step == QLatin1String("Quit"))
                fixture.host.Quit();
            else if (step == QLatin1String("BeforeQuit"))
                fixture.addIn.Application_BeforeQuit();
            else if (step == QLatin1String("OnBeginShutdown"))
                fixture.addIn.OnBeginShutdown(custom);
            else
                fixture.addIn.OnDisconnection(host::ext_dm_HostShutdown, custom);
            if (callsAfterFirst < 0)
                callsAfterFirst = faults.TotalCalls();
        }
        QVERIFY(fixture.addIn.IsReleased());
        QCOMPARE(faults.CallCount("AddInCommands.RemoveCommand"), 6); // one per command
        QCOMPARE(faults.TotalCalls(), callsAfterFirst);
        QVERIFY(fixture.host.App().commands.isEmpty());
        QCOMPARE(fixture.BarCaptions(23), kHostLatheBar);
        QCOMPARE(fixture.HelpMenu(), kHostHelpMenu);
        QVERIFY(!DataPageInstance());
        QVERIFY(fixture.host.Log().FailedCallbacks().isEmpty());
    }

    void aFailingReleaseStillReleasesTheRest()
    {
        ConnectedHost fixture;
        fixture.Connect();
        fixture.host.Faults().Fail("AddInCommands.RemoveCommand");
        fixture.addIn.Shutdown();
        QVERIFY(fixture.addIn.IsReleased());
        QCOMPARE(fixture.HelpMenu(), kHostHelpMenu);
        QCOMPARE(fixture.host.Log().RequestsOf("Application.RefreshCommandBars").size(), 1);
        // The host no longer reaches the add-in.
        fixture.host.Faults().HealAll();
        fixture.host.OpenNewDocument(fixture.Document());
        QVERIFY(!DataPageInstance());
    }
};

QTEST_MAIN(tst_Connect)
#include "tst_Connect.moc"
