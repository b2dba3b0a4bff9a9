#include "MarkingLocalizer.h"
#include "addin/SimulationHooks.h"
#include "addin/host/Document.h"
#include "addin/host/Operation.h"
#include "addin/host/Simulation.h"
#include "addin/ui/UiServices.h"
#include "feldra/Host.h"
#include "numeric/NumberText.h"

#include <QtTest>

using namespace feldra;

namespace {

constexpr double kReferenceZ = -10;
constexpr double kZ2Start = 33;
constexpr double kZ2UpperLimit = 250.5;
const Point3 kComponentStart{5, 7, 9};
const QString kComponent = QStringLiteral("BackSpindle");

// The operations a test simulates, by what they do on the back spindle.
struct OperationKind {
    int technologyType;
    QList<std::pair<QString, QVariant>> parameters;
};

const QMap<QString, OperationKind>& OperationKinds()
{
    static const QMap<QString, OperationKind> kinds{
        {"main", {100, {{"797", 0}, {"792", 0}, {"793", 0}}}},
        {"mainAtZ2", {100, {{"797", 0}, {"792", 2}, {"793", 1}}}},
        {"back", {100, {{"797", 1}, {"792", 0}, {"793", 1}}}},
        {"backNo793", {100, {{"797", 1}, {"792", 0}, {"793", 0}}}},
        {"backMissing792", {100, {{"797", 1}, {"793", 1}}}},
        {"backAtZ2", {100, {{"797", 1}, {"792", 2}, {"793", 1}}}},
        {"backAtZ2Text", {100, {{"797", "1"}, {"792", "2"}, {"793", "01"}}}},
        {"back154", {154, {{"797", 1}, {"792", 0}, {"793", 1}, {"778", 2}}}},
        {"back154No778", {154, {{"797", 1}, {"792", 0}, {"793", 1}, {"778", 0}}}},
    };
    return kinds;
}

struct Lathe {
    QString makerTag = QStringLiteral("MARELON");
    int machineType = 1;
    QString machineCode = QStringLiteral("1");
    int heads = 2;
    QStringList axes{"X1", "Z1", "Z2", "Z3"};
    QStringList turret2Limits{"X2", "Z2"}; // Z2 at the upper limit, any other at 100
};

std::shared_ptr<AxisGroupData> AxisGroup(const QStringList& names)
{
    auto group = std::make_shared<AxisGroupData>();
    for (const QString& name : names)
        group->axes.append(std::make_shared<AxisData>(AxisData{name, true, name == "Z2" ? kZ2Start : 0, {}}));
    return group;
}

std::shared_ptr<DocumentState> MakeDocument(const Lathe& lathe, const QStringList& operationKinds)
{
    auto state = std::make_shared<DocumentState>();
    DocumentData& data = state->data;
    data.machineType = lathe.machineType;
    data.machineSetup.makerTag = lathe.makerTag;
    data.machineSetup.machineCode = lathe.machineCode;
    for (int i = 0; i < lathe.heads; ++i)
        data.machineSetup.heads.append(std::make_shared<NCHeadData>());
    for (int number : {1, 2}) {
        auto turret = std::make_shared<TurretData>();
        turret->number = number;
        turret->referenceZ = kReferenceZ;
        if (number == 2)
            for (const QString& name : lathe.turret2Limits)
                turret->axisLimits.append(std::make_shared<AxisLimitData>(
                    AxisLimitData{name, name == "Z2" ? kZ2UpperLimit : 100, {}}));
        data.machineSetup.turrets.append(turret);
    }
    auto& model = data.simulation.machineModel;
    model.axisGroups.append(AxisGroup(lathe.axes.mid(0, 2)));
    model.axisGroups.append(AxisGroup(lathe.axes.mid(2)));
    model.components.append(std::make_shared<ComponentData>(ComponentData{kComponent, kComponentStart, {}}));
    for (const QString& kind : operationKinds) {
        auto operation = std::make_shared<OperationData>();
        operation->technology->type = OperationKinds()[kind].technologyType;
        for (const auto& [number, value] : OperationKinds()[kind].parameters)
            operation->technology->parameters[number].value = value;
        operation->technology->parameters["498"].value = kComponent;
        data.operations.append(operation);
    }
    return state;
}

QString Text(double value) { return numeric::NumberToInvariantText(value); }

// The add-in's side of the simulation events, as the connection forwards them.
class HooksSink : public host::SimulationEvents {
public:
    explicit HooksSink(std::shared_ptr<host::Document> document) : document_(std::move(document))
    {
        document_->Simulation()->Advise(this);
    }
    void OnBegin() override { hooks_.OnBegin(*document_, *document_->Simulation()); }
    void OnOperationStart(std::shared_ptr<host::Operation> operation) override
    {
        hooks_.OnOperationStart(*document_, *operation);
    }
    void OnSimulateOperation(std::shared_ptr<host::Operation> operation) override
    {
        hooks_.OnSimulateOperation(*document_, *operation);
    }

private:
    std::shared_ptr<host::Document> document_;
    marelon::SimulationHooks hooks_;
};

// A document simulated by the host with the hooks advised. A step is an
// operation kind, simulated after its start; "start:" before it raises only
// the operation's start.
struct SimulatedLathe {
    SimulatedLathe(const Lathe& lathe, const QStringList& steps)
        : state(MakeDocument(lathe, kindsOf(steps))), steps(steps), sink(host.DocumentObject(state))
    {
    }

    // The simulation's start, then each step: the axes' states after each.
    QStringList Run()
    {
        host.SimulationBegin(*state);
        QStringList states;
        for (int position = 1; position <= steps.size(); ++position) {
            host.OperationStart(state, position);
            if (!steps[position - 1].startsWith("start:"))
                host.SimulateOperation(state, position);
            states.append(AxisStates());
        }
        return states;
    }

    // "Z2 Z3 Z2-position": "on"/"off" for each axis, "-" for a missing one.
    QString AxisStates() const
    {
        auto z2 = axis("Z2");
        auto z3 = axis("Z3");
        auto enabled = [](const auto& axis) { return !axis ? "-" : axis->enabled ? "on" : "off"; };
        return QStringLiteral("%1 %2 %3").arg(enabled(z2), enabled(z3), z2 ? Text(z2->position) : "-");
    }
    QString ComponentPosition() const
    {
        const Point3 p = state->data.simulation.machineModel.components[0]->position;
        return QStringLiteral("%1 %2 %3").arg(Text(p.x), Text(p.y), Text(p.z));
    }
    // The Z2 positions of the document's operations ("-" for none).
    QString Z2Properties() const
    {
        QStringList values;
        for (const auto& operation : state->data.operations) {
            const auto& properties = operation->customProperties;
            values.append(properties.isEmpty() ? "-" : Text(properties[0]->value.toDouble()));
        }
        return values.join(' ');
    }

    static QStringList kindsOf(QStringList steps) { return steps.replaceInStrings("start:", ""); }
    std::shared_ptr<AxisData> axis(const QString& name) const
    {
        for (const auto& group : state->data.simulation.machineModel.axisGroups)
            for (const auto& axis : group->axes)
                if (axis->name == name)
                    return axis;
        return nullptr;
    }

    feldra::Host host;
    std::shared_ptr<DocumentState> state;
    QStringList steps;
    HooksSink sink;
};

} // namespace

class tst_SimulationHooks : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { marelon::InstallUiServices(std::make_shared<MarkingLocalizer>(), nullptr); }
    void cleanupTestCase() { marelon::RemoveUiServices(); }

    void axesFollowTheOperations_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<int>("heads");
        QTest::addColumn<QStringList>("axes");
        QTest::addColumn<QStringList>("states"); // after each step: Z2, Z3, Z2's position
        QTest::addColumn<int>("returns");        // how often Z2 was sent back to the reference

        const QStringList all{"X1", "Z1", "Z2", "Z3"};
        QTest::newRow("at Z2: only Z2 on") << QStringList{"backAtZ2"} << 2 << all << QStringList{"on off 33"} << 0;
        QTest::newRow("texts compare as numbers")
            << QStringList{"backAtZ2Text"} << 2 << all << QStringList{"on off 33"} << 0;
        QTest::newRow("main spindle at Z2: Z2 off")
            << QStringList{"mainAtZ2"} << 2 << all << QStringList{"off on 33"} << 0;
        QTest::newRow("back after Z2 returns once")
            << QStringList{"backAtZ2", "back", "back"} << 2 << all
            << QStringList{"on off 33", "off off -10", "off off -10"} << 1;
        QTest::newRow("main operations keep the return pending")
            << QStringList{"backAtZ2", "main", "back"} << 2 << all
            << QStringList{"on off 33", "on off 33", "off off -10"} << 1;
        QTest::newRow("793 not 1 drops the return")
            << QStringList{"backAtZ2", "backNo793", "back"} << 2 << all
            << QStringList{"on off 33", "off off 33", "off off 33"} << 0;
        QTest::newRow("missing 792: not at Z2, still returns")
            << QStringList{"backAtZ2", "backMissing792"} << 2 << all << QStringList{"on off 33", "off off -10"} << 1;
        QTest::newRow("the start at Z2 marks the move")
            << QStringList{"start:backAtZ2", "back"} << 2 << all << QStringList{"on off 33", "off off -10"} << 1;
        QTest::newRow("type 154: its start changes nothing")
            << QStringList{"start:back154"} << 2 << all << QStringList{"on on 33"} << 0;
        QTest::newRow("type 154 on two heads: Z2") << QStringList{"back154"} << 2 << all << QStringList{"on off 33"} << 0;
        QTest::newRow("type 154 on three heads: Z3")
            << QStringList{"back154"} << 3 << all << QStringList{"off on 33"} << 0;
        QTest::newRow("type 154 without 778 = 2") << QStringList{"back154No778"} << 2 << all << QStringList{"off off 33"} << 0;
        QTest::newRow("no Z3") << QStringList{"backAtZ2", "back154"} << 3 << QStringList{"X1", "Z1", "Z2"}
                               << QStringList{"on - 33", "off - -10"} << 1;
        QTest::newRow("no Z2") << QStringList{"backAtZ2", "back154", "mainAtZ2"} << 2
                               << QStringList{"X1", "Z1", "Z3"} << QStringList{"- off -", "- off -", "- off -"} << 0;
    }
    void axesFollowTheOperations()
    {
        QFETCH(QStringList, steps);
        QFETCH(int, heads);
        QFETCH(QStringList, axes);
        QFETCH(QStringList, states);
        QFETCH(int, returns);

        Lathe lathe;
        lathe.heads = heads;
        lathe.axes = axes;
        SimulatedLathe simulation(lathe, steps);
        QCOMPARE(simulation.Run(), states);
        QCOMPARE(simulation.host.Faults().CallCount("Axis.Position write"), returns);
        QVERIFY(simulation.host.Log().FailedCallbacks().isEmpty());
    }

    void backSpindleMovesToTheZ2Position_data()
    {
        QTest::addColumn<QString>("machineCode");
        QTest::addColumn<QString>("position");

        QTest::newRow("most codes: Y = 0") << "1" << "5 0 250.5";
        QTest::newRow("6: X = 0") << "6" << "0 7 250.5";
        for (const char* code : {"9", "10", "11"})
            QTest::addRow("%s: X and Y kept", code) << code << "5 7 250.5";
        QTest::newRow("no number: X and Y kept") << "" << "5 7 250.5";
    }
    void backSpindleMovesToTheZ2Position()
    {
        QFETCH(QString, machineCode);
        QFETCH(QString, position);

        Lathe lathe;
        lathe.machineCode = machineCode;
        SimulatedLathe simulation(lathe, {"backAtZ2"});
        simulation.Run();
        QCOMPARE(simulation.ComponentPosition(), position);
    }

    void z2PositionProperty_data()
    {
        QTest::addColumn<int>("existingType"); // 0 for none
        QTest::addColumn<QVariant>("existingValue");
        QTest::addColumn<double>("z2Position");

        QTest::newRow("new: the upper limit") << 0 << QVariant() << kZ2UpperLimit;
        QTest::newRow("the user's value stays") << 5 << QVariant(42.0) << 42.0;
        QTest::newRow("placeholder counts as unset") << 5 << QVariant(0.1234567) << kZ2UpperLimit;
        QTest::newRow("text property replaced") << 8 << QVariant("42") << kZ2UpperLimit;
    }
    void z2PositionProperty()
    {
        QFETCH(int, existingType);
        QFETCH(QVariant, existingValue);
        QFETCH(double, z2Position);

        SimulatedLathe simulation(Lathe(), {"backAtZ2"});
        auto& properties = simulation.state->data.operations[0]->customProperties;
        if (existingType != 0)
            properties.append(std::make_shared<CustomPropertyData>(
                CustomPropertyData{"Z2Position", "Z2Position", existingType, existingValue, {}}));
        simulation.Run();

        QCOMPARE(properties.size(), 1);
        QCOMPARE(properties[0]->name, "Z2Position");
        QCOMPARE(properties[0]->type, 5);
        QCOMPARE(properties[0]->caption, "«Z2-Position»");
        QCOMPARE(properties[0]->value.toDouble(), z2Position);
        QCOMPARE(simulation.ComponentPosition(), "5 0 " + Text(z2Position));
    }

    void z2UpperLimitIsTurret2s()
    {
        Lathe lathe;
        lathe.turret2Limits = QStringList{"X2", "Z2", "Z2"};
        SimulatedLathe simulation(lathe, {});
        auto& turrets = simulation.state->data.machineSetup.turrets;
        turrets[1]->axisLimits[2]->upperLimit = 999;
        QCOMPARE(marelon::SimulationHooks::GetZ2UpperLimit(*simulation.host.DocumentObject(simulation.state)),
                 QVariant(kZ2UpperLimit));

        std::swap(turrets[0]->axisLimits, turrets[1]->axisLimits);
        QCOMPARE(marelon::SimulationHooks::GetZ2UpperLimit(*simulation.host.DocumentObject(simulation.state)),
                 QVariant());
    }

    void otherDocumentsAreLeftAlone_data()
    {
        QTest::addColumn<QString>("makerTag");
        QTest::addColumn<int>("machineType");

        QTest::newRow("tag in lower case") << "marelon" << 1;
        QTest::newRow("machine type 2") << "MARELON" << 2;
    }
    void otherDocumentsAreLeftAlone()
    {
        QFETCH(QString, makerTag);
        QFETCH(int, machineType);

        Lathe lathe;
        lathe.makerTag = makerTag;
        lathe.machineType = machineType;
        SimulatedLathe simulation(lathe, {"backAtZ2", "back154", "mainAtZ2"});
        QCOMPARE(simulation.Run(), QStringList(3, QStringLiteral("on on 33")));
        QCOMPARE(simulation.ComponentPosition(), "5 7 9");
        QCOMPARE(simulation.Z2Properties(), "- - -");
    }

    void aFailingCheckReachesTheHost_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QString>("callback"); // the event that fails

        for (const char* failing : {"Document.MachineType", "MachineSetup.MakerTag"})
            for (const char* callback :
                 {"Simulation.OnBegin", "Simulation.OnOperationStart", "Simulation.OnSimulateOperation"})
                QTest::addRow("%s in %s", failing, callback) << failing << callback;
        QTest::newRow("machine model") << "Simulation.MachineModel" << "Simulation.OnBegin";
    }
    void aFailingCheckReachesTheHost()
    {
        QFETCH(QString, failing);
        QFETCH(QString, callback);

        SimulatedLathe simulation(Lathe(), {"backAtZ2"});
        auto& host = simulation.host;
        auto raise = [&](const QString& event, const std::function<void()>& call) {
            if (event == callback)
                host.Faults().Fail(failing);
            call();
            host.Faults().HealAll();
        };
        raise("Simulation.OnBegin", [&] { host.SimulationBegin(*simulation.state); });
        raise("Simulation.OnOperationStart", [&] { host.OperationStart(simulation.state, 1); });
        raise("Simulation.OnSimulateOperation", [&] { host.SimulateOperation(simulation.state, 1); });

        const auto& failed = host.Log().FailedCallbacks();
        QCOMPARE(failed.size(), 1);
        QCOMPARE(failed[0].callback, callback);
        QCOMPARE(failed[0].operation, failing);
    }

    void aFailingStepIsLeftOut_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QStringList>("states");
        QTest::addColumn<QString>("component");
        QTest::addColumn<QString>("z2Properties");

        const QStringList usual{"on off 33", "off off -10"};
        QTest::newRow("switching axes") << "Axis.Enabled write" << QStringList{"on on 33", "on on -10"}
                                        << "5 0 250.5" << "250.5 -";
        QTest::newRow("axis search") << "Axis.Name" << QStringList{"on on 33", "on on 33"} << "5 0 250.5"
                                     << "250.5 -";
        QTest::newRow("component") << "Components.Item" << usual << "5 7 9" << "250.5 -";
        QTest::newRow("machine code") << "MachineSetup.MachineCode" << usual << "5 7 250.5" << "250.5 -";
        QTest::newRow("new property") << "CustomProperties.Add" << usual << "5 0 9" << "- -";
        QTest::newRow("property caption") << "CustomProperty.Caption write" << usual << "5 0 250.5" << "250.5 -";
        QTest::newRow("upper limit") << "AxisLimit.UpperLimit" << usual << "5 0 0.1234567" << "0.1234567 -";
        QTest::newRow("reference Z") << "Turret.ReferenceZ" << QStringList{"on off 33", "off off 33"}
                                     << "5 0 250.5" << "250.5 -";
        QTest::newRow("parameters") << "Technology.Parameter" << QStringList{"on on 33", "on on 33"} << "5 7 9"
                                    << "- -";
    }
    void aFailingStepIsLeftOut()
    {
        QFETCH(QString, failing);
        QFETCH(QStringList, states);
        QFETCH(QString, component);
        QFETCH(QString, z2Properties);

        SimulatedLathe simulation(Lathe(), {"backAtZ2", "back"});
        simulation.host.Faults().Fail(failing);
        QCOMPARE(simulation.Run(), states);
        QCOMPARE(simulation.ComponentPosition(), component);
        QCOMPARE(simulation.Z2Properties(), z2Properties);
        QVERIFY(simulation.host.Log().FailedCallbacks().isEmpty());
    }
};

QTEST_MAIN(tst_SimulationHooks)
#include "tst_SimulationHooks.moc"
