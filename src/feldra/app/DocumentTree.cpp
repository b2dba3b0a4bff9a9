#include "feldra/app/DocumentTree.h"

#include "feldra/DocumentData.h"
#include "feldra/QtLocalizer.h"
#include "numeric/NumberText.h"

#include <QHeaderView>

namespace feldra {

namespace {

QTreeWidgetItem* Add(QTreeWidgetItem* parent, const QString& name, const QString& value = {})
{
    return new QTreeWidgetItem(parent, {name, value});
}

QString Number(double value) { return numeric::NumberToText(value); }

QString ValueText(const QVariant& value)
{
    return value.typeId() == QMetaType::Double ? Number(value.toDouble()) : value.toString();
}

void AddParameters(QTreeWidgetItem* parent, const Parameters& parameters)
{
    for (auto it = parameters.cbegin(); it != parameters.cend(); ++it) {
        const QString caption = it->caption.isEmpty() ? it.key() : it.key() + " " + it->caption;
        Add(parent, caption, ValueText(it->value));
    }
}

void AddMachineSetup(QTreeWidgetItem* item, const MachineSetupData& setup)
{
    Add(item, "MachineSetupName", setup.machineSetupName);
    Add(item, "MachineCode", setup.machineCode);
    Add(item, "MakerTag", setup.makerTag);
    Add(item, "StockDiameter", Number(setup.stockDiameter));
    Add(item, "StockLength", Number(setup.stockLength));
    Add(item, "PartLength", Number(setup.partLength));
    Add(item, "BarLoaderCommand", setup.barLoaderCommand);
    for (auto it = setup.params.cbegin(); it != setup.params.cend(); ++it)
        Add(item, QStringLiteral("Param%1").arg(it.key(), 3, 10, QLatin1Char('0')), Number(it.value()));
}

void AddTools(QTreeWidgetItem* item, const QList<std::shared_ptr<ToolData>>& tools)
{
    for (const auto& tool : tools) {
        auto* toolItem = Add(item, QStringLiteral("T%1 %2").arg(tool->number).arg(tool->toolId), tool->comment);
        Add(toolItem, "XShift", Number(tool->xShift));
        Add(toolItem, "YShift", Number(tool->yShift));
        Add(toolItem, "ZShift", Number(tool->zShift));
        Add(toolItem, "HolderIndex", Number(tool->holderIndex));
        Add(toolItem, "SpindleDirection", QString::number(tool->spindleDirection));
        Add(toolItem, "GearRatio", Number(tool->gearRatio));
        Add(toolItem, "BackSpindle", QString::number(tool->backSpindle));
    }
}

void AddOperations(QTreeWidgetItem* item, const QList<std::shared_ptr<OperationData>>& operations,
                   const QSet<const OperationData*>& masked)
{
    int position = 0;
    for (const auto& operation : operations) {
        ++position;
        if (masked.contains(operation.get()))
            continue;
        auto* opItem = Add(item, QStringLiteral("%1 %2").arg(position).arg(operation->name),
                           QStringLiteral("technology %1").arg(operation->technology->type));
        AddParameters(opItem, operation->technology->parameters);
    }
}

void AddSyncs(QTreeWidgetItem* item, const DocumentData& document)
{
    const auto& entries = document.machineSetup.setupEntries;
    for (const auto& sync : document.syncs) {
        const bool named = sync->typeIndex >= 1 && sync->typeIndex <= entries.size();
        QStringList operations;
        for (const SyncNodeData& node : sync->nodes)
            if (node.operationId != 0)
                operations << QString::number(node.operationId);
        Add(item, named ? entries[sync->typeIndex - 1]->name : QString::number(sync->typeIndex),
            operations.join(", "));
    }
}

} // namespace

DocumentTree::DocumentTree(QWidget* parent) : QTreeWidget(parent)
{
    setObjectName("documentTree");
    setColumnCount(2);
    header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
}

void DocumentTree::Show(const DocumentData* document, const QtLocalizer& localizer,
                        const QSet<const OperationData*>& masked)
{
    clear();
    setHeaderLabels({localizer.Translate("Item"), localizer.Translate("Value")});
    if (!document)
        return;
    auto* root = new QTreeWidgetItem(this, {document->title});
    AddMachineSetup(Add(root, localizer.Translate("Machine Setup")), document->machineSetup);
    AddTools(Add(root, localizer.Translate("Tools"), QString::number(document->tools.size())), document->tools);
    const QString count = QString::number(document->operations.size());
    AddOperations(Add(root, localizer.Translate("Operations"),
                      masked.isEmpty() ? count
                                       : count + QStringLiteral(" (") + QString::number(masked.size()) + QLatin1Char(' ')
                                             + localizer.Translate("masked") + QLatin1Char(')')),
                  document->operations, masked);
    AddSyncs(Add(root, localizer.Translate("Synchronisations"), QString::number(document->syncs.size())),
             *document);
    auto* planes = Add(root, localizer.Translate("Work Planes"), QString::number(document->workPlanes.size()));
    for (const auto& plane : document->workPlanes)
        Add(planes, plane->name, plane->name == document->activeWorkPlane ? localizer.Translate("active") : QString());
    root->setExpanded(true);
    resizeColumnToContents(0);
}

} // namespace feldra
