// Any facade operation can be made to fail by name; it then fails at every
// call, and nothing else changes: the document and all other operations stay
// intact. (A handler that fails is logged while the host goes on: tst_FeldraModel.)
#include "FeldraFixture.h"

#include <QTest>
#include <functional>

using fixture::failingOperation;
using fixture::LatheHost;

namespace
{

struct Probe {
    QString operation; // the operation the probe makes fail
    std::function<QVariant(LatheHost&)> act;
};

// A representative set of reads, writes and calls across the facade: objects
// of the application, the document, its setup, tools, operations and
// simulation. Each act returns what it observed.
const QList<Probe>& Probes()
{
    static const QList<Probe> probes{
        // reads
        {"Application.ActiveDocument", [](LatheHost& h) { return h.document()->MachineType(); }},
        {"Tools.Item", [](LatheHost& h) { return h.tool(2)->ToolID(); }},
        {"LatheToolKind17.Width", [](LatheHost& h) { return h.tool(1)->AsLatheToolKind17()->Width(); }},
        {"MachineSetup.Param893", [](LatheHost& h) { return h.setup()->Param893(); }},
        {"TechnologyParameter.Value", [](LatheHost& h) { return h.op(1)->Technology()->Parameter("498")->Value(); }},
        {"CommandBar.ControlCount", [](LatheHost& h) { return h.app->CommandBars()->Item(2)->ControlCount(); }},
        // writes
        {"MachineSetup.Param893 write",
         [](LatheHost& h) {
             h.setup()->setParam893(5);
             return h.setup()->Param893();
         }},
        {"TechnologyParameter.Caption write",
         [](LatheHost& h) {
             h.op(1)->Technology()->Parameter("797")->setCaption("M34");
             return h.op(1)->Technology()->Parameter("797")->Caption();
         }},
        {"CustomProperty.Value write",
         [](LatheHost& h) {
             h.op(2)->CustomProperties()->Item("Comment")->setValue("new");
             return h.doc->data.operations[1]->customProperties[0]->value;
         }},
        {"Document.ActiveWorkPlane write",
         [](LatheHost& h) {
             h.document()->setActiveWorkPlane(h.document()->WorkPlanes()->Item("ZXY"));
             return h.doc->data.activeWorkPlane;
         }},
        // calls
        {"Syncs.Add",
         [](LatheHost& h) {
             h.document()->Syncs()->Add(1, {});
             return h.document()->Syncs()->Count();
         }},
        {"Operations.Rearrange",
         [](LatheHost& h) {
             h.document()->Operations()->Rearrange({h.op(3), h.op(1), h.op(2)}, 1, true);
             return h.operationNames();
         }},
        {"Simulation.AddStock",
         [](LatheHost& h) {
             h.addStock();
             return int(h.doc->data.simulation.stocks.size());
         }},
        {"AddInCommands.AddCommand", [](LatheHost& h) { return h.app->AddInCommands()->AddCommand(1, 4, "Marelon"); }},
        {"Application.Advise",
         [](LatheHost& h) {
             host::ApplicationEvents sink;
             h.app->Advise(&sink);
             h.app->Unadvise(&sink);
             return true;
         }},
    };
    return probes;
}

// What a probe observes on a host where nothing fails, and which operations it calls.
struct Baseline {
    QVariant result;
    QStringList called;
};

Baseline RunClean(const Probe& probe)
{
    LatheHost h;
    h.host.Faults().ResetCounts();
    const QVariant result = probe.act(h);
    return {result, h.host.Faults().CalledOperations()};
}

} // namespace

class tst_FaultInjection : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void failingOperationFailsAloneAndLeavesNoTrace_data();
    void failingOperationFailsAloneAndLeavesNoTrace();

  private:
    QList<Baseline> baselines_;
};

void tst_FaultInjection::initTestCase()
{
    for (const Probe& probe : Probes())
        baselines_.append(RunClean(probe));
}

void tst_FaultInjection::failingOperationFailsAloneAndLeavesNoTrace_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < Probes().size(); ++i)
        QTest::newRow(Probes()[i].operation.toUtf8()) << i;
}

void tst_FaultInjection::failingOperationFailsAloneAndLeavesNoTrace()
{
    QFETCH(int, index);
    const Probe& probe = Probes()[index];
    const Baseline& clean = baselines_[index];
    QVERIFY2(clean.called.contains(probe.operation), "the probe calls the operation it names");

    LatheHost h;
    h.host.Faults().Fail(probe.operation);
    QCOMPARE(failingOperation([&] { probe.act(h); }), probe.operation);
    QCOMPARE(failingOperation([&] { probe.act(h); }), probe.operation); // every later call fails too

    // Every other probe that does not call the failing operation sees what it
    // sees on a host where nothing fails.
    for (int other = 0; other < Probes().size(); ++other) {
        if (baselines_[other].called.contains(probe.operation))
            continue;
        LatheHost o;
        o.host.Faults().Fail(probe.operation);
        QVariant result;
        const QString failed = failingOperation([&] { result = Probes()[other].act(o); });
        QVERIFY2(failed.isEmpty(), qPrintable(Probes()[other].operation + " failed at " + failed));
        QCOMPARE(result, baselines_[other].result);
    }

    // The failed calls changed nothing: healed, the probe sees what a clean host shows.
    h.host.Faults().Heal(probe.operation);
    QCOMPARE(probe.act(h), clean.result);
}

QTEST_MAIN(tst_FaultInjection)
#include "tst_FaultInjection.moc"
