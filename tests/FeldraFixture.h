#pragma once

#include "addin/host/HostFacade.h"
#include "feldra/DocumentData.h"
#include "feldra/Host.h"

#include <functional>
#include <memory>
#include <utility>

// A small lathe document for tests of the Feldra host: a machine setup with the
// synchronisation entries, two turrets (stations 21 to 23 on the second), two
// spindles and two heads; three tools (kinds 17, 18, 16); three operations
// (cut-off 153, pick-up 207 with a custom property, type 154) and a
// synchronisation between the first two; a feature, the three standard work
// planes, a layer and a machine model with a component "SubSpindle".
namespace fixture {

// A new record, filled in by fill.
template <class T, class Fill>
std::shared_ptr<T> make(Fill fill)
{
    auto record = std::make_shared<T>();
    fill(*record);
    return record;
}

template <class T>
std::shared_ptr<T> named(const QString& name)
{
    return make<T>([&](T& r) { r.name = name; });
}

inline std::shared_ptr<feldra::DocumentState> LatheDocument()
{
    using namespace feldra;
    auto doc = std::make_shared<DocumentState>();
    doc->fileName = QStringLiteral("/tmp/part.fdoc");
    DocumentData& d = doc->data;

    MachineSetupData& s = d.machineSetup;
    s.params = {{893, 2}};
    for (const char* name : {"G821", "G820", "G811", "G810"})
        s.setupEntries.append(named<SetupEntryData>(QString::fromLatin1(name)));
    auto back = make<TurretData>([](TurretData& t) { t.number = 2; });
    for (int n : {1, 2, 3})
        back->stations.append(make<StationData>([n](StationData& st) { st.number = 20 + n; }));
    s.turrets = {make<TurretData>([](TurretData& t) { t.number = 1; }), back};
    for (int n : {1, 2}) {
        s.spindles.append(make<SpindleData>([n](SpindleData& sp) { sp.number = n; }));
        s.heads.append(std::make_shared<NCHeadData>());
    }

    // (clang 14 cannot capture structured bindings: the pair is captured whole)
    for (const auto& tool : {std::pair{1, 17}, std::pair{2, 18}, std::pair{21, 16}})
        d.tools.append(make<ToolData>([&tool](ToolData& t) {
            t.number = tool.first;
            t.toolId = QStringLiteral("T%1").arg(tool.first);
            t.toolType = tool.second;
        }));
    d.tools.first()->width = 2.5;

    auto operation = [&](const QString& name, int type, const QString& toolId) {
        auto op = std::make_shared<OperationData>();
        op->id = int(d.operations.size()) + 1;
        op->key = QStringLiteral("Op%1").arg(op->id);
        op->name = name;
        op->technology->type = type;
        op->technology->parameters.insert(QStringLiteral("498"), {toolId, QStringLiteral("Tool"), {}});
        op->technology->parameters.insert(QStringLiteral("797"), {1, QString(), {}});
        d.operations.append(op);
        return op;
    };
    operation(QStringLiteral("Cut Off"), 153, QStringLiteral("T1"))->featureKey = QStringLiteral("F1");
    auto pickUp = operation(QStringLiteral("Pick Up"), 207, QStringLiteral("T2"));
    pickUp->technology->colletExtension = 3.5;
    pickUp->customProperties.append(make<CustomPropertyData>([](CustomPropertyData& p) {
        p.name = p.caption = QStringLiteral("Comment");
        p.type = 8;
        p.value = QStringLiteral("keep");
    }));
    pickUp->geometry = {{902, QList<Point3>{Point3{1, 2, 3}}, {}}, {903, QList<Point3>{Point3{4, 5, 6}}, {}}};
    operation(QStringLiteral("Back Drill"), 154, QString());

    d.syncs.append(make<SyncData>([](SyncData& sync) {
        sync.typeIndex = 3; // "G811": cut-off and pick-up
        sync.nodes[0] = {4, 1, 0, 1, 0, {}};
        sync.nodes[1] = {1, 2, 0, 1, 0, {}};
    }));

    auto feature = make<FeatureData>([](FeatureData& f) { f.key = QStringLiteral("F1"); });
    feature->elements = {{0, 0, 0}, {12.5, 0, -3}};
    d.features = {feature};
    for (const char* name : {"XYZ", "YZX", "ZXY"})
        d.workPlanes.append(named<WorkPlaneData>(QString::fromLatin1(name)));
    d.activeWorkPlane = QStringLiteral("XYZ");
    d.layers = {named<LayerData>(QStringLiteral("0"))};

    d.simulation.machineModel.components = {make<ComponentData>([](ComponentData& c) {
        c.key = QStringLiteral("SubSpindle");
        c.position = {7, 8, 9};
    })};
    return doc;
}

// A host with the lathe document open and the application as an add-in sees it.
struct LatheHost {
    feldra::Host host;
    std::shared_ptr<feldra::DocumentState> doc = LatheDocument();
    std::shared_ptr<host::Application> app;

    LatheHost()
    {
        host.Activate(doc);
        app = host.ApplicationFor(QStringLiteral("Test.Connect"));
    }
    std::shared_ptr<host::Document> document() { return app->ActiveDocument(); }
    std::shared_ptr<host::MachineSetup> setup() { return document()->MachineSetup(); }
    std::shared_ptr<host::Tool> tool(int i) { return document()->Tools()->Item(i); }
    std::shared_ptr<host::Operation> op(int i) { return document()->Operations()->Item(i); }
    std::shared_ptr<host::MachineModel> model() { return document()->Simulation()->MachineModel(); }
    std::shared_ptr<host::Stock> addStock()
    {
        return document()->Simulation()->AddStock("Main Stock", 1, document()->FeatureChains()->Item("F1"), 40, 0);
    }
    QString operationNames() const
    {
        QStringList names;
        for (const auto& operation : doc->data.operations)
            names << operation->name;
        return names.join(QLatin1Char(','));
    }
};

// The facade operation that failed, or an empty text when the action succeeded.
inline QString failingOperation(const std::function<void()>& action)
{
    try {
        action();
    } catch (const host::HostError& error) {
        return error.Operation();
    }
    return QString();
}

} // namespace fixture
