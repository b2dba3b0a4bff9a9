// Any facade operation can be made to fail by name; it then fails at every
// call, and nothing else changes: the document and all other operations stay
// intact, and an event handler that fails is logged while the host goes on.
#include "FeldraFixture.h"

#include "addin/host/HostFacade.h"

#include <QTest>
#include <functional>

using fixture::LatheHost;

namespace
{

struct Probe {
    QString operation; // the operation the probe makes fail
    std::function<QVariant(LatheHost&)> act;
};

std::shared_ptr<host::Document> doc(LatheHost& h)
{
    return h.document();
}
std::shared_ptr<host::MachineSetup> setup(LatheHost& h)
{
    return doc(h)->MachineSetup();
}
std::shared_ptr<host::Tool> tool(LatheHost& h, int i)
{
    return doc(h)->Tools()->Item(i);
}
std::shared_ptr<host::Operation> op(LatheHost& h, int i)
{
    return doc(h)->Operations()->Item(i);
}
std::shared_ptr<host::MachineModel> model(LatheHost& h)
{
    return doc(h)->Simulation()->MachineModel();
}

QString names(LatheHost& h)
{
    QStringList list;
    for (const auto& operation : h.doc->data.operations)
        list << operation->name;
    return list.join(',');
}

// Reads, writes and calls across the facade; each act returns what it observed.
const QList<Probe>& Probes()
{
    static const QList<Probe> probes{
        // reads
        {"Application.ActiveDocument", [](LatheHost& h) { return doc(h)->MachineType(); }},
        {"Application.InstallFolder", [](LatheHost& h) { return h.app->InstallFolder(); }},
        {"Configuration.LanguageCode", [](LatheHost& h) { return h.app->Configuration()->LanguageCode(); }},
        {"Document.UnitSystem", [](LatheHost& h) { return doc(h)->UnitSystem(); }},
        {"Document.Tools", [](LatheHost& h) { return doc(h)->Tools()->Count(); }},
        {"Tools.Item", [](LatheHost& h) { return tool(h, 2)->ToolID(); }},
        {"Tool.XShift", [](LatheHost& h) { return tool(h, 1)->XShift(); }},
        {"LatheToolKind17.Width", [](LatheHost& h) { return tool(h, 1)->AsLatheToolKind17()->Width(); }},
        {"Document.IsToolUsed", [](LatheHost& h) { return doc(h)->IsToolUsed(tool(h, 3)); }},
        {"MachineSetup.Param893", [](LatheHost& h) { return setup(h)->Param893(); }},
        {"MachineSetup.MakerTag", [](LatheHost& h) { return setup(h)->MakerTag(); }},
        {"Turret.ReferenceZ", [](LatheHost& h) { return setup(h)->Turrets()->Item(2)->ReferenceZ(); }},
        {"AxisLimit.UpperLimit",
         [](LatheHost& h) { return setup(h)->Turrets()->Item(2)->AxisLimits()->Item(2)->UpperLimit(); }},
        {"Station.Number", [](LatheHost& h) { return setup(h)->Turrets()->Item(2)->Stations()->Item(23)->Number(); }},
        {"Spindle.Name", [](LatheHost& h) { return setup(h)->Spindles()->Item(1)->Name(); }},
        {"NCHeads.Count", [](LatheHost& h) { return setup(h)->Heads()->Count(); }},
        {"SetupEntry.Name", [](LatheHost& h) { return setup(h)->SetupEntries()->Item(3)->Name(); }},
        {"Operation.Name", [](LatheHost& h) { return op(h, 2)->Name(); }},
        {"Technology.TechnologyType", [](LatheHost& h) { return op(h, 3)->Technology()->TechnologyType(); }},
        {"TechnologyParameter.Value", [](LatheHost& h) { return op(h, 1)->Technology()->Parameter("498")->Value(); }},
        {"Technology154.ToolID", [](LatheHost& h) { return op(h, 3)->Technology()->AsTechnology154()->ToolID(); }},
        {"GeometryList.Points", [](LatheHost& h) { return op(h, 2)->GeometryList()->Points(2).first()->Z(); }},
        {"Feature.Element", [](LatheHost& h) { return op(h, 1)->Feature()->Element(2)->X(); }},
        {"CustomProperties.Item", [](LatheHost& h) { return op(h, 2)->CustomProperties()->Item("Comment")->Value(); }},
        {"Sync.Nodes", [](LatheHost& h) { return doc(h)->Syncs()->Item(1)->Nodes()[1].operation->Name(); }},
        {"Axis.Name", [](LatheHost& h) { return model(h)->AxisGroups()->Item(2)->Item(1)->Name(); }},
        {"Point.Y", [](LatheHost& h) { return model(h)->Components()->Item("SubSpindle")->Position()->Y(); }},
        {"CommandBar.ControlCount", [](LatheHost& h) { return h.app->CommandBars()->Item(2)->ControlCount(); }},
        {"MenuControl.HasCommand", [](LatheHost& h) { return h.app->MainMenus()->Item(9)->Item(1)->HasCommand(); }},
        {"HelpLocale.HelpLanguageNumber",
         [](LatheHost& h) { return h.app->CreateHelpLocale()->HelpLanguageNumber(1031); }},
        // writes
        {"MachineSetup.Param893 write",
         [](LatheHost& h) {
             setup(h)->setParam893(5);
             return setup(h)->Param893();
         }},
        {"MachineSetup.MachineSetupName write",
         [](LatheHost& h) {
             setup(h)->setMachineSetupName("Standard");
             return h.doc->data.machineSetup.machineSetupName;
         }},
        {"MachineSetup.FaceAmount write",
         [](LatheHost& h) {
             setup(h)->setFaceAmount(0.3);
             return h.doc->data.machineSetup.faceAmount;
         }},
        {"Tool.XShift write",
         [](LatheHost& h) {
             tool(h, 1)->setXShift(-2);
             return tool(h, 1)->XShift();
         }},
        {"Tool.Number write",
         [](LatheHost& h) {
             tool(h, 3)->setNumber(22);
             return tool(h, 3)->Number();
         }},
        {"Tool.GearRatio write",
         [](LatheHost& h) {
             tool(h, 3)->setGearRatio(3);
             return h.doc->data.tools[2]->gearRatio;
         }},
        {"NCHead.Comment write",
         [](LatheHost& h) {
             setup(h)->Heads()->Item(1)->setComment("Main");
             return setup(h)->Heads()->Item(1)->Comment();
         }},
        {"TechnologyParameter.Caption write",
         [](LatheHost& h) {
             op(h, 1)->Technology()->Parameter("797")->setCaption("M34");
             return op(h, 1)->Technology()->Parameter("797")->Caption();
         }},
        {"Technology207.ColletExtension write",
         [](LatheHost& h) {
             op(h, 2)->Technology()->AsTechnology207()->setColletExtension(1);
             return h.doc->data.operations[1]->technology->colletExtension;
         }},
        {"CustomProperty.Value write",
         [](LatheHost& h) {
             op(h, 2)->CustomProperties()->Item("Comment")->setValue("new");
             return h.doc->data.operations[1]->customProperties[0]->value;
         }},
        {"Axis.Enabled write",
         [](LatheHost& h) {
             model(h)->AxisGroups()->Item(2)->Item(2)->setEnabled(false);
             return h.doc->data.simulation.machineModel.axisGroups[1]->axes[1]->enabled;
         }},
        {"WorkPlane.U write",
         [](LatheHost& h) {
             doc(h)->WorkPlanes()->Item(2)->setU(0, 0, 1);
             return h.doc->data.workPlanes[1]->u.z;
         }},
        {"Document.ActiveWorkPlane write",
         [](LatheHost& h) {
             doc(h)->setActiveWorkPlane(doc(h)->WorkPlanes()->Item("ZXY"));
             return h.doc->data.activeWorkPlane;
         }},
        {"CommandBarControl.Caption write",
         [](LatheHost& h) {
             h.app->CommandBars()->Item(23)->Control(1)->setCaption("Setup");
             return h.host.App().CommandBar(23)->controls[0]->caption;
         }},
        // calls
        {"Syncs.Add",
         [](LatheHost& h) {
             doc(h)->Syncs()->Add(1, {});
             return doc(h)->Syncs()->Count();
         }},
        {"Syncs.Remove",
         [](LatheHost& h) {
             doc(h)->Syncs()->Remove(1);
             return doc(h)->Syncs()->Count();
         }},
        {"Operations.Rearrange",
         [](LatheHost& h) {
             doc(h)->Operations()->Rearrange({op(h, 3), op(h, 1), op(h, 2)}, 1, true);
             return names(h);
         }},
        {"CustomProperties.Add",
         [](LatheHost& h) {
             op(h, 1)->CustomProperties()->Add("Z2Position", "Z2", 5, 0.1234567);
             return op(h, 1)->CustomProperties()->Count();
         }},
        {"CustomProperties.Remove",
         [](LatheHost& h) {
             op(h, 2)->CustomProperties()->Remove("Comment");
             return op(h, 2)->CustomProperties()->Count();
         }},
        {"SetupEntries.Remove",
         [](LatheHost& h) {
             setup(h)->SetupEntries()->Remove(1);
             return setup(h)->SetupEntries()->Count();
         }},
        {"WorkPlanes.Remove",
         [](LatheHost& h) {
             doc(h)->WorkPlanes()->Remove("XYZ");
             return doc(h)->WorkPlanes()->Count();
         }},
        {"WorkPlanes.Add",
         [](LatheHost& h) {
             doc(h)->WorkPlanes()->Add("Turning");
             return doc(h)->WorkPlanes()->Count();
         }},
        {"Layers.Add",
         [](LatheHost& h) {
             doc(h)->Layers()->Add("Temp");
             return doc(h)->Layers()->Count();
         }},
        {"FeatureChains.Add",
         [](LatheHost& h) {
             doc(h)->FeatureChains()->Add({0, 0, 0, 1, 0, 0});
             return doc(h)->FeatureChains()->Count();
         }},
        {"Feature.AddSegment",
         [](LatheHost& h) {
             doc(h)->FeatureChains()->Item("F1")->AddSegment({12.5, 0, -3, 20, 0, 0});
             return doc(h)->FeatureChains()->Item("F1")->Count();
         }},
        {"Component.MoveTo",
         [](LatheHost& h) {
             auto component = model(h)->Components()->Item("SubSpindle");
             component->MoveTo(doc(h)->MakePoint(0, 0, 150));
             return h.doc->data.simulation.machineModel.components[0]->position.z;
         }},
        {"Simulation.AddStock",
         [](LatheHost& h) {
             doc(h)->Simulation()->AddStock("Main Stock", 1, doc(h)->FeatureChains()->Item("F1"), 40, 0);
             return int(h.doc->data.simulation.stocks.size());
         }},
        {"Simulation.Update",
         [](LatheHost& h) {
             doc(h)->Simulation()->Update(false);
             return true;
         }},
        {"Document.MakePoint", [](LatheHost& h) { return doc(h)->MakePoint(1, 2, 3)->Z(); }},
        {"Document.PickObject", [](LatheHost& h) { return bool(doc(h)->PickObject("Select", 6)); }},
        {"Tools.Add",
         [](LatheHost& h) {
             doc(h)->Tools()->Add(16);
             return doc(h)->Tools()->Count();
         }},
        {"Application.SendKeys",
         [](LatheHost& h) {
             h.app->SendKeys("^m");
             return int(h.host.Log().Requests().size());
         }},
        {"AddInCommands.AddCommand", [](LatheHost& h) { return h.app->AddInCommands()->AddCommand(1, 4, "Marelon"); }},
        {"CommandBar.AddSeparator",
         [](LatheHost& h) {
             h.app->CommandBars()->Item(23)->AddSeparator();
             return h.app->CommandBars()->Item(23)->ControlCount();
         }},
        {"MenuControls.Add",
         [](LatheHost& h) {
             h.app->MainMenus()->Item(9)->Add(0);
             return h.app->MainMenus()->Item(9)->Count();
         }},
        {"MenuControls.Remove",
         [](LatheHost& h) {
             h.app->MainMenus()->Item(9)->Remove(2);
             return h.app->MainMenus()->Item(9)->Count();
         }},
        {"GeometryUtility.RegularPolygon",
         [](LatheHost& h) {
             return h.app->GeometryUtility()->RegularPolygon(doc(h)->MakePoint(0, 0, 0), 2, 20, 0, 6).size();
         }},
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

QString FailingOperation(const std::function<void()>& action)
{
    try {
        action();
    } catch (const host::HostError& error) {
        return error.Operation();
    }
    return QString();
}

class FailingHandler : public host::ApplicationEvents
{
  public:
    explicit FailingHandler(std::shared_ptr<host::Application> app) : app_(std::move(app)) {}
    int calls = 0;
    void AfterNewDocumentOpen() override
    {
        ++calls;
        app_->ActiveDocument()->MachineSetup()->setParam893(1);
        app_->ActiveDocument()->MachineSetup()->setMakerTag("TOUCHED");
    }

  private:
    std::shared_ptr<host::Application> app_;
};

class CountingHandler : public host::ApplicationEvents
{
  public:
    int calls = 0;
    void AfterNewDocumentOpen() override { ++calls; }
};

} // namespace

class tst_FaultInjection : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void failingOperationFailsAloneAndLeavesNoTrace_data();
    void failingOperationFailsAloneAndLeavesNoTrace();
    void failingHandlerIsLoggedAndTheHostGoesOn();

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
    QCOMPARE(FailingOperation([&] { probe.act(h); }), probe.operation);
    QCOMPARE(FailingOperation([&] { probe.act(h); }), probe.operation); // every later call fails too

    // Every other probe that does not call the failing operation sees what it
    // sees on a host where nothing fails.
    for (int other = 0; other < Probes().size(); ++other) {
        if (baselines_[other].called.contains(probe.operation))
            continue;
        LatheHost o;
        o.host.Faults().Fail(probe.operation);
        QVariant result;
        const QString failed = FailingOperation([&] { result = Probes()[other].act(o); });
        QVERIFY2(failed.isEmpty(), qPrintable(Probes()[other].operation + " failed at " + failed));
        QCOMPARE(result, baselines_[other].result);
    }

    // The failed calls changed nothing: healed, the probe sees what a clean host shows.
    h.host.Faults().Heal(probe.operation);
    QCOMPARE(probe.act(h), clean.result);
}

void tst_FaultInjection::failingHandlerIsLoggedAndTheHostGoesOn()
{
    LatheHost h;
    FailingHandler failing(h.app);
    CountingHandler counting;
    h.app->Advise(&failing);
    h.app->Advise(&counting);
    h.host.Faults().Fail("MachineSetup.Param893 write");

    h.host.OpenNewDocument(h.doc);

    QCOMPARE(counting.calls, 1);
    QCOMPARE(h.host.Log().FailedCallbacks().size(), 1);
    QCOMPARE(h.host.Log().FailedCallbacks().first().callback, QStringLiteral("Application.AfterNewDocumentOpen"));
    QCOMPARE(h.host.Log().FailedCallbacks().first().operation, QStringLiteral("MachineSetup.Param893 write"));
    QCOMPARE(h.doc->data.machineSetup.makerTag, QStringLiteral("MARELON")); // the handler ended at the failure
    QCOMPARE(h.doc->data.machineSetup.params.value(893), 2.0);

    h.host.Faults().HealAll();
    h.host.OpenNewDocument(h.doc);

    QCOMPARE(failing.calls, 2);
    QCOMPARE(counting.calls, 2);
    QCOMPARE(h.host.Log().FailedCallbacks().size(), 1);
    QCOMPARE(h.doc->data.machineSetup.makerTag, QStringLiteral("TOUCHED"));
}

QTEST_MAIN(tst_FaultInjection)
#include "tst_FaultInjection.moc"
