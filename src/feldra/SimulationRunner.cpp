#include "feldra/SimulationRunner.h"

#include "feldra/Host.h"

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

} // namespace

QList<SimulatedOperation> SimulationRunner::Run(const std::shared_ptr<DocumentState>& document)
{
    QList<SimulatedOperation> result;
    host_.SimulationBegin(*document);
    for (int position = 1; position <= document->data.operations.size(); ++position) {
        host_.OperationStart(document, position);
        host_.SimulateOperation(document, position);
        const MachineModelData& model = document->data.simulation.machineModel;
        result.append({position, document->data.operations[position - 1]->name, AxisNamed(model, "Z2"),
                       AxisNamed(model, "Z3")});
    }
    return result;
}

} // namespace feldra
