#include "AutoSyncDocuments.h"

#include <algorithm>

namespace autosynctest {

namespace {

void SetParameter(feldra::Parameters& parameters, const QString& name, const QVariant& value)
{
    if (value.isValid())
        parameters.insert(name, feldra::ParameterData{value, QString(), {}});
}

QString NodeText(const feldra::DocumentData& document, const feldra::SyncNodeData& node)
{
    QString operation = QStringLiteral("-");
    for (const auto& candidate : document.operations)
        if (node.operationId != 0 && candidate->id == node.operationId)
            operation = candidate->name;
    return QStringLiteral("%1 P%2 E%3").arg(operation).arg(node.placement).arg(node.elementIndex);
}

bool IsEmpty(const feldra::SyncNodeData& node)
{
    return node.operationId == 0 && node.placement == 0 && node.elementIndex == 0;
}

} // namespace

DocumentBuilder::DocumentBuilder()
{
    data_.title = QStringLiteral("Auto Sync test");
    data_.machineSetup.machineCode = QStringLiteral("7");
    SetupEntries({"G821", "G820", "G811", "G810", "M77"});
}

DocumentBuilder& DocumentBuilder::SetupEntries(const QStringList& names)
{
    data_.machineSetup.setupEntries.clear();
    for (const QString& name : names)
        data_.machineSetup.setupEntries.append(std::make_shared<feldra::SetupEntryData>(feldra::SetupEntryData{name, {}}));
    return *this;
}

DocumentBuilder& DocumentBuilder::Tool(int number, const QString& toolId)
{
    auto tool = std::make_shared<feldra::ToolData>();
    tool->number = number;
    tool->toolId = toolId;
    tool->toolType = 17;
    data_.tools.append(tool);
    return *this;
}

DocumentBuilder& DocumentBuilder::StandardTools()
{
    for (int number : {1, 2, 3, 4, 5, 6, 7, 21, 22, 23})
        Tool(number, QStringLiteral("T%1").arg(number, 2, 10, QLatin1Char('0')));
    return *this;
}

DocumentBuilder& DocumentBuilder::Operation(const OperationPlan& plan)
{
    auto operation = std::make_shared<feldra::OperationData>();
    operation->id = int(data_.operations.size()) + 1;
    operation->key = QStringLiteral("OP%1").arg(operation->id);
    operation->name = plan.name;
    operation->technology->type = plan.type;
    SetParameter(operation->technology->parameters, QStringLiteral("ToolID"), plan.toolId);
    SetParameter(operation->technology->parameters, QStringLiteral("HeadID"), plan.headId);
    SetParameter(operation->technology->parameters, QStringLiteral("SpindleID"), plan.spindleId);
    data_.operations.append(operation);
    return *this;
}

DocumentBuilder& DocumentBuilder::Sync(int typeIndex, const QList<NodeSpec>& nodes)
{
    auto sync = std::make_shared<feldra::SyncData>();
    sync->typeIndex = typeIndex;
    for (qsizetype i = 0; i < nodes.size() && i < 4; ++i) {
        sync->nodes[i].operationId = nodes[i].operationId;
        sync->nodes[i].placement = nodes[i].placement;
        sync->nodes[i].elementIndex = nodes[i].elementIndex;
    }
    data_.syncs.append(sync);
    return *this;
}

std::shared_ptr<feldra::DocumentState> DocumentBuilder::Build() const
{
    auto document = std::make_shared<feldra::DocumentState>();
    document->data = data_;
    return document;
}

QStringList OrderOf(const feldra::DocumentData& document)
{
    QStringList names;
    for (const auto& operation : document.operations)
        names.append(operation->name);
    return names;
}

QStringList SyncsOf(const feldra::DocumentData& document)
{
    QStringList syncs;
    for (const auto& sync : document.syncs) {
        const auto& entries = document.machineSetup.setupEntries;
        QString text = sync->typeIndex >= 1 && sync->typeIndex <= entries.size()
                           ? entries[sync->typeIndex - 1]->name
                           : QStringLiteral("(%1)").arg(sync->typeIndex);
        QStringList nodes;
        for (const auto& node : sync->nodes)
            if (!IsEmpty(node))
                nodes.append(NodeText(document, node));
        syncs.append(text + QLatin1Char(' ') + nodes.join(QStringLiteral(" / ")));
    }
    return syncs;
}

std::shared_ptr<feldra::DocumentState> RandomDocument(std::mt19937& random, int operations, int syncs,
                                                      bool uniqueNames, double backToolShare)
{
    auto chance = [&](double p) { return std::bernoulli_distribution(p)(random); };
    auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };

    QStringList entries{"G821", "G820", "G811", "G810", "M77", "G650"};
    std::shuffle(entries.begin(), entries.end(), random);
    if (chance(0.2))
        entries.removeAt(pick(0, int(entries.size()) - 1));
    if (chance(0.1))
        entries.insert(pick(0, int(entries.size())), entries[pick(0, int(entries.size()) - 1)]);

    DocumentBuilder builder;
    builder.SetupEntries(entries).StandardTools();
    if (chance(0.2))
        builder.Tool(22, QString()); // a back tool without identifier, which a missing "ToolID" names

    const bool withCutoff = chance(0.8);
    const bool withPickup = chance(0.8);
    const int namePool = std::max(2, operations * 2 / 3);
    for (int j = 1; j <= operations; ++j) {
        OperationPlan plan;
        plan.name = QStringLiteral("Op %1").arg(uniqueNames ? j : pick(1, namePool));
        const int kind = pick(0, 19);
        plan.type = withCutoff && kind == 0 ? (chance(0.5) ? 153 : 398)
                    : withPickup && kind == 1 ? 207
                                              : QList<int>{44, 145, 148, 37, 154}[pick(0, 4)];
        if (chance(0.08))
            plan.toolId = QVariant(); // no "ToolID"
        else if (chance(0.08))
            plan.toolId = QStringLiteral("T99"); // names no tool
        else if (chance(backToolShare))
            plan.toolId = QStringLiteral("T%1").arg(pick(21, 23));
        else
            plan.toolId = QStringLiteral("T%1").arg(pick(1, 7), 2, 10, QLatin1Char('0'));
        plan.headId = chance(0.05) ? QVariant() : QVariant(chance(0.75) ? 1 : 2);
        plan.spindleId = chance(0.05) ? QVariant() : QVariant(chance(0.8) ? 1 : 2);
        builder.Operation(plan);
    }
    for (int s = 0; s < syncs; ++s) {
        QList<NodeSpec> nodes;
        const int count = pick(2, 4);
        for (int node = 0; node < count; ++node)
            nodes.append({pick(0, operations + 2), pick(1, 4), pick(0, 3 * syncs)}); // ids past the last are deleted
        builder.Sync(pick(0, int(entries.size())), nodes);
    }
    return builder.Build();
}

QStringList ShuffledNames(std::mt19937& random, const feldra::DocumentData& document)
{
    QStringList names = OrderOf(document);
    std::shuffle(names.begin(), names.end(), random);
    return names;
}

} // namespace autosynctest
