#include "TestAddIn.h"
#include "feldra/app/MainWindow.h"
#include "feldra/macro/MacroRunner.h"

#include <QTemporaryDir>
#include <QtTest>

// Each behaviour of the macro runner is a small macro file in tests/macros; a
// macro asserts by throwing. Run on the example part with the test add-in.
class tst_MacroRunner : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void run_data();
    void run();
};

namespace {

const QString kMacros = QStringLiteral(MARELON_SOURCE_DIR "/tests/macros/");
const QString kExample = QStringLiteral(MARELON_SOURCE_DIR "/examples/L5-part.fdoc");

} // namespace

void tst_MacroRunner::run_data()
{
    QTest::addColumn<QString>("macro");
    QTest::addColumn<QString>("document");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("error"); // a part of the reported error

    QTest::newRow("document values") << "values.js" << kExample << 0 << "";
    QTest::newRow("save and open again") << "save.js" << kExample << 0 << "";
    QTest::newRow("modal dialog, controls, message box") << "dialog.js" << kExample << 0 << "";
    QTest::newRow("new document from a template") << "template.js" << kExample << 0 << "";
    QTest::newRow("scripted picks") << "pick.js" << kExample << 0 << "";
    QTest::newRow("NC code and simulation") << "nc-simulation.js" << kExample << 0 << "";
    QTest::newRow("the save prompt answered") << "save-prompt.js" << kExample << 0 << "";
    QTest::newRow("answer No leaves the dialog open")
        << "answer-no.js" << kExample << 1 << "The handler of dialog frmAsk left the modal dialog open.";
    QTest::newRow("unknown control")
        << "unknown-control.js" << kExample << 1 << "frmAsk has no control named \"cmdNope\"";
    QTest::newRow("modal dialog without a handler") << "no-handler.js" << kExample << 1 << "no onDialog(\"frmAsk\"";
    QTest::newRow("disabled command") << "disabled.js" << kExample << 1 << "The command \"Never\" is disabled.";
    QTest::newRow("script error names the line") << "script-error.js" << kExample << 1 << "script-error.js:3:";
    // also the facade path's own error for an unknown member (tst_FacadePath has the others)
    QTest::newRow("unknown facade member") << "unknown-member.js" << kExample << 1 << "has no member Param8144";
    QTest::newRow("missing document") << "ok.js" << "no-such.fdoc" << 1 << "Cannot open the document";
    QTest::newRow("missing macro") << "no-such.js" << "" << 1 << "Cannot read the macro";
    QTest::newRow("no document is fine") << "ok.js" << "" << 0 << "";
}

void tst_MacroRunner::run()
{
    QFETCH(QString, macro);
    QFETCH(QString, document);
    QFETCH(int, exitCode);
    QFETCH(QString, error);

    QTemporaryDir folder;
    QVERIFY(QDir::setCurrent(folder.path()));
    feldra::Host host;
    TestAddIn addIn(host);
    feldra::MainWindow window(host);
    feldra::MacroRunner runner(host, window);
    QString reported;
    QVERIFY2(runner.Run(kMacros + macro, document, reported) == exitCode, qPrintable(reported));
    if (error.isEmpty())
        QVERIFY2(reported.isEmpty(), qPrintable(reported));
    else
        QVERIFY2(reported.contains(error), qPrintable(reported));
}

QTEST_MAIN(tst_MacroRunner)
#include "tst_MacroRunner.moc"
