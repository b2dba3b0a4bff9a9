// The Feldra host's object model as an add-in sees it through the facade.
#include "FeldraFixture.h"

#include "addin/host/HostFacade.h"

#include <QTest>
#include <cmath>
#include <functional>
#include <numbers>
#include <set>

using fixture::LatheHost;
using Read = std::function<QVariant(LatheHost&)>;
using ItemAt = std::function<QVariant(LatheHost&, int)>;
using Write = std::function<void(LatheHost&, const QVariant&)>;
using Act = std::function<void(LatheHost&)>;
Q_DECLARE_METATYPE(Read)
Q_DECLARE_METATYPE(ItemAt)
Q_DECLARE_METATYPE(Write)
Q_DECLARE_METATYPE(Act)

namespace
{

std::shared_ptr<host::Tool> tool(LatheHost& h, int i)
{
    return h.document()->Tools()->Item(i);
}
std::shared_ptr<host::Operation> op(LatheHost& h, int i)
{
    return h.document()->Operations()->Item(i);
}
std::shared_ptr<host::MachineSetup> setup(LatheHost& h)
{
    return h.document()->MachineSetup();
}

// The operation that failed, or an empty text when the action succeeded.
QString failingOperation(const std::function<void()>& action)
{
    try {
        action();
    } catch (const host::HostError& error) {
        return error.Operation();
    }
    return QString();
}

QStringList operationNames(LatheHost& h)
{
    QStringList names;
    for (const auto& operation : h.doc->data.operations)
        names << operation->name;
    return names;
}

// Records every event it receives; throws from each when told to.
class Sink : public host::ApplicationEvents,
             public host::AddInCommandsEvents,
             public host::DocumentEvents,
             public host::SimulationEvents,
             public host::TechnologyUtilityEvents
{
  public:
    explicit Sink(bool throws = false) : throws_(throws) {}
    QStringList calls;

    void AfterDocumentOpen(const QString& FileName) override { record("AfterDocumentOpen " + FileName); }
    void AfterNewDocumentOpen() override { record("AfterNewDocumentOpen"); }
    void AfterTemplateOpen(const QString& FileName) override { record("AfterTemplateOpen " + FileName); }
    void BeforeCommandRun(int nCmdId, int, bool& bOverride) override
    {
        bOverride = nCmdId == 3320;
        record(QStringLiteral("BeforeCommandRun %1").arg(nCmdId));
    }
    void BeforeQuit() override { record("BeforeQuit"); }
    void OnCommand(int cookie, int nCmdId) override
    {
        record(QStringLiteral("OnCommand %1 %2").arg(cookie).arg(nCmdId));
    }
    void OnCommandUI(int, int nCmdId, bool& Enabled, bool&) override
    {
        Enabled = nCmdId != 2;
        record(QStringLiteral("OnCommandUI %1").arg(nCmdId));
    }
    void AfterDocumentSave() override { record("AfterDocumentSave"); }
    void OnBegin() override { record("OnBegin"); }
    void OnOperationStart(std::shared_ptr<host::Operation> Operation) override
    {
        record("OnOperationStart " + Operation->Name());
    }
    void OnSimulateOperation(std::shared_ptr<host::Operation> Operation) override
    {
        record("OnSimulateOperation " + Operation->Name());
    }
    void OnEdit(std::shared_ptr<host::Technology> Technology, int editType, bool& bOverride, int& resultCode) override
    {
        bOverride = true;
        resultCode = editType * 10;
        record(QStringLiteral("OnEdit %1").arg(Technology->TechnologyType()));
    }

  private:
    void record(const QString& call)
    {
        if (throws_)
            throw host::HostError(QStringLiteral("Sink.Handler"), call);
        calls << call;
    }
    bool throws_;
};

void adviseEverywhere(LatheHost& h, Sink& sink)
{
    h.app->Advise(&sink);
    h.app->AddInCommands()->Advise(&sink);
    h.document()->Advise(&sink);
    h.document()->Simulation()->Advise(&sink);
    h.document()->TechnologyUtility()->Advise(&sink);
}

} // namespace

class tst_FeldraModel : public QObject
{
    Q_OBJECT

  private slots:
    void collectionsCountFromOne_data();
    void collectionsCountFromOne();
    void keyedLookups_data();
    void keyedLookups();
    void writesReadBack_data();
    void writesReadBack();
    void badRequestsAreRefusedAndChangeNothing_data();
    void badRequestsAreRefusedAndChangeNothing();
    void rearrangeOrdersOperations_data();
    void rearrangeOrdersOperations();
    void syncNodesFollowTheirOperations();
    void polygonOutline_data();
    void polygonOutline();
    void polygonStockFromChain();
    void commandsOwnTheirControls();
    void eventsReachSinksAndFailuresAreLogged_data();
    void eventsReachSinksAndFailuresAreLogged();
    void byReferenceArgumentsReturnToTheHost();
    void servicesAreRequestedThroughTheHost();
    void documentKeptAfterCloseStaysUsable();
};

void tst_FeldraModel::collectionsCountFromOne_data()
{
    QTest::addColumn<Read>("count");
    QTest::addColumn<ItemAt>("item");
    QTest::addColumn<int>("expectedCount");
    QTest::addColumn<QVariant>("first");
    QTest::addColumn<QVariant>("last");
    QTest::addColumn<QString>("operation");

    QTest::newRow("tools") << Read([](LatheHost& h) { return h.document()->Tools()->Count(); })
                           << ItemAt([](LatheHost& h, int i) { return tool(h, i)->ToolID(); }) << 3 << QVariant("T1")
                           << QVariant("T21") << "Tools.Item";
    QTest::newRow("operations") << Read([](LatheHost& h) { return h.document()->Operations()->Count(); })
                                << ItemAt([](LatheHost& h, int i) { return op(h, i)->Name(); }) << 3
                                << QVariant("Cut Off") << QVariant("Back Drill") << "Operations.Item";
    QTest::newRow("setup entries") << Read([](LatheHost& h) {
        return setup(h)->SetupEntries()->Count();
    }) << ItemAt([](LatheHost& h, int i) { return setup(h)->SetupEntries()->Item(i)->Name(); })
                                   << 4 << QVariant("G821") << QVariant("G810") << "SetupEntries.Item";
    QTest::newRow("heads") << Read([](LatheHost& h) { return setup(h)->Heads()->Count(); })
                           << ItemAt([](LatheHost& h, int i) { return setup(h)->Heads()->Item(i)->ProgramName(); }) << 2
                           << QVariant("O1000") << QVariant("O2000") << "NCHeads.Item";
    QTest::newRow("axis limits") << Read([](LatheHost& h) {
        return setup(h)->Turrets()->Item(2)->AxisLimits()->Count();
    }) << ItemAt([](LatheHost& h, int i) { return setup(h)->Turrets()->Item(2)->AxisLimits()->Item(i)->Name(); })
                                 << 2 << QVariant("X2") << QVariant("Z2") << "AxisLimits.Item";
    QTest::newRow("axis groups") << Read([](LatheHost& h) {
        return h.document()->Simulation()->MachineModel()->AxisGroups()->Count();
    }) << ItemAt([](LatheHost& h, int i) {
        return h.document()->Simulation()->MachineModel()->AxisGroups()->Item(i)->Item(1)->Name();
    }) << 2 << QVariant("X1") << QVariant("Z2")
                                 << "AxisGroups.Item";
    QTest::newRow("axes of a group") << Read([](LatheHost& h) {
        return h.document()->Simulation()->MachineModel()->AxisGroups()->Item(2)->Count();
    }) << ItemAt([](LatheHost& h, int i) {
        return h.document()->Simulation()->MachineModel()->AxisGroups()->Item(2)->Item(i)->Name();
    }) << 2 << QVariant("Z2") << QVariant("Z3")
                                     << "AxisGroup.Item";
    QTest::newRow("work planes by position")
        << Read([](LatheHost& h) { return h.document()->WorkPlanes()->Count(); })
        << ItemAt([](LatheHost& h, int i) { return h.document()->WorkPlanes()->Item(i)->Name(); }) << 3
        << QVariant("XYZ") << QVariant("ZXY") << "WorkPlanes.Item";
    QTest::newRow("feature elements") << Read([](LatheHost& h) {
        return op(h, 1)->Feature()->Count();
    }) << ItemAt([](LatheHost& h, int i) { return op(h, 1)->Feature()->Element(i)->X(); })
                                      << 2 << QVariant(0.0) << QVariant(12.5) << "Feature.Element";
    QTest::newRow("geometry list") << Read([](LatheHost& h) { return op(h, 2)->GeometryList()->Count(); })
                                   << ItemAt([](LatheHost& h, int i) { return op(h, 2)->GeometryList()->Kind(i); }) << 2
                                   << QVariant(902) << QVariant(903) << "GeometryList.Kind";
    QTest::newRow("help menu") << Read([](LatheHost& h) {
        return h.app->MainMenus()->Item(9)->Count();
    }) << ItemAt([](LatheHost& h, int i) { return h.app->MainMenus()->Item(9)->Item(i)->Caption(); })
                               << 3 << QVariant("Help Topics") << QVariant("About Feldra") << "MenuControls.Item";
}

void tst_FeldraModel::collectionsCountFromOne()
{
    QFETCH(Read, count);
    QFETCH(ItemAt, item);
    QFETCH(int, expectedCount);
    QFETCH(QVariant, first);
    QFETCH(QVariant, last);
    QFETCH(QString, operation);
    LatheHost h;

    QCOMPARE(count(h).toInt(), expectedCount);
    QCOMPARE(item(h, 1), first);
    QCOMPARE(item(h, expectedCount), last);
    QCOMPARE(failingOperation([&] { item(h, 0); }), operation);
    QCOMPARE(failingOperation([&] { item(h, expectedCount + 1); }), operation);
}

void tst_FeldraModel::keyedLookups_data()
{
    QTest::addColumn<Read>("lookup");
    QTest::addColumn<QVariant>("expected");
    QTest::addColumn<Act>("missing");
    QTest::addColumn<QString>("operation");

    QTest::newRow("turret by key") << Read([](LatheHost& h) { return setup(h)->Turrets()->Item(2)->ReferenceZ(); })
                                   << QVariant(120.0) << Act([](LatheHost& h) { setup(h)->Turrets()->Item(3); })
                                   << "Turrets.Item";
    QTest::newRow("station by key") << Read([](LatheHost& h) {
        return setup(h)->Turrets()->Item(2)->Stations()->Item(22)->Number();
    }) << QVariant(22) << Act([](LatheHost& h) { setup(h)->Turrets()->Item(2)->Stations()->Item(1); })
                                    << "Stations.Item";
    QTest::newRow("spindle by key") << Read([](LatheHost& h) { return setup(h)->Spindles()->Item(2)->Name(); })
                                    << QVariant("Back") << Act([](LatheHost& h) { setup(h)->Spindles()->Item(3); })
                                    << "Spindles.Item";
    QTest::newRow("component by text") << Read([](LatheHost& h) {
        return h.document()->Simulation()->MachineModel()->Components()->Item("SubSpindle")->Position()->Y();
    }) << QVariant(8.0) << Act([](LatheHost& h) {
        h.document()->Simulation()->MachineModel()->Components()->Item("Chuck");
    }) << "Components.Item";
    QTest::newRow("work plane by name") << Read([](LatheHost& h) {
        return h.document()->WorkPlanes()->Item("YZX")->Name();
    }) << QVariant("YZX") << Act([](LatheHost& h) { h.document()->WorkPlanes()->Item("Turning"); })
                                        << "WorkPlanes.Item";
    QTest::newRow("layer by name") << Read([](LatheHost& h) { return h.document()->Layers()->Item("0")->Name(); })
                                   << QVariant("0") << Act([](LatheHost& h) { h.document()->Layers()->Item("Temp"); })
                                   << "Layers.Item";
    QTest::newRow("feature chain by key")
        << Read([](LatheHost& h) { return h.document()->FeatureChains()->Item("F1")->Key(); }) << QVariant("F1")
        << Act([](LatheHost& h) { h.document()->FeatureChains()->Item("F9"); }) << "FeatureChains.Item";
    QTest::newRow("operation without feature")
        << Read([](LatheHost& h) { return op(h, 1)->Feature()->Key(); }) << QVariant("F1")
        << Act([](LatheHost& h) { op(h, 2)->Feature(); }) << "Operation.Feature";
    QTest::newRow("technology parameter")
        << Read([](LatheHost& h) { return op(h, 1)->Technology()->Parameter("498")->Value(); }) << QVariant("T1")
        << Act([](LatheHost& h) { op(h, 1)->Technology()->Parameter("999"); }) << "Technology.Parameter";
    QTest::newRow("tool parameter") << Read([](LatheHost& h) { return tool(h, 3)->Parameter("121")->Value(); })
                                    << QVariant(21) << Act([](LatheHost& h) { tool(h, 3)->Parameter("122"); })
                                    << "Tool.Parameter";
    QTest::newRow("lathe kind view") << Read([](LatheHost& h) { return tool(h, 1)->AsLatheToolKind17()->Width(); })
                                     << QVariant(2.5) << Act([](LatheHost& h) { tool(h, 1)->AsLatheToolKind18(); })
                                     << "Tool.AsLatheToolKind18";
    QTest::newRow("technology view") << Read([](LatheHost& h) {
        return op(h, 2)->Technology()->AsTechnology207()->ColletExtension();
    }) << QVariant(3.5) << Act([](LatheHost& h) { op(h, 1)->Technology()->AsTechnology207(); })
                                     << "Technology.AsTechnology207";
    QTest::newRow("command bar by number")
        << Read([](LatheHost& h) { return h.app->CommandBars()->Item(23)->ControlCount(); }) << QVariant(3)
        << Act([](LatheHost& h) { h.app->CommandBars()->Item(99); }) << "CommandBars.Item";
    QTest::newRow("main menu by number") << Read([](LatheHost& h) {
        return h.app->MainMenus()->Item(9)->Item(2)->HasCommand();
    }) << QVariant(false) << Act([](LatheHost& h) { h.app->MainMenus()->Item(10); })
                                         << "MainMenus.Item";
}

void tst_FeldraModel::keyedLookups()
{
    QFETCH(Read, lookup);
    QFETCH(QVariant, expected);
    QFETCH(Act, missing);
    QFETCH(QString, operation);
    LatheHost h;

    QCOMPARE(lookup(h), expected);
    QCOMPARE(failingOperation([&] { missing(h); }), operation);
}

void tst_FeldraModel::writesReadBack_data()
{
    QTest::addColumn<Write>("write");
    QTest::addColumn<Read>("read");
    QTest::addColumn<QVariant>("value");

    auto row = [](const char* name, Write write, Read read, QVariant value) {
        QTest::newRow(name) << write << read << value;
    };
    row(
        "MachineSetup.MakerTag", [](LatheHost& h, const QVariant& v) { setup(h)->setMakerTag(v.toString()); },
        [](LatheHost& h) { return setup(h)->MakerTag(); }, "OTHER");
    row(
        "MachineSetup.Param893", [](LatheHost& h, const QVariant& v) { setup(h)->setParam893(v.toDouble()); },
        [](LatheHost& h) { return setup(h)->Param893(); }, 7.25);
    row(
        "MachineSetup.Param824 (unset before)",
        [](LatheHost& h, const QVariant& v) { setup(h)->setParam824(v.toDouble()); },
        [](LatheHost& h) { return setup(h)->Param824(); }, -3.5);
    row(
        "MachineSetup.ProgramNumber", [](LatheHost& h, const QVariant& v) { setup(h)->setProgramNumber(v.toInt()); },
        [](LatheHost& h) { return setup(h)->ProgramNumber(); }, 1234);
    row(
        "MachineSetup.BarLoaderCommand",
        [](LatheHost& h, const QVariant& v) { setup(h)->setBarLoaderCommand(v.toString()); },
        [](LatheHost& h) { return setup(h)->BarLoaderCommand(); }, "M155 X1. Z2. W3.");
    row(
        "MachineSetup.StockDiameter", [](LatheHost& h, const QVariant& v) { setup(h)->setStockDiameter(v.toDouble()); },
        [](LatheHost& h) { return setup(h)->StockDiameter(); }, 20.0);
    row(
        "MachineSetup.FaceAmount (write only)",
        [](LatheHost& h, const QVariant& v) { setup(h)->setFaceAmount(v.toDouble()); },
        [](LatheHost& h) { return h.doc->data.machineSetup.faceAmount; }, 0.5);
    row(
        "NCHead.OutputUnit",
        [](LatheHost& h, const QVariant& v) { setup(h)->Heads()->Item(2)->setOutputUnit(v.toInt()); },
        [](LatheHost& h) { return setup(h)->Heads()->Item(2)->OutputUnit(); }, 70);
    row(
        "Spindle.WorkLength (write only)",
        [](LatheHost& h, const QVariant& v) { setup(h)->Spindles()->Item(1)->setWorkLength(v.toDouble()); },
        [](LatheHost& h) { return h.doc->data.machineSetup.spindles[0]->workLength; }, 55.0);
    row(
        "Tool.Number", [](LatheHost& h, const QVariant& v) { tool(h, 2)->setNumber(v.toInt()); },
        [](LatheHost& h) { return tool(h, 2)->Number(); }, 12);
    row(
        "Tool.ToolID", [](LatheHost& h, const QVariant& v) { tool(h, 2)->setToolID(v.toString()); },
        [](LatheHost& h) { return tool(h, 2)->ToolID(); }, "Drill 3");
    row(
        "Tool.XShift", [](LatheHost& h, const QVariant& v) { tool(h, 1)->setXShift(v.toDouble()); },
        [](LatheHost& h) { return tool(h, 1)->XShift(); }, -1.25);
    row(
        "Tool.SpindleDirection", [](LatheHost& h, const QVariant& v) { tool(h, 1)->setSpindleDirection(v.toInt()); },
        [](LatheHost& h) { return tool(h, 1)->SpindleDirection(); }, -1);
    row(
        "Tool.BackSpindle", [](LatheHost& h, const QVariant& v) { tool(h, 3)->setBackSpindle(v.toInt()); },
        [](LatheHost& h) { return tool(h, 3)->BackSpindle(); }, 1);
    row(
        "Tool.GearRatio (write only)", [](LatheHost& h, const QVariant& v) { tool(h, 3)->setGearRatio(v.toDouble()); },
        [](LatheHost& h) { return h.doc->data.tools[2]->gearRatio; }, 2.0);
    row(
        "TechnologyParameter.Value",
        [](LatheHost& h, const QVariant& v) { op(h, 1)->Technology()->Parameter("797")->setValue(v); },
        [](LatheHost& h) { return op(h, 1)->Technology()->Parameter("797")->Value(); }, 0);
    row(
        "TechnologyParameter.Caption",
        [](LatheHost& h, const QVariant& v) { op(h, 1)->Technology()->Parameter("498")->setCaption(v.toString()); },
        [](LatheHost& h) { return op(h, 1)->Technology()->Parameter("498")->Caption(); }, "M34- Pickup Location(A)");
    row(
        "Technology207.ColletExtension",
        [](LatheHost& h, const QVariant& v) {
            op(h, 2)->Technology()->AsTechnology207()->setColletExtension(v.toDouble());
        },
        [](LatheHost& h) { return op(h, 2)->Technology()->AsTechnology207()->ColletExtension(); }, 4.75);
    row(
        "CustomProperty.Value",
        [](LatheHost& h, const QVariant& v) {
            op(h, 3)->CustomProperties()->Add("Z2Position", "Z2 Position", 5, 0.1234567)->setValue(v);
        },
        [](LatheHost& h) { return op(h, 3)->CustomProperties()->Item("Z2Position")->Value(); }, 88.5);
    row(
        "Component.MoveTo",
        [](LatheHost& h, const QVariant& v) {
            auto component = h.document()->Simulation()->MachineModel()->Components()->Item("SubSpindle");
            auto position = component->Position();
            position->setZ(v.toDouble());
            component->MoveTo(position);
        },
        [](LatheHost& h) {
            return h.document()->Simulation()->MachineModel()->Components()->Item("SubSpindle")->Position()->Z();
        },
        150.0);
    row(
        "Axis.Enabled (write only)",
        [](LatheHost& h, const QVariant& v) {
            h.document()->Simulation()->MachineModel()->AxisGroups()->Item(2)->Item(2)->setEnabled(v.toBool());
        },
        [](LatheHost& h) { return h.doc->data.simulation.machineModel.axisGroups[1]->axes[1]->enabled; }, false);
    row(
        "WorkPlane.Origin (write only)",
        [](LatheHost& h, const QVariant& v) { h.document()->WorkPlanes()->Item("ZXY")->setOrigin(0, 0, v.toDouble()); },
        [](LatheHost& h) { return h.doc->data.workPlanes[2]->origin.z; }, 4.0);
    row(
        "Document.ActiveWorkPlane (write only)",
        [](LatheHost& h, const QVariant& v) {
            h.document()->setActiveWorkPlane(h.document()->WorkPlanes()->Item(v.toString()));
        },
        [](LatheHost& h) { return h.doc->data.activeWorkPlane; }, "YZX");
    row(
        "Stock.Spindle (write only)",
        [](LatheHost& h, const QVariant& v) {
            auto simulation = h.document()->Simulation();
            auto stock = simulation->AddStock("Main Stock", 1, h.document()->FeatureChains()->Item("F1"), 40, 1);
            stock->setSpindle(setup(h)->Spindles()->Item(v.toInt()));
        },
        [](LatheHost& h) { return h.doc->data.simulation.stocks[0]->spindle; }, 2);
}

void tst_FeldraModel::writesReadBack()
{
    QFETCH(Write, write);
    QFETCH(Read, read);
    QFETCH(QVariant, value);
    LatheHost h;

    write(h, value);

    QCOMPARE(read(h), value);
}

void tst_FeldraModel::badRequestsAreRefusedAndChangeNothing_data()
{
    QTest::addColumn<Act>("prepare");
    QTest::addColumn<Act>("request");
    QTest::addColumn<Read>("state");
    QTest::addColumn<QString>("operation");

    const Act nothing = [](LatheHost&) {};
    auto row = [](const char* name, Act prepare, Act request, Read state, const char* operation) {
        QTest::newRow(name) << prepare << request << state << QString::fromLatin1(operation);
    };
    row(
        "back spindle 2", nothing, [](LatheHost& h) { tool(h, 1)->setBackSpindle(2); },
        [](LatheHost& h) { return tool(h, 1)->BackSpindle(); }, "Tool.BackSpindle write");
    row(
        "spindle direction 3", nothing, [](LatheHost& h) { tool(h, 1)->setSpindleDirection(3); },
        [](LatheHost& h) { return tool(h, 1)->SpindleDirection(); }, "Tool.SpindleDirection write");
    row(
        "output unit 72", nothing, [](LatheHost& h) { setup(h)->Heads()->Item(1)->setOutputUnit(72); },
        [](LatheHost& h) { return setup(h)->Heads()->Item(1)->OutputUnit(); }, "NCHead.OutputUnit write");
    row(
        "text into a double property",
        [](LatheHost& h) { op(h, 1)->CustomProperties()->Add("Z2Position", "Z2", 5, 1.0); },
        [](LatheHost& h) { op(h, 1)->CustomProperties()->Item("Z2Position")->setValue("abc"); },
        [](LatheHost& h) { return op(h, 1)->CustomProperties()->Item("Z2Position")->Value(); },
        "CustomProperty.Value write");
    row(
        "custom property twice", [](LatheHost& h) { op(h, 1)->CustomProperties()->Add("Note", "Note", 8, "a"); },
        [](LatheHost& h) { op(h, 1)->CustomProperties()->Add("Note", "Note", 8, "b"); },
        [](LatheHost& h) { return op(h, 1)->CustomProperties()->Item("Note")->Value(); }, "CustomProperties.Add");
    row(
        "work plane name taken", nothing, [](LatheHost& h) { h.document()->WorkPlanes()->Add("XYZ"); },
        [](LatheHost& h) { return h.document()->WorkPlanes()->Count(); }, "WorkPlanes.Add");
    row(
        "layer name taken", nothing, [](LatheHost& h) { h.document()->Layers()->Add("0"); },
        [](LatheHost& h) { return h.document()->Layers()->Count(); }, "Layers.Add");
    row(
        "sync type out of range", nothing, [](LatheHost& h) { h.document()->Syncs()->Add(5, {}); },
        [](LatheHost& h) { return h.document()->Syncs()->Count(); }, "Syncs.Add");
    row(
        "rearrange with unknown mode", nothing,
        [](LatheHost& h) { h.document()->Operations()->Rearrange({op(h, 3)}, 2, true); },
        [](LatheHost& h) { return operationNames(h); }, "Operations.Rearrange");
    row(
        "second stock of a name",
        [](LatheHost& h) {
            h.document()->Simulation()->AddStock("Main Stock", 1, h.document()->FeatureChains()->Item("F1"), 40, 0);
        },
        [](LatheHost& h) {
            h.document()->Simulation()->AddStock("Main Stock", 1, h.document()->FeatureChains()->Item("F1"), 20, 0);
        },
        [](LatheHost& h) {
            return h.doc->data.simulation.stocks.size() * 100 + h.doc->data.simulation.stocks[0]->length;
        },
        "Simulation.AddStock");
    row(
        "delete a missing stock", nothing, [](LatheHost& h) { h.document()->Simulation()->DeleteStock("Main Stock"); },
        [](LatheHost& h) { return int(h.doc->data.simulation.stocks.size()); }, "Simulation.DeleteStock");
    row(
        "button for no command", nothing,
        [](LatheHost& h) { h.app->CommandBars()->Item(23)->AddControl(1, "Ghost", 4711, 1); },
        [](LatheHost& h) { return h.app->CommandBars()->Item(23)->ControlCount(); }, "CommandBar.AddControl");
    row(
        "button beyond the end", [](LatheHost& h) { h.app->AddInCommands()->AddCommand(1, 3, "Marelon"); },
        [](LatheHost& h) {
            h.app->CommandBars()->Item(2)->AddControl(1, "Masks", h.host.App().commands.last().handle, 5);
        },
        [](LatheHost& h) { return h.app->CommandBars()->Item(2)->ControlCount(); }, "CommandBar.AddControl");
    row(
        "command of another add-in", nothing,
        [](LatheHost& h) { h.app->AddInCommands()->AddCommand(99, 1, "Marelon"); },
        [](LatheHost& h) { return int(h.host.App().commands.size()); }, "AddInCommands.AddCommand");
    row(
        "remove a missing menu entry", nothing,
        [](LatheHost& h) { h.app->MainMenus()->Item(9)->Remove("Marelon Add-In Help"); },
        [](LatheHost& h) { return h.app->MainMenus()->Item(9)->Count(); }, "MenuControls.Remove");
    row(
        "missing setup file", nothing, [](LatheHost& h) { setup(h)->LoadSetupFile("/tmp/x_Metric.EMS"); },
        [](LatheHost& h) { return setup(h)->MachineSetupName(); }, "MachineSetup.LoadSetupFile");
}

void tst_FeldraModel::badRequestsAreRefusedAndChangeNothing()
{
    QFETCH(Act, prepare);
    QFETCH(Act, request);
    QFETCH(Read, state);
    QFETCH(QString, operation);
    LatheHost h;
    prepare(h);
    const QVariant before = state(h);

    QCOMPARE(failingOperation([&] { request(h); }), operation);

    QCOMPARE(state(h), before);
}

void tst_FeldraModel::rearrangeOrdersOperations_data()
{
    QTest::addColumn<QList<int>>("order"); // positions before the call; 0 an empty position
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("reversed") << QList<int>{3, 2, 1} << QStringList{"Back Drill", "Pick Up", "Cut Off"};
    QTest::newRow("empty position: the left-out operation follows")
        << QList<int>{2, 0, 1} << QStringList{"Pick Up", "Cut Off", "Back Drill"};
    QTest::newRow("unchanged") << QList<int>{1, 2, 3} << QStringList{"Cut Off", "Pick Up", "Back Drill"};
    QTest::newRow("listed twice: refused") << QList<int>{2, 2, 1} << QStringList{"Cut Off", "Pick Up", "Back Drill"};
}

void tst_FeldraModel::rearrangeOrdersOperations()
{
    QFETCH(QList<int>, order);
    QFETCH(QStringList, expected);
    LatheHost h;
    QList<std::shared_ptr<host::Operation>> list;
    for (int position : order)
        list.append(position ? op(h, position) : nullptr);

    const QString failed = failingOperation([&] { h.document()->Operations()->Rearrange(list, 1, true); });

    QCOMPARE(failed.isEmpty(), std::set<int>(order.begin(), order.end()).size() == size_t(order.size()));
    QStringList names;
    for (int i = 1; i <= h.document()->Operations()->Count(); ++i)
        names << op(h, i)->Name();
    QCOMPARE(names, expected);
}

void tst_FeldraModel::syncNodesFollowTheirOperations()
{
    LatheHost h;
    auto syncs = h.document()->Syncs();
    syncs->Remove(1); // the document's own
    std::array<host::SyncNode, 4> nodes{};
    nodes[0] = {4, op(h, 1), 0, 7, 0};
    nodes[1] = {1, op(h, 2), 0, 8, 0};
    syncs->Add(3, nodes);
    syncs->Add(0, {}); // a synchronisation of no known type is kept

    h.document()->Operations()->Rearrange({op(h, 3), op(h, 2), op(h, 1)}, 1, true);

    QCOMPARE(h.document()->Syncs()->Count(), 2);
    auto stored = h.document()->Syncs()->Item(1);
    QCOMPARE(stored->TypeIndex(), 3);
    const auto read = stored->Nodes();
    QCOMPARE(read[0].operation->Name(), QStringLiteral("Cut Off"));
    QCOMPARE(read[0].placement, 4);
    QCOMPARE(read[0].elementIndex, 7);
    QCOMPARE(read[1].operation->Name(), QStringLiteral("Pick Up"));
    QVERIFY(!read[2].operation);

    h.doc->data.operations.removeLast(); // "Cut Off", now last, is deleted
    QVERIFY(!h.document()->Syncs()->Item(1)->Nodes()[0].operation);
    h.document()->Syncs()->Remove(1);
    QCOMPARE(h.document()->Syncs()->Item(1)->TypeIndex(), 0);
}

void tst_FeldraModel::polygonOutline_data()
{
    QTest::addColumn<int>("circleKind");
    QTest::addColumn<int>("sides");
    QTest::addColumn<double>("cornerRadius");

    // Diameter 20: kind 2 is the circle through the corners, kind 1 the one touching the sides.
    QTest::newRow("hexagon through the corners") << 2 << 6 << 10.0;
    QTest::newRow("hexagon across flats") << 1 << 6 << 10.0 / std::cos(std::numbers::pi / 6);
    QTest::newRow("square across flats") << 1 << 4 << 10.0 * std::sqrt(2.0);
    QTest::newRow("octagon, the most sides") << 2 << 8 << 10.0;
    QTest::newRow("triangle, the fewest") << 2 << 3 << 10.0;
}

void tst_FeldraModel::polygonOutline()
{
    QFETCH(int, circleKind);
    QFETCH(int, sides);
    QFETCH(double, cornerRadius);
    LatheHost h;
    const double baseAngle = 0.3;

    const auto segments =
        h.app->GeometryUtility()->RegularPolygon(h.document()->MakePoint(1, 2, 0), circleKind, 20, baseAngle, sides);

    QCOMPARE(segments.size(), sides);
    QCOMPARE(segments.first().x1, 1 + cornerRadius * std::cos(baseAngle));
    QCOMPARE(segments.first().y1, 2 + cornerRadius * std::sin(baseAngle));
    for (int k = 0; k < sides; ++k) {
        const auto& s = segments[k];
        const auto& next = segments[(k + 1) % sides];
        QCOMPARE(std::hypot(s.x1 - 1, s.y1 - 2), cornerRadius);
        QVERIFY(s.x2 == next.x1 && s.y2 == next.y1); // a closed chain
    }
}

void tst_FeldraModel::polygonStockFromChain()
{
    LatheHost h;
    auto doc = h.document();
    auto geometry = h.app->GeometryUtility();
    QCOMPARE(failingOperation([&] { geometry->RegularPolygon(doc->MakePoint(0, 0, 0), 2, 20, 0, 9); }),
             QStringLiteral("GeometryUtility.RegularPolygon"));
    const auto segments = geometry->RegularPolygon(doc->MakePoint(0, 0, 0), 2, 20, 0, 4);

    auto chain = doc->FeatureChains()->Add(segments.first());
    for (int k = 1; k < segments.size(); ++k)
        chain->AddSegment(segments[k]);
    chain->setLayer(doc->Layers()->Add("Temp"));
    geometry->RotateAboutY(chain, std::numbers::pi / 2);
    auto stock = doc->Simulation()->AddStock("Main Stock", 1, chain, 40, 1.5);
    stock->setPlacement({0, 0, 0, 0, 1, 0, 0, 0, 1, 1, 0, 0});
    doc->Simulation()->Update(false);

    const auto& data = *h.doc->Feature(chain->Key());
    QCOMPARE(data.layer, QStringLiteral("Temp"));
    QCOMPARE(data.elements.size(), 5);
    QVERIFY(data.elements.first() == data.elements.last());
    // (10, 0, 0) turned a quarter about Y lies on -Z.
    QVERIFY(std::abs(data.elements.first().x) < 1e-12);
    QCOMPARE(data.elements.first().z, -10.0);
    const auto& stored = *h.doc->data.simulation.stocks.first();
    QCOMPARE(stored.featureKey, chain->Key());
    QCOMPARE(stored.length, 40.0);
    QCOMPARE(stored.start, 1.5);
    QCOMPARE(stored.placement[9], 1.0);

    h.doc->data.features.removeLast(); // the profile goes away: the stock cannot be rebuilt
    QCOMPARE(failingOperation([&] { doc->Simulation()->Update(false); }), QStringLiteral("Simulation.Update"));
    doc->Simulation()->DeleteStock("Main Stock");
    doc->Simulation()->Update(true);
}

void tst_FeldraModel::commandsOwnTheirControls()
{
    LatheHost h;
    auto commands = h.app->AddInCommands();
    const int toolData = commands->AddCommand(commands->Cookie(), 1, "Marelon");
    const int help = commands->AddCommand(commands->Cookie(), 5, "Marelon");
    QVERIFY(toolData != help);
    QCOMPARE(failingOperation([&] { commands->AddCommand(commands->Cookie(), 1, "Marelon"); }),
             QStringLiteral("AddInCommands.AddCommand"));

    auto bar = h.app->CommandBars()->Item(23);
    bar->AddSeparator();
    auto button = bar->AddControl(1, "Tool Data", toolData, bar->ControlCount()); // before the last control
    button->setCaption("Werkzeugdaten");
    button->SetBitmaps("/tmp/MA1_16.bmp", "/tmp/MA1_32.bmp");
    auto menu = h.app->MainMenus()->Item(9);
    menu->Add(0);
    menu->Add(1, "Marelon Add-In Help", help);

    const auto& controls = h.host.App().CommandBar(23)->controls;
    QCOMPARE(controls.size(), 5);
    QCOMPARE(controls[3]->caption, QStringLiteral("Werkzeugdaten"));
    QCOMPARE(controls[3]->largeBitmap, QStringLiteral("/tmp/MA1_32.bmp"));
    QCOMPARE(controls[4]->type, int(feldra::ControlData::Separator));
    QCOMPARE(menu->Count(), 5);
    QVERIFY(!menu->Item(4)->HasCommand());

    commands->RemoveCommand(toolData);
    commands->RemoveCommand(help);

    QCOMPARE(controls.size(), 3); // the separator left at the end of the bar goes too
    QCOMPARE(menu->Count(), 4);
    QCOMPARE(menu->Item(3)->Caption(), QStringLiteral("About Feldra"));
    menu->Remove(4);
    QCOMPARE(menu->Count(), 3);
    QVERIFY(!h.host.InvokeCommand(toolData));
}

void tst_FeldraModel::eventsReachSinksAndFailuresAreLogged_data()
{
    QTest::addColumn<Act>("raise");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("callback");

    QTest::newRow("document opened") << Act([](LatheHost& h) { h.host.OpenDocument(h.doc); })
                                     << "AfterDocumentOpen /tmp/part.fdoc"
                                     << "Application.AfterDocumentOpen";
    QTest::newRow("new document") << Act([](LatheHost& h) { h.host.OpenNewDocument(h.doc); }) << "AfterNewDocumentOpen"
                                  << "Application.AfterNewDocumentOpen";
    QTest::newRow("template") << Act([](LatheHost& h) { h.host.OpenTemplate(h.doc); })
                              << "AfterTemplateOpen /tmp/part.fdoc"
                              << "Application.AfterTemplateOpen";
    QTest::newRow("command about to run")
        << Act([](LatheHost& h) { h.host.BeforeCommandRun(3320); }) << "BeforeCommandRun 3320"
        << "Application.BeforeCommandRun";
    QTest::newRow("quit") << Act([](LatheHost& h) { h.host.Quit(); }) << "BeforeQuit"
                          << "Application.BeforeQuit";
    QTest::newRow("saved") << Act([](LatheHost& h) { h.host.DocumentSaved(*h.doc); }) << "AfterDocumentSave"
                           << "Document.AfterDocumentSave";
    QTest::newRow("command") << Act([](LatheHost& h) {
        auto commands = h.app->AddInCommands();
        h.host.InvokeCommand(commands->AddCommand(commands->Cookie(), 4, "Marelon"));
    }) << "OnCommand 1 4"
                             << "AddInCommands.OnCommand";
    QTest::newRow("command state") << Act([](LatheHost& h) {
        auto commands = h.app->AddInCommands();
        h.host.CommandEnabled(commands->AddCommand(commands->Cookie(), 2, "Marelon"));
    }) << "OnCommandUI 2"
                                   << "AddInCommands.OnCommandUI";
    QTest::newRow("simulation begins") << Act([](LatheHost& h) { h.host.SimulationBegin(*h.doc); }) << "OnBegin"
                                       << "Simulation.OnBegin";
    QTest::newRow("operation starts") << Act([](LatheHost& h) { h.host.OperationStart(h.doc, 2); })
                                      << "OnOperationStart Pick Up"
                                      << "Simulation.OnOperationStart";
    QTest::newRow("operation simulated") << Act([](LatheHost& h) { h.host.SimulateOperation(h.doc, 3); })
                                         << "OnSimulateOperation Back Drill"
                                         << "Simulation.OnSimulateOperation";
    QTest::newRow("technology edited") << Act([](LatheHost& h) { h.host.EditTechnology(h.doc, 1, 2); }) << "OnEdit 153"
                                       << "TechnologyUtility.OnEdit";
}

void tst_FeldraModel::eventsReachSinksAndFailuresAreLogged()
{
    QFETCH(Act, raise);
    QFETCH(QString, call);
    QFETCH(QString, callback);
    LatheHost h;
    Sink failing(true);
    Sink listening;
    Sink released;
    adviseEverywhere(h, failing);
    adviseEverywhere(h, listening);
    adviseEverywhere(h, released);
    h.app->Unadvise(&released);
    h.app->AddInCommands()->Unadvise(&released);
    h.document()->Unadvise(&released);
    h.document()->Simulation()->Unadvise(&released);
    h.document()->TechnologyUtility()->Unadvise(&released);

    raise(h);

    QCOMPARE(listening.calls, QStringList{call});
    QVERIFY(released.calls.isEmpty());
    QCOMPARE(h.host.Log().FailedCallbacks().size(), 1);
    const auto& failure = h.host.Log().FailedCallbacks().first();
    QCOMPARE(failure.callback, callback);
    QCOMPARE(failure.operation, QStringLiteral("Sink.Handler"));
    QCOMPARE(failure.description, call);
}

void tst_FeldraModel::byReferenceArgumentsReturnToTheHost()
{
    LatheHost h;
    Sink sink;
    adviseEverywhere(h, sink);
    auto commands = h.app->AddInCommands();
    const int dataPage = commands->AddCommand(commands->Cookie(), 2, "Marelon");
    const int toolData = commands->AddCommand(commands->Cookie(), 1, "Marelon");

    QVERIFY(h.host.BeforeCommandRun(3320));
    QVERIFY(!h.host.BeforeCommandRun(3321));
    QVERIFY(!h.host.CommandEnabled(dataPage));
    QVERIFY(h.host.CommandEnabled(toolData, false));
    const auto edit = h.host.EditTechnology(h.doc, 2, 3);
    QVERIFY(edit.bOverride);
    QCOMPARE(edit.resultCode, 30);
}

void tst_FeldraModel::servicesAreRequestedThroughTheHost()
{
    LatheHost h;
    QStringList keys;
    h.host.Services().sendKeys = [&keys](const QString& k) { keys << k; };
    h.host.Services().pickAnswers = {"F1", ""};

    h.app->SendKeys("^m");
    h.app->ShowHelpTopic("/opt/feldra/Help/1031/Marelon Help.chm", "posting.htm#Warning");
    auto picked = h.document()->PickObject("Select Feature for Stock Profile", 6);
    auto cancelled = h.document()->PickObject("Select Feature for Stock Profile", 6);

    QCOMPARE(keys, QStringList{"^m"});
    QCOMPARE(h.host.Log().RequestsOf("Application.ShowHelpTopic").first().arguments,
             (QStringList{"/opt/feldra/Help/1031/Marelon Help.chm", "posting.htm#Warning"}));
    QCOMPARE(h.host.Log().RequestsOf("Document.PickObject").size(), 2);
    QCOMPARE(picked->Key(), QStringLiteral("F1"));
    QVERIFY(!cancelled);

    auto helpLocale = h.app->CreateHelpLocale();
    QCOMPARE(helpLocale->HelpLanguageNumber(1031), 1031);
    QCOMPARE(helpLocale->HelpLanguageNumber(1036), 1033);
    QCOMPARE(h.app->CreateLocalizer()->Translate("Tool Data"), QStringLiteral("Tool Data"));

    const QString setupFile = QString::fromUtf8(MARELON_SOURCE_DIR "/data/MachineSetups/L5 16-20/Standard_Metric.EMS");
    setup(h)->LoadSetupFile(setupFile);
    QVERIFY(setup(h)->SetupEntries()->Count() > 0);
    QVERIFY_THROWS_EXCEPTION(host::HostError, setup(h)->LoadSetupFile(setupFile + ".missing"));
}

void tst_FeldraModel::documentKeptAfterCloseStaysUsable()
{
    LatheHost h;
    auto kept = h.document();
    auto keptTool = kept->Tools()->Item(1);

    h.host.CloseDocument(h.doc);
    h.doc.reset();

    QVERIFY(!h.app->ActiveDocument());
    QCOMPARE(kept->Tools()->Count(), 3);
    keptTool->setXShift(2);
    QCOMPARE(kept->Tools()->Item(1)->XShift(), 2.0);
    QVERIFY(!h.document());
}

QTEST_MAIN(tst_FeldraModel)
#include "tst_FeldraModel.moc"
