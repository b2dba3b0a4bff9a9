#include "addin/host/HostError.h"
#include "feldra/Host.h"
#include "feldra/app/AddIns.h"
#include "feldra/app/MainWindow.h"
#include "feldra/macro/MacroRunner.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTextStream>

// feldra [DOCUMENT]                      the application, optionally on a document
// feldra --register-addin PATH [--prog-id ID]   registers an add-in module
// feldra --macro FILE.js [DOCUMENT]      runs a macro headless
int main(int argc, char* argv[])
{
    for (int i = 1; i < argc; ++i)
        if (QByteArray(argv[i]) == "--macro")
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
    const QString document = parser.positionalArguments().value(0);
    QTextStream err(stderr);

    if (parser.isSet(registerAddIn)) {
        const QString module = parser.value(registerAddIn);
        const QString id = parser.isSet(progId) ? parser.value(progId) : feldra::AddIns::DefaultProgId(module);
        try {
            feldra::AddIns::Register(id, module);
        } catch (const host::HostError& error) {
            err << "feldra: " << error.Description() << Qt::endl;
            return 1;
        }
        QTextStream(stdout) << "Registered " << QDir::toNativeSeparators(module) << " as " << id << Qt::endl;
        return 0;
    }

    feldra::Host host;
    host.App().installFolder = QDir::toNativeSeparators(QApplication::applicationDirPath() + '/');
    feldra::MainWindow window(host);
    window.SetLanguage(feldra::MainWindow::StoredLanguage());
    feldra::AddIns::LoadRegistered(host);
    window.RefreshAll();

    if (parser.isSet(macro)) {
        feldra::MacroRunner runner(host, window);
        window.show();
        QString error;
        const int exitCode = runner.Run(parser.value(macro), document, error);
        host.Quit();
        if (exitCode != 0)
            err << "feldra: " << error << Qt::endl;
        return exitCode;
    }

    window.InstallInteractiveServices();
    if (!document.isEmpty())
        window.OpenDocument(document);
    window.show();
    return application.exec();
}
