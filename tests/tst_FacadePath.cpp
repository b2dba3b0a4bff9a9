#include "addin/host/HostError.h"
#include "feldra/Host.h"
#include "feldra/macro/FacadePath.h"

#include <QtTest>

// Document values read by the facade's names, and the errors a wrong path gives.
class tst_FacadePath : public QObject {
    Q_OBJECT
private slots:
    void read_data();
    void read();
};

void tst_FacadePath::read_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QVariant>("value"); // invalid: an error is expected
    QTest::addColumn<QString>("error");

    QTest::newRow("numbered parameter") << "MachineSetup.Param814" << QVariant(16.0) << "";
    QTest::newRow("collection count") << "Tools.Count" << QVariant(2) << "";
    QTest::newRow("item by position") << "Tools.Item(2).XShift" << QVariant(-1.5) << "";
    QTest::newRow("blanks and a text argument")
        << " Operations.Item( 1 ).Technology.Parameter(\"797\").Value " << QVariant(QStringLiteral("T02")) << "";
    QTest::newRow("member of a value") << "Tools.Count.Value" << QVariant() << "Tools.Count is a value";
    QTest::newRow("item without position") << "Tools.Item.XShift" << QVariant() << "takes 1 argument";
    QTest::newRow("no such item") << "Tools.Item(3).XShift" << QVariant() << "";
    QTest::newRow("not a path") << "Tools..Count" << QVariant() << "Cannot read the facade path";
    QTest::newRow("unclosed argument") << "Tools.Item(1.XShift" << QVariant() << "Cannot read the facade path";
}

void tst_FacadePath::read()
{
    QFETCH(QString, path);
    QFETCH(QVariant, value);
    QFETCH(QString, error);

    feldra::Host host;
    auto document = std::make_shared<feldra::DocumentState>();
    document->data.machineSetup.params.insert(814, 16);
    for (double shift : {0.5, -1.5}) {
        auto tool = std::make_shared<feldra::ToolData>();
        tool->xShift = shift;
        document->data.tools << tool;
    }
    auto operation = std::make_shared<feldra::OperationData>();
    operation->technology->parameters.insert("797", {QStringLiteral("T02"), {}, {}});
    document->data.operations << operation;
    host.OpenDocument(document);

    try {
        const feldra::FacadeResult result =
            feldra::ResolveFacadePath(host.DocumentObject(document), feldra::ParseFacadePath(path));
        QVERIFY2(value.isValid(), "no error");
        QCOMPARE(result.kind, feldra::FacadeResult::Value);
        QCOMPARE(result.value, value);
    } catch (const host::HostError& failure) {
        QVERIFY2(!value.isValid(), qPrintable(failure.Description()));
        QVERIFY2(failure.Description().contains(error), qPrintable(failure.Description()));
    }
}

QTEST_MAIN(tst_FacadePath)
#include "tst_FacadePath.moc"
