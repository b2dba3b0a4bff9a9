#include "feldra/AddInLoader.h"
#include "feldra/AddInRegistry.h"
#include "feldra/Host.h"
#include "feldra/InstallLayout.h"
#include "feldra/app/MainWindow.h"
#include "feldra/macro/MacroRunner.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>
#include <memory>

namespace {

// Registers an add-in module; its ProgID is "<module name>.Connect" unless given.
int RegisterModule(const QString& modulePath, QString progId)
{
    if (progId.isEmpty())
        progId = QFileInfo(modulePath).baseName() + QStringLiteral(".Connect");
    if (!QFileInfo::exists(modulePath) || !feldra::RegisterAddIn(progId, QFileInfo(modulePath).absoluteFilePath())) {
        QTextStream(stderr) << "feldra: cannot register " << modulePath << " as " << progId << Qt::endl;
        return 1;
    }
    QTextStream(stdout) << "Registered " << QFileInfo(modulePath).absoluteFilePath() << " as " << progId << Qt::endl;
    return 0;
}

} // namespace

// feldra [DOCUMENT]                              the application, optionally on a document
// feldra --register-addin PATH [--prog-id ID]    registers an add-in module
// feldra --macro FILE.js [DOCUMENT]              runs a macro headless
int main(int argc, char* argv[])
{
    // Macros and registering need no display.
    for (int i = 1; i < argc; ++i)
        if (QByteArray(argv[i]) == "--macro" || QByteArray(argv[i]) == "--register-addin")
            qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Feldra"));
    QApplication::setApplicationName(QStringLiteral("feldra"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Feldra: CAM for Swiss-type lathes."));
    parser.addHelpOption();
    const QCommandLineOption registerAddIn("register-addin", "Registers the add-in module at PATH.", "PATH");
    const QCommandLineOption progId("prog-id", "The ProgID to register the add-in under.", "ID");
    const QCommandLineOption macro("macro", "Runs the macro FILE headless.", "FILE");
    parser.addOptions({registerAddIn, progId, macro});
    parser.addPositionalArgument("DOCUMENT", "A document to open (*.fdoc).", "[DOCUMENT]");
    parser.process(application);
    if (parser.isSet(registerAddIn))
        return RegisterModule(parser.value(registerAddIn), parser.value(progId));
    const QString document = parser.positionalArguments().value(0);

    feldra::Host host;
    host.App().installFolder = feldra::HostInstallFolder(QApplication::applicationDirPath());
    feldra::MainWindow window(host);
    window.SetLanguage(feldra::MainWindow::StoredLanguage());
    std::unique_ptr<feldra::MacroRunner> runner;
    if (parser.isSet(macro))
        runner = std::make_unique<feldra::MacroRunner>(host, window);
    else
        window.InstallInteractiveServices();
    feldra::LoadRegisteredAddIns(host);
    host.AddIns().StartupComplete();
    window.RefreshAll();

    int exitCode = 0;
    if (runner) {
        window.show();
        QString error;
        exitCode = runner->Run(parser.value(macro), document, error);
        if (exitCode != 0)
            QTextStream(stderr) << "feldra: " << error << Qt::endl;
        host.Quit();
    } else {
        if (!document.isEmpty())
            window.OpenDocument(document);
        window.show();
        exitCode = application.exec(); // closing the window raises BeforeQuit
    }
    // The add-ins go while the window that owns their dialogs still stands.
    host.AddIns().BeginShutdown();
    host.AddIns().UnloadAll();
    return exitCode;
}
