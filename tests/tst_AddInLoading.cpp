// The built Marelon module, loaded by the host through its add-in registry.
#include "HostCaptions.h"
#include "addin/host/Application.h"
#include "TempStores.h"
#include "feldra/AddInLoader.h"
#include "feldra/AddInRegistry.h"
#include "feldra/Host.h"
#include "feldra/InstallLayout.h"
#include "feldra/MessageBoxRecorder.h"
#include "registry/FileRegistryHive.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace feldra;

namespace {

const QString kProgId = QStringLiteral("Marelon.Connect");

QWidget* VisibleWindow(const QString& objectName)
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == objectName && widget->isVisible())
            return widget;
    return nullptr;
}

} // namespace

class tst_AddInLoading : public QObject {
    Q_OBJECT

    TempStores stores_;
    registry::FileRegistryHive hive_{stores_.RegistryDir()};

    // The handle of the add-in's command whose button carries the caption.
    static int Handle(Host& host, const QString& caption)
    {
        for (const auto& bar : host.App().commandBars)
            for (const auto& control : bar->controls)
                if (control->caption == caption)
                    return control->commandHandle;
        return 0;
    }

private slots:
    void registration()
    {
        QVERIFY(RegisterAddIn(kProgId, QStringLiteral(MARELON_MODULE), hive_));
        const auto addIns = RegisteredAddIns(hive_);
        QCOMPARE(addIns.size(), 1);
        QCOMPARE(addIns.first().progId, kProgId);
        QCOMPARE(addIns.first().modulePath, QStringLiteral(MARELON_MODULE));

        // The add-in's own values under its key survive its unregistration.
        const QString key = kAddInsKey + QStringLiteral("\\") + kProgId;
        QVERIFY(hive_.SetValue(registry::kHKeyLocalMachine, key, "TovricVersion",
                               registry::DwordValue(registry::kRegDword, 1)));
        QVERIFY(UnregisterAddIn(kProgId, hive_));
        QVERIFY(RegisteredAddIns(hive_).isEmpty());
        QVERIFY(hive_.QueryValue(registry::kHKeyLocalMachine, key, "TovricVersion"));
        QVERIFY(!UnregisterAddIn(kProgId, hive_));
        hive_.DeleteValue(registry::kHKeyLocalMachine, key, "TovricVersion");
        hive_.DeleteKey(registry::kHKeyLocalMachine, key);
    }

    void modulesThatCannotConnectAreRecorded_data()
    {
        QTest::addColumn<QString>("progId");
        QTest::addColumn<QString>("module");
        QTest::newRow("missing module") << kProgId << "no-such-module.so";
        QTest::newRow("ProgID the module does not create") << "Marelon.Other" << MARELON_MODULE;
    }
    void modulesThatCannotConnectAreRecorded()
    {
        QFETCH(QString, progId);
        QFETCH(QString, module);
        Host host;
        AddInLoader& loader = host.AddIns();
        QVERIFY(!loader.Load(progId, module));
        QVERIFY(loader.LoadedProgIds().isEmpty());
        QCOMPARE(host.Log().FailedCallbacks().size(), 1);
        QCOMPARE(host.Log().FailedCallbacks().first().callback, QStringLiteral("IDTExtensibility2.OnConnection"));
    }

    void aFailedConnectionLeavesTheHostAsItWas()
    {
        Host host;
        host.Faults().Fail("AddInCommands.AddCommand");
        AddInLoader& loader = host.AddIns();
        QVERIFY(!loader.Load(kProgId, MARELON_MODULE));
        QCOMPARE(host.Log().FailedCallbacks().first().operation, QStringLiteral("AddInCommands.AddCommand"));
        host.Faults().HealAll();
        host.Quit(); // no add-in left listening
        host.OpenNewDocument(std::make_shared<DocumentState>());
        QVERIFY(host.ActiveDocument()->data.workPlanes.isEmpty());
    }

    // Each add-in finds its files (Marelon its holder libraries) beside its
    // own module, whichever module the host loaded first; its shutdown still
    // reaches a standing host when the host goes.
    void eachAddInsFolderIsItsModulesFolder()
    {
        auto host = std::make_unique<Host>();
        QVERIFY(host->AddIns().Load(QStringLiteral("Probe.Connect"), PROBE_MODULE));
        QVERIFY(host->AddIns().Load(kProgId, MARELON_MODULE));
        const auto folderOf = [](const char* module) { return QFileInfo(module).absolutePath() + QLatin1Char('/'); };
        QVERIFY(folderOf(PROBE_MODULE) != folderOf(MARELON_MODULE));
        QCOMPARE(host->ApplicationFor(kProgId)->AddInFolder(), folderOf(MARELON_MODULE));
        QCOMPARE(host->ApplicationFor(QStringLiteral("Probe.Connect"))->AddInFolder(), folderOf(PROBE_MODULE));
        host.reset();
    }

    void aSessionWithTheAddIn()
    {
        QVERIFY(RegisterAddIn(kProgId, QStringLiteral(MARELON_MODULE), hive_));
        Host host;
        host.App().temporaryFolder = stores_.Path() + QStringLiteral("/temp/");
        QDir().mkpath(host.App().temporaryFolder);
        const QStringList hostBar = Captions(host.App().CommandBar(23)->controls);
        const QStringList hostHelp = Captions(host.App().Menu(9)->entries);
        AddInLoader& loader = host.AddIns();

        for (int session = 1; session <= 2; ++session) {
            QCOMPARE(LoadRegisteredAddIns(host, hive_), 1);
            loader.StartupComplete();
            QCOMPARE(Captions(host.App().CommandBar(23)->controls),
                     (QStringList{"Turret Setup", "Simulate", "Generate NC Code", "|", "Data Page", "Tool Data",
                                  "G-Code List", "Auto Sync"}));
            const QStringList help{"|", "Marelon Add-In Help", "Marelon G-Code Help"};
            QCOMPARE(Captions(host.App().Menu(9)->entries), hostHelp + help);

            // A new lathe document opens the Data Page and gets the lathe's work planes.
            auto document = std::make_shared<DocumentState>();
            document->data.machineSetup.heads.append(std::make_shared<NCHeadData>());
            host.OpenNewDocument(document);
            QVERIFY(VisibleWindow("frmMarelonDataPage"));
            QCOMPARE(document->data.workPlanes.size(), 5);
            QVERIFY(!host.CommandEnabled(Handle(host, "Data Page")));

            host.InvokeCommand(Handle(host, "Masks"));
            QCOMPARE(host.Log().RequestsOf("Application.SendKeys").size(), session);
            // Tool Data opens modally; closed from inside its own event loop.
            QString shown;
            QTimer::singleShot(0, [&] {
                if (QWidget* modal = QApplication::activeModalWidget()) {
                    shown = modal->objectName();
                    modal->close();
                }
            });
            host.InvokeCommand(Handle(host, "Tool Data"));
            QCOMPARE(shown, QStringLiteral("frmToolData"));

            QVERIFY(loader.Unload(kProgId));
            QVERIFY(!VisibleWindow("frmMarelonDataPage"));
            QCOMPARE(Captions(host.App().CommandBar(23)->controls), hostBar);
            QCOMPARE(Captions(host.App().Menu(9)->entries), hostHelp);
            QVERIFY(host.App().commands.isEmpty());
        }

        // Quitting releases the add-in; its disconnection afterwards finds nothing to do.
        QCOMPARE(loader.LoadRegisteredAddIns(hive_), 1);
        host.Quit();
        QVERIFY(host.App().commands.isEmpty());
        QCOMPARE(Captions(host.App().CommandBar(23)->controls), hostBar);
        loader.UnloadAll();
        QVERIFY(loader.LoadedProgIds().isEmpty());
        QVERIFY(host.Log().FailedCallbacks().isEmpty());
        QVERIFY(UnregisterAddIn(kProgId, hive_));
    }

    // The add-ins registered for every user of the machine come after the
    // user's own; the user's registration of a ProgID wins; a relative module
    // path is relative to the host's executable.
    void machineWideRegistrations_data()
    {
        QTest::addColumn<QStringList>("user");    // "ProgID=path"
        QTest::addColumn<QStringList>("machine");
        QTest::addColumn<QStringList>("found");
        QTest::newRow("the machine's only, relative") << QStringList{} << QStringList{"Marelon.Connect=../lib/marelon/Marelon.so"}
                                                      << QStringList{"Marelon.Connect=/opt/feldra/lib/marelon/Marelon.so"};
        QTest::newRow("absolute stays") << QStringList{} << QStringList{"Marelon.Connect=/usr/lib/marelon/Marelon.so"}
                                        << QStringList{"Marelon.Connect=/usr/lib/marelon/Marelon.so"};
        QTest::newRow("the user's wins, any case") << QStringList{"marelon.connect=/home/me/build/Marelon.so"}
                                                   << QStringList{"Marelon.Connect=../lib/marelon/Marelon.so"}
                                                   << QStringList{"marelon.connect=/home/me/build/Marelon.so"};
        QTest::newRow("both, the user's first") << QStringList{"Probe.Connect=/home/me/Probe.so"}
                                                << QStringList{"Marelon.Connect=../lib/marelon/Marelon.so"}
                                                << QStringList{"Probe.Connect=/home/me/Probe.so",
                                                               "Marelon.Connect=/opt/feldra/lib/marelon/Marelon.so"};
    }
    void machineWideRegistrations()
    {
        QFETCH(QStringList, user);
        QFETCH(QStringList, machine);
        QFETCH(QStringList, found);
        QTemporaryDir folders;
        registry::FileRegistryHive userHive(folders.path() + QStringLiteral("/user"));
        registry::FileRegistryHive machineHive(folders.path() + QStringLiteral("/machine"));
        const auto fill = [](registry::FileRegistryHive& hive, const QStringList& entries) {
            for (const QString& entry : entries) {
                const QString key = kAddInsKey + QLatin1Char('\\') + entry.section(QLatin1Char('='), 0, 0);
                QVERIFY(hive.CreateKey(registry::kHKeyLocalMachine, key));
                QVERIFY(hive.SetValue(registry::kHKeyLocalMachine, key, kModulePathValue,
                                      {registry::kRegSz, registry::TextData(entry.section(QLatin1Char('='), 1))}));
            }
        };
        fill(userHive, user);
        fill(machineHive, machine);
        QStringList result;
        for (const RegisteredAddIn& addIn : RegisteredAddIns(userHive, machineHive, QStringLiteral("/opt/feldra/bin")))
            result << addIn.progId + QLatin1Char('=') + addIn.modulePath;
        QCOMPARE(result, found);
    }

    // The first start of an installed host: the add-in registered for every
    // user connects without a registration of the user's own.
    void machineWideAddInConnects()
    {
        QTemporaryDir folders;
        registry::FileRegistryHive userHive(folders.path() + QStringLiteral("/user"));
        registry::FileRegistryHive machineHive(folders.path() + QStringLiteral("/machine"));
        const QString bin = folders.path() + QStringLiteral("/bin");
        QVERIFY(QDir().mkpath(bin));
        QVERIFY(RegisterAddIn(kProgId, QStringLiteral(MARELON_MODULE), machineHive));
        Host host;
        QCOMPARE(host.AddIns().LoadRegisteredAddIns(userHive, machineHive, bin), 1);
        QVERIFY(host.AddIns().IsLoaded(kProgId));
        host.AddIns().UnloadAll();
    }

    // Installed, the host's files lie in share/feldra beside bin/; in a build
    // tree the executable's own folder holds them.
    void installFolder()
    {
        QTemporaryDir prefix;
        const QString bin = prefix.path() + QStringLiteral("/bin");
        QVERIFY(QDir().mkpath(bin));
        QCOMPARE(HostInstallFolder(bin), QDir::toNativeSeparators(bin + QLatin1Char('/')));
        QVERIFY(QDir().mkpath(prefix.path() + QStringLiteral("/share/feldra")));
        QCOMPARE(HostInstallFolder(bin), QDir::toNativeSeparators(prefix.path() + QStringLiteral("/share/feldra/")));
        QCOMPARE(MachineRegistryFolder(bin), prefix.path() + QStringLiteral("/share/feldra/registry"));
    }
};

QTEST_MAIN(tst_AddInLoading)
#include "tst_AddInLoading.moc"
