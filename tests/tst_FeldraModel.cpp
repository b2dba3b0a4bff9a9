// The Feldra host's object model as an add-in sees it through the facade.
#include "FeldraFixture.h"
#include "feldra/DocumentFile.h"

#include <QTest>
#include <cmath>
#include <functional>
#include <numbers>
#include <set>

using fixture::failingOperation;
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

// Records the events it handles; throws from each when told to.
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
    void BeforeCommandRun(int nCmdId, int, bool&) override { record(QStringLiteral("BeforeCommand %1").arg(nCmdId)); }
    void OnCommand(int cookie, int nCmdId) override
    {
        record(QStringLiteral("OnCommand %1 %2").arg(cookie).arg(nCmdId));
    }
    void AfterDocumentSave() override { record("AfterDocumentSave"); }
    void OnOperationStart(std::shared_ptr<host::Operation> Operation) override
    {
        record("OnOperationStart " + Operation->Name());
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

// Everything a refused request could have changed: the document, the
// registered commands and the controls of the bars and menus.
QByteArray snapshot(LatheHost& h)
{
    QByteArray state = feldra::WriteDocument(h.doc->data);
    const feldra::ApplicationData& app = h.host.App();
    state += QByteArray::number(app.commands.size());
    for (const auto& bar : app.commandBars)
        state += ' ' + QByteArray::number(bar->controls.size());
    for (const auto& menu : app.mainMenus)
        state += ' ' + QByteArray::number(menu->entries.size());
    return state;
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
    void writesReachTheDocument_data();
    void writesReachTheDocument();
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
    void editResultReturnsToTheHost();
    void localizerAndSetupFileThroughTheFacade();
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
                           << ItemAt([](LatheHost& h, int i) { return h.tool(i)->ToolID(); }) << 3 << QVariant("T1")
                           << QVariant("T21") << "Tools.Item";
    QTest::newRow("geometry list") << Read([](LatheHost& h) { return h.op(2)->GeometryList()->Count(); })
                                   << ItemAt([](LatheHost& h, int i) { return h.op(2)->GeometryList()->Kind(i); })
                                   << 2 << QVariant(902) << QVariant(903) << "GeometryList.Kind";
    QTest::newRow("help menu")
        << Read([](LatheHost& h) { return h.app->MainMenus()->Item(9)->Count(); })
        << ItemAt([](LatheHost& h, int i) { return h.app->MainMenus()->Item(9)->Item(i)->Caption(); }) << 3
        << QVariant("Help Topics") << QVariant("About Feldra") << "MenuControls.Item";
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

    auto row = [](const char* name, Read lookup, QVariant expected, Act missing, const char* operation) {
        QTest::newRow(name) << lookup << expected << missing << QString::fromLatin1(operation);
    };
    row("station by number", [](LatheHost& h) { return h.setup()->Turrets()->Item(2)->Stations()->Item(22)->Number(); },
        22, [](LatheHost& h) { h.setup()->Turrets()->Item(2)->Stations()->Item(1); }, "Stations.Item");
    row("component by key", [](LatheHost& h) { return h.model()->Components()->Item("SubSpindle")->Position()->Y(); },
        8.0, [](LatheHost& h) { h.model()->Components()->Item("Chuck"); }, "Components.Item");
    row("operation without feature", [](LatheHost& h) { return h.op(1)->Feature()->Key(); }, "F1",
        [](LatheHost& h) { h.op(2)->Feature(); }, "Operation.Feature");
    row("technology parameter", [](LatheHost& h) { return h.op(1)->Technology()->Parameter("498")->Value(); }, "T1",
        [](LatheHost& h) { h.op(1)->Technology()->Parameter("999"); }, "Technology.Parameter");
    row("lathe kind view", [](LatheHost& h) { return h.tool(1)->AsLatheToolKind17()->Width(); }, 2.5,
        [](LatheHost& h) { h.tool(1)->AsLatheToolKind18(); }, "Tool.AsLatheToolKind18");
    row("technology view", [](LatheHost& h) { return h.op(2)->Technology()->AsTechnology207()->ColletExtension(); },
        3.5, [](LatheHost& h) { h.op(1)->Technology()->AsTechnology207(); }, "Technology.AsTechnology207");
    row("main menu by number", [](LatheHost& h) { return h.app->MainMenus()->Item(9)->Item(2)->HasCommand(); }, false,
        [](LatheHost& h) { h.app->MainMenus()->Item(10); }, "MainMenus.Item");
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

// Writes that do more than store a value: a conversion to the property's
// type, a facade object handed in.
void tst_FeldraModel::writesReachTheDocument_data()
{
    QTest::addColumn<Write>("write");
    QTest::addColumn<Read>("read");
    QTest::addColumn<QVariant>("value");

    auto row = [](const char* name, Write write, Read read, QVariant value) {
        QTest::newRow(name) << write << read << value;
    };
    row("CustomProperty.Value of a number property",
        [](LatheHost& h, const QVariant& v) {
            h.op(3)->CustomProperties()->Add("Z2Position", "Z2 Position", 5, 0.1234567)->setValue(v.toString());
        },
        [](LatheHost& h) { return h.op(3)->CustomProperties()->Item("Z2Position")->Value(); }, 88.5);
    row("Component.MoveTo",
        [](LatheHost& h, const QVariant& v) {
            auto component = h.model()->Components()->Item("SubSpindle");
            auto position = component->Position();
            position->setZ(v.toDouble());
            component->MoveTo(position);
        },
        [](LatheHost& h) { return h.model()->Components()->Item("SubSpindle")->Position()->Z(); }, 150.0);
    row("Document.ActiveWorkPlane",
        [](LatheHost& h, const QVariant& v) {
            h.document()->setActiveWorkPlane(h.document()->WorkPlanes()->Item(v.toString()));
        },
        [](LatheHost& h) { return h.doc->data.activeWorkPlane; }, "YZX");
    row("Stock.Spindle",
        [](LatheHost& h, const QVariant& v) { h.addStock()->setSpindle(h.setup()->Spindles()->Item(v.toInt())); },
        [](LatheHost& h) { return h.doc->data.simulation.stocks[0]->spindle; }, 2);
}

void tst_FeldraModel::writesReachTheDocument()
{
    QFETCH(Write, write);
    QFETCH(Read, read);
    QFETCH(QVariant, value);
    LatheHost h;

    write(h, value);

    QCOMPARE(read(h), value);
    QCOMPARE(read(h).metaType(), value.metaType()); // "88.5" equals 88.5 as a QVariant
}

void tst_FeldraModel::badRequestsAreRefusedAndChangeNothing_data()
{
    QTest::addColumn<Act>("prepare");
    QTest::addColumn<Act>("request");
    QTest::addColumn<QString>("operation");

    const Act nothing = [](LatheHost&) {};
    auto row = [](const char* name, Act prepare, Act request, const char* operation) {
        QTest::newRow(name) << prepare << request << QString::fromLatin1(operation);
    };
    const Act addStock = [](LatheHost& h) { h.addStock(); };
    row("back spindle 2", nothing, [](LatheHost& h) { h.tool(1)->setBackSpindle(2); }, "Tool.BackSpindle write");
    row("spindle direction 3", nothing, [](LatheHost& h) { h.tool(1)->setSpindleDirection(3); },
        "Tool.SpindleDirection write");
    row("output unit 72", nothing, [](LatheHost& h) { h.setup()->Heads()->Item(1)->setOutputUnit(72); },
        "NCHead.OutputUnit write");
    row("text into a number property",
        [](LatheHost& h) { h.op(1)->CustomProperties()->Add("Z2Position", "Z2", 5, 1.0); },
        [](LatheHost& h) { h.op(1)->CustomProperties()->Item("Z2Position")->setValue("abc"); },
        "CustomProperty.Value write");
    row("custom property twice", nothing,
        [](LatheHost& h) { h.op(2)->CustomProperties()->Add("Comment", "C", 8, "b"); }, "CustomProperties.Add");
    row("work plane name taken", nothing, [](LatheHost& h) { h.document()->WorkPlanes()->Add("XYZ"); },
        "WorkPlanes.Add");
    row("layer name taken", nothing, [](LatheHost& h) { h.document()->Layers()->Add("0"); }, "Layers.Add");
    row("sync type out of range", nothing, [](LatheHost& h) { h.document()->Syncs()->Add(5, {}); }, "Syncs.Add");
    row("rearrange with unknown mode", nothing,
        [](LatheHost& h) { h.document()->Operations()->Rearrange({h.op(3)}, 2, true); }, "Operations.Rearrange");
    row("second stock of a name", addStock, addStock, "Simulation.AddStock");
    row("delete a missing stock", nothing, [](LatheHost& h) { h.document()->Simulation()->DeleteStock("Main Stock"); },
        "Simulation.DeleteStock");
    row("a missing stock", nothing, [](LatheHost& h) { h.document()->Simulation()->Stock("Main Stock"); },
        "Simulation.Stock");
    row("remove a chain an operation is made from", nothing,
        [](LatheHost& h) { h.document()->FeatureChains()->Remove("F1"); }, "FeatureChains.Remove");
    row("remove a chain a stock is made from",
        [](LatheHost& h) {
            h.doc->data.operations[0]->featureKey.clear();
            h.addStock();
        },
        [](LatheHost& h) { h.document()->FeatureChains()->Remove("F1"); }, "FeatureChains.Remove");
    row("remove a missing chain", nothing, [](LatheHost& h) { h.document()->FeatureChains()->Remove("F2"); },
        "FeatureChains.Remove");
    row("layer of a chain on none", nothing, [](LatheHost& h) { h.document()->FeatureChains()->Item("F1")->Layer(); },
        "Feature.Layer");
    row("button for no command", nothing,
        [](LatheHost& h) { h.app->CommandBars()->Item(23)->AddControl(1, "Ghost", 4711, 1); }, "CommandBar.AddControl");
    row("button beyond the end", [](LatheHost& h) { h.app->AddInCommands()->AddCommand(1, 3, "Marelon"); },
        [](LatheHost& h) {
            h.app->CommandBars()->Item(2)->AddControl(1, "Masks", h.host.App().commands.last().handle, 5);
        },
        "CommandBar.AddControl");
    row("command of another add-in", nothing,
        [](LatheHost& h) { h.app->AddInCommands()->AddCommand(99, 1, "Marelon"); }, "AddInCommands.AddCommand");
    row("remove a missing menu entry", nothing,
        [](LatheHost& h) { h.app->MainMenus()->Item(9)->Remove("Marelon Add-In Help"); }, "MenuControls.Remove");
    row("missing setup file", nothing, [](LatheHost& h) { h.setup()->LoadSetupFile("/tmp/x_Metric.EMS"); },
        "MachineSetup.LoadSetupFile");
}

void tst_FeldraModel::badRequestsAreRefusedAndChangeNothing()
{
    QFETCH(Act, prepare);
    QFETCH(Act, request);
    QFETCH(QString, operation);
    LatheHost h;
    prepare(h);
    const QByteArray before = snapshot(h);

    QCOMPARE(failingOperation([&] { request(h); }), operation);

    QCOMPARE(snapshot(h), before);
}

void tst_FeldraModel::rearrangeOrdersOperations_data()
{
    QTest::addColumn<QList<int>>("order"); // positions before the call; 0 an empty position
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("empty position: the left-out operation follows")
        << QList<int>{2, 0, 1} << QStringList{"Pick Up", "Cut Off", "Back Drill"};
    QTest::newRow("listed twice: refused") << QList<int>{2, 2, 1} << QStringList{"Cut Off", "Pick Up", "Back Drill"};
}

void tst_FeldraModel::rearrangeOrdersOperations()
{
    QFETCH(QList<int>, order);
    QFETCH(QStringList, expected);
    LatheHost h;
    QList<std::shared_ptr<host::Operation>> list;
    for (int position : order)
        list.append(position ? h.op(position) : nullptr);

    const QString failed = failingOperation([&] { h.document()->Operations()->Rearrange(list, 1, true); });

    QCOMPARE(failed.isEmpty(), std::set<int>(order.begin(), order.end()).size() == size_t(order.size()));
    QCOMPARE(h.operationNames(), expected.join(','));
}

void tst_FeldraModel::syncNodesFollowTheirOperations()
{
    LatheHost h;
    auto syncs = h.document()->Syncs();
    syncs->Remove(1); // the document's own
    std::array<host::SyncNode, 4> nodes{};
    nodes[0] = {4, h.op(1), 0, 7, 0};
    nodes[1] = {1, h.op(2), 0, 8, 0};
    syncs->Add(3, nodes);
    syncs->Add(0, {}); // a synchronisation of no known type is kept

    h.document()->Operations()->Rearrange({h.op(3), h.op(2), h.op(1)}, 1, true);

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
    QCOMPARE(failingOperation([&] { commands->AddCommand(commands->Cookie(), 1, "Marelon"); }),
             QStringLiteral("AddInCommands.AddCommand"));

    auto bar = h.app->CommandBars()->Item(23);
    bar->AddSeparator();
    bar->AddControl(1, "Tool Data", toolData, bar->ControlCount()); // before the last control
    auto menu = h.app->MainMenus()->Item(9);
    menu->Add(0);
    menu->Add(1, "Marelon Add-In Help", help);

    const auto& controls = h.host.App().CommandBar(23)->controls;
    QCOMPARE(controls.size(), 5);
    QCOMPARE(controls[3]->caption, QStringLiteral("Tool Data"));
    QCOMPARE(controls[4]->type, int(feldra::ControlData::Separator));
    QCOMPARE(menu->Count(), 5);

    commands->RemoveCommand(toolData);
    commands->RemoveCommand(help);

    QCOMPARE(controls.size(), 3); // the separator left at the end of the bar goes too
    QCOMPARE(menu->Count(), 4);
    QCOMPARE(menu->Item(3)->Caption(), QStringLiteral("About Feldra"));
    QVERIFY(!h.host.InvokeCommand(toolData));
}

void tst_FeldraModel::eventsReachSinksAndFailuresAreLogged_data()
{
    QTest::addColumn<Act>("raise");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("callback");

    QTest::newRow("document opened") << Act([](LatheHost& h) { h.host.OpenDocument(h.doc); })
                                     << "AfterDocumentOpen /tmp/part.fdoc" << "Application.AfterDocumentOpen";
    QTest::newRow("command about to run") << Act([](LatheHost& h) { h.host.BeforeCommandRun(3320); })
                                          << "BeforeCommand 3320" << "Application.BeforeCommandRun";
    QTest::newRow("saved") << Act([](LatheHost& h) { h.host.DocumentSaved(*h.doc); }) << "AfterDocumentSave"
                           << "Document.AfterDocumentSave";
    QTest::newRow("command") << Act([](LatheHost& h) {
        auto commands = h.app->AddInCommands();
        h.host.InvokeCommand(commands->AddCommand(commands->Cookie(), 4, "Marelon"));
    }) << "OnCommand 1 4" << "AddInCommands.OnCommand";
    QTest::newRow("operation starts") << Act([](LatheHost& h) { h.host.OperationStart(h.doc, 2); })
                                      << "OnOperationStart Pick Up" << "Simulation.OnOperationStart";
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

void tst_FeldraModel::editResultReturnsToTheHost()
{
    LatheHost h;
    Sink sink;
    adviseEverywhere(h, sink);

    const auto edit = h.host.EditTechnology(h.doc, 2, 3);

    QVERIFY(edit.bOverride);
    QCOMPARE(edit.resultCode, 30);
}

void tst_FeldraModel::localizerAndSetupFileThroughTheFacade()
{
    LatheHost h;
    // Without a localiser of the application's, texts stay English.
    QCOMPARE(h.app->CreateLocalizer()->Translate("Tool Data"), QStringLiteral("Tool Data"));

    h.setup()->LoadSetupFile(QStringLiteral(MARELON_SOURCE_DIR "/data/MachineSetups/L5 16-20/Standard_Metric.EMS"));

    QCOMPARE(h.setup()->MachineSetupName(), QStringLiteral("Standard"));
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
