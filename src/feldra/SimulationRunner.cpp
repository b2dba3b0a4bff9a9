#include "feldra/SimulationRunner.h"

#include "feldra/Host.h"

#include <QHash>

namespace feldra {

namespace {

AxisState AxisNamed(const MachineModelData& model, const QString& name)
{
    for (const auto& group : model.axisGroups)
        for (const auto& axis : group->axes)
            if (axis->name == name)
                return {true, axis->enabled, axis->position};
    return {};
}

QHash<QString, Point3> ComponentPositions(const MachineModelData& model)
{
    QHash<QString, Point3> positions;
    for (const auto& component : model.components)
        positions.insert(component->key, component->position);
    return positions;
}

} // namespace

QList<SimulatedOperation> SimulationRunner::Run(const std::shared_ptr<DocumentState>& document)
{
    QList<SimulatedOperation> result;
    const Host::Step step(host_, QStringLiteral("Simulate"));
    host_.SimulationBegin(*document);
    const MachineModelData& model = document->data.simulation.machineModel;
    for (int position = 1; position <= document->data.operations.size(); ++position) {
        SimulatedOperation simulated;
        simulated.position = position;
        simulated.name = document->data.operations[position - 1]->name;
        simulated.z2Before = AxisNamed(model, "Z2");
        simulated.z3Before = AxisNamed(model, "Z3");
        const QHash<QString, Point3> before = ComponentPositions(model);
        host_.OperationStart(document, position);
        host_.SimulateOperation(document, position);
        simulated.z2 = AxisNamed(model, "Z2");
        simulated.z3 = AxisNamed(model, "Z3");
        for (const auto& component : model.components)
            if (!before.contains(component->key) || before.value(component->key) != component->position)
                simulated.moved.append({component->key, component->position.z});
        result.append(simulated);
    }
    return result;
}

} // namespace feldra
