#include "addin/host/Axis.h"
#include "addin/host/AxisGroup.h"
#include "addin/host/AxisGroups.h"
#include "addin/host/Document.h"
#include "addin/host/MachineModel.h"
#include "addin/host/Operation.h"
#include "addin/host/Simulation.h"
#include "feldra/Host.h"
#include "feldra/SimulationRunner.h"

#include <QtTest>

// A simulation sink that logs the events it sees and, like the add-in,
// switches Z2 on for operations whose name starts with "Back" and moves it.
class RecordingSink : public host::SimulationEvents {
public:
    explicit RecordingSink(std::shared_ptr<host::Document> document) : document_(std::move(document)) {}

    QStringList events;

    void OnBegin() override { events << "Begin"; }
    void OnOperationStart(std::shared_ptr<host::Operation> operation) override
    {
        events << "Start " + operation->Name();
    }
    void OnSimulateOperation(std::shared_ptr<host::Operation> operation) override
    {
        events << "Simulate " + operation->Name();
        const bool back = operation->Name().startsWith("Back");
        auto z2 = document_->Simulation()->MachineModel()->AxisGroups()->Item(1)->Item(1);
        z2->setEnabled(back);
        z2->setPosition(back ? 120 : 0);
    }

private:
    std::shared_ptr<host::Document> document_;
};

class tst_SimulationRunner : public QObject {
    Q_OBJECT
private slots:
    void eventsInOrderAndAxesAfterEachOperation_data();
    void eventsInOrderAndAxesAfterEachOperation();
    void absentAxisIsReported();
};

namespace {

std::shared_ptr<feldra::DocumentState> Document(const QStringList& operations, const QStringList& axes)
{
    auto document = std::make_shared<feldra::DocumentState>();
    for (const QString& name : operations) {
        auto operation = std::make_shared<feldra::OperationData>();
        operation->name = name;
        document->data.operations << operation;
    }
    auto group = std::make_shared<feldra::AxisGroupData>();
    for (const QString& name : axes) {
        auto axis = std::make_shared<feldra::AxisData>();
        axis->name = name;
        group->axes << axis;
    }
    document->data.simulation.machineModel.axisGroups << group;
    return document;
}

} // namespace

void tst_SimulationRunner::eventsInOrderAndAxesAfterEachOperation_data()
{
    QTest::addColumn<QStringList>("operations");
    QTest::addColumn<QStringList>("events");
    QTest::addColumn<QList<bool>>("z2Enabled");

    QTest::newRow("no operations") << QStringList{} << QStringList{"Begin"} << QList<bool>{};
    QTest::newRow("main, back, main")
        << QStringList{"Face", "Back Drill", "Cut-Off"}
        << QStringList{"Begin", "Start Face", "Simulate Face", "Start Back Drill", "Simulate Back Drill",
                       "Start Cut-Off", "Simulate Cut-Off"}
        << QList<bool>{false, true, false};
}

void tst_SimulationRunner::eventsInOrderAndAxesAfterEachOperation()
{
    QFETCH(QStringList, operations);
    QFETCH(QStringList, events);
    QFETCH(QList<bool>, z2Enabled);

    feldra::Host host;
    auto document = Document(operations, {"Z2", "Z3"});
    host.OpenDocument(document);
    RecordingSink sink(host.DocumentObject(document));
    document->simulationEvents.Advise(&sink);

    const auto result = feldra::SimulationRunner(host).Run(document);
    QCOMPARE(sink.events, events);
    QCOMPARE(result.size(), operations.size());
    for (int i = 0; i < result.size(); ++i) {
        QCOMPARE(result[i].position, i + 1);
        QCOMPARE(result[i].name, operations[i]);
        QVERIFY(result[i].z2.present && result[i].z3.present);
        QCOMPARE(result[i].z2.enabled, z2Enabled[i]);
        QCOMPARE(result[i].z2.position, z2Enabled[i] ? 120.0 : 0.0);
    }
}

void tst_SimulationRunner::absentAxisIsReported()
{
    feldra::Host host;
    auto document = Document({"Face"}, {"Z2"});
    host.OpenDocument(document);
    const auto result = feldra::SimulationRunner(host).Run(document);
    QVERIFY(result[0].z2.present);
    QVERIFY(!result[0].z3.present);
}

QTEST_MAIN(tst_SimulationRunner)
#include "tst_SimulationRunner.moc"
