#include "feldra/app/DocumentTree.h"

#include "feldra/DocumentData.h"
#include "feldra/NcListing.h"
#include "feldra/QtLocalizer.h"
#include "feldra/StockSection.h"
#include "feldra/app/StockDrawing.h"
#include "numeric/NumberText.h"

#include <QHash>
#include <QHeaderView>
#include <QScrollBar>

namespace feldra {

namespace {

QString Number(double value) { return numeric::NumberToText(value); }

QString ValueText(const QVariant& value)
{
    return value.typeId() == QMetaType::Double ? Number(value.toDouble()) : value.toString();
}

// A record's key: the record itself, which stays the same while the document is open.
QString RecordKey(const void* record) { return QString::number(quintptr(record), 16); }

// Builds the items of one document with the window's localiser.
class TreeBuilder {
public:
    TreeBuilder(const DocumentData& document, const QtLocalizer& localizer, const QSet<const OperationData*>& masked)
        : document_(document), localizer_(localizer), masked_(masked)
    {
        for (qsizetype i = 0; i < document.operations.size(); ++i)
            if (document.operations[i])
                byId_.insert(document.operations[i]->id, {int(i + 1), document.operations[i].get()});
    }

    // The cross-section items and their outlines: their drawings go in once the items are in the tree.
    using Drawings = QList<std::pair<QTreeWidgetItem*, QList<QPointF>>>;

    Drawings Build(QTreeWidget* tree)
    {
        auto* root = new QTreeWidgetItem(tree, {document_.title});
        root->setData(0, DocumentTree::kKeyRole, QStringLiteral("document"));
        addMachineSetup(section(root, "setup", "Machine Setup"));
        addTools(section(root, "tools", "Tools", Count(document_.tools.size())));
        addOperations(section(root, "operations", "Operations", operationCount()));
        addSyncs(section(root, "syncs", "Synchronisations", Count(document_.syncs.size())));
        addWorkPlanes(section(root, "planes", "Work Planes", Count(document_.workPlanes.size())));
        return addStocks(section(root, "stocks", "Stocks", Count(document_.simulation.stocks.size())));
    }

private:
    static QString Count(qsizetype n) { return QString::number(n); }
    QString tr(const char* english) const { return localizer_.Translate(QString::fromUtf8(english)); }

    static QTreeWidgetItem* add(QTreeWidgetItem* parent, const QString& key, const QString& name,
                                const QString& value = {})
    {
        auto* item = new QTreeWidgetItem(parent, {name, value});
        item->setData(0, DocumentTree::kKeyRole, key);
        return item;
    }
    // An item under a fixed caption: the caption is its key.
    QTreeWidgetItem* field(QTreeWidgetItem* parent, const char* caption, const QString& value) const
    {
        return add(parent, QString::fromUtf8(caption), tr(caption), value);
    }
    QTreeWidgetItem* section(QTreeWidgetItem* parent, const char* key, const char* caption,
                             const QString& value = {}) const
    {
        return add(parent, QString::fromUtf8(key), tr(caption), value);
    }

    void addMachineSetup(QTreeWidgetItem* item) const
    {
        const MachineSetupData& setup = document_.machineSetup;
        field(item, "Machine Setup Name", setup.machineSetupName);
        field(item, "Machine Code", setup.machineCode);
        field(item, "Maker Tag", setup.makerTag);
        field(item, "Stock Diameter", Number(setup.stockDiameter));
        field(item, "Stock Inside Diameter", Number(setup.stockInsideDiameter));
        field(item, "Stock Length", Number(setup.stockLength));
        field(item, "Stock Front Z", Number(setup.stockFrontZ));
        field(item, "Part Length", Number(setup.partLength));
        QSet<int> named;
        for (const DataPageParameter& parameter : DataPageParameters()) {
            named.insert(parameter.number);
            const auto it = setup.params.constFind(parameter.number);
            add(item, QString::number(parameter.number),
                QString::number(parameter.number) + QLatin1Char(' ') + tr(parameter.caption),
                it == setup.params.cend() ? tr("(not set)") : Number(*it));
        }
        for (auto it = setup.params.cbegin(); it != setup.params.cend(); ++it)
            if (!named.contains(it.key()))
                add(item, QString::number(it.key()), QString::number(it.key()), Number(it.value()));
        field(item, "Face Amount", Number(setup.faceAmount));
        field(item, "Startup Spindle Speed", Number(setup.startupSpindleSpeed));
        field(item, "Bar Loader Dwell (s)", Number(setup.barLoaderDwell));
        field(item, "Bar Loader Type", Number(setup.barLoaderType));
        field(item, "Bar Loader Sub Program", setup.barLoaderSubProgram);
        field(item, "Bar Loader Command", setup.barLoaderCommand);
    }

    QString spindleDirection(int direction) const
    {
        switch (direction) {
        case -1: return tr("Forward");
        case 0: return tr("None");
        case 1: return tr("Reverse");
        default: return QString::number(direction);
        }
    }

    void addTools(QTreeWidgetItem* item) const
    {
        for (const auto& tool : document_.tools) {
            const QString summary = QStringLiteral("X %1  Y %2  Z %3,  %4,  %5 %6")
                                        .arg(Number(tool->xShift), Number(tool->yShift), Number(tool->zShift),
                                             spindleDirection(tool->spindleDirection), tr("Gear Ratio"),
                                             Number(tool->gearRatio));
            auto* toolItem = add(item, RecordKey(tool.get()), QStringLiteral("T%1 %2").arg(tool->number).arg(tool->toolId),
                                 summary);
            field(toolItem, "X Shift", Number(tool->xShift));
            field(toolItem, "Y Shift", Number(tool->yShift));
            field(toolItem, "Z Shift", Number(tool->zShift));
            field(toolItem, "Spindle Rotation", spindleDirection(tool->spindleDirection));
            field(toolItem, "Gear Ratio", Number(tool->gearRatio));
            field(toolItem, "Holder", Number(tool->holderIndex));
            field(toolItem, "Turret", QString::number(tool->turretNumber));
            field(toolItem, "Station", QString::number(tool->stationIndex));
            field(toolItem, "Back Spindle", tool->backSpindle ? tr("yes") : tr("no"));
            field(toolItem, "Comment", tool->comment);
        }
    }

    QString operationCount() const
    {
        const QString count = Count(document_.operations.size());
        return masked_.isEmpty() ? count
                                 : count + QStringLiteral(" (") + QString::number(masked_.size()) + QLatin1Char(' ')
                                       + tr("masked") + QLatin1Char(')');
    }

    void addOperations(QTreeWidgetItem* item) const
    {
        int number = 0;
        for (const auto& operation : document_.operations) {
            ++number;
            if (masked_.contains(operation.get()))
                continue;
            auto* opItem = add(item, RecordKey(operation.get()), QStringLiteral("%1 %2").arg(number).arg(operation->name),
                               tr("Technology") + QLatin1Char(' ') + QString::number(operation->technology->type));
            opItem->setData(0, DocumentTree::kOperationRole, number);
            for (auto it = operation->technology->parameters.cbegin(); it != operation->technology->parameters.cend(); ++it)
                add(opItem, it.key(), it->caption.isEmpty() ? it.key() : it.key() + QLatin1Char(' ') + it->caption,
                    ValueText(it->value));
        }
    }

    // "3 Face" for an operation of the document by its id.
    QString operationName(int id) const
    {
        const auto it = byId_.constFind(id);
        if (it == byId_.cend())
            return tr("(missing)");
        return QStringLiteral("%1 %2").arg(it->first).arg(it->second->name);
    }

    void addSyncs(QTreeWidgetItem* item) const
    {
        const auto& entries = document_.machineSetup.setupEntries;
        for (const auto& sync : document_.syncs) {
            const bool named = sync->typeIndex >= 1 && sync->typeIndex <= entries.size()
                               && !entries[sync->typeIndex - 1]->name.isEmpty();
            QStringList operations;
            for (const SyncNodeData& node : sync->nodes)
                if (node.operationId != 0)
                    operations << operationName(node.operationId);
            add(item, RecordKey(sync.get()), named ? entries[sync->typeIndex - 1]->name : tr("(no type)"),
                operations.join(QStringLiteral(", ")));
        }
    }

    void addWorkPlanes(QTreeWidgetItem* item) const
    {
        for (const auto& plane : document_.workPlanes)
            add(item, RecordKey(plane.get()), plane->name,
                plane->name == document_.activeWorkPlane ? tr("active") : QString());
    }

    Drawings addStocks(QTreeWidgetItem* item) const
    {
        Drawings drawings;
        for (const auto& stock : document_.simulation.stocks) {
            auto* stockItem = add(item, RecordKey(stock.get()), stock->name,
                                  QStringLiteral("%1 %2, %3 %4").arg(tr("Start"), Number(stock->start), tr("Length"),
                                                                     Number(stock->length)));
            field(stockItem, "Kind", StockKindText(stock->kind, localizer_));
            field(stockItem, "Start", Number(stock->start));
            field(stockItem, "Length", Number(stock->length));
            const QList<QPointF> outline = StockCrossSection(document_, *stock);
            field(stockItem, "Profile", outline.isEmpty() ? stock->featureKey + QStringLiteral(" ") + tr("(missing)")
                                                          : stock->featureKey);
            if (!outline.isEmpty())
                drawings.append({field(stockItem, "Cross-section", QString()), outline});
        }
        return drawings;
    }

    const DocumentData& document_;
    const QtLocalizer& localizer_;
    const QSet<const OperationData*>& masked_;
    QHash<int, std::pair<int, const OperationData*>> byId_;
};

} // namespace

QString StockKindText(int kind, const QtLocalizer& localizer)
{
    return kind == 1 ? QStringLiteral("1 (") + localizer.Translate("swept profile") + QLatin1Char(')')
                     : QString::number(kind);
}

DocumentTree::DocumentTree(QWidget* parent) : QTreeWidget(parent)
{
    setObjectName("documentTree");
    setColumnCount(2);
    header()->setSectionResizeMode(0, QHeaderView::Interactive);
}

QString DocumentTree::PathOf(const QTreeWidgetItem* item)
{
    QStringList keys;
    for (; item; item = item->parent())
        keys.prepend(item->data(0, kKeyRole).toString());
    return keys.join(QLatin1Char('/'));
}

QTreeWidgetItem* DocumentTree::ItemAt(const QString& path) const
{
    QTreeWidgetItem* item = nullptr;
    for (const QString& key : path.split(QLatin1Char('/'))) {
        const int count = item ? item->childCount() : topLevelItemCount();
        QTreeWidgetItem* next = nullptr;
        for (int i = 0; i < count && !next; ++i) {
            QTreeWidgetItem* child = item ? item->child(i) : topLevelItem(i);
            if (child->data(0, kKeyRole).toString() == key)
                next = child;
        }
        if (!next)
            return nullptr;
        item = next;
    }
    return item;
}

DocumentTree::ViewState DocumentTree::state() const
{
    ViewState state;
    state.any = topLevelItemCount() > 0;
    for (QTreeWidgetItemIterator it(const_cast<DocumentTree*>(this)); *it; ++it)
        if ((*it)->isExpanded())
            state.expanded.insert(PathOf(*it));
    state.current = currentItem() ? PathOf(currentItem()) : QString();
    state.scroll = verticalScrollBar()->value();
    return state;
}

void DocumentTree::restore(const ViewState& state)
{
    for (QTreeWidgetItemIterator it(this); *it; ++it)
        if (state.expanded.contains(PathOf(*it)))
            (*it)->setExpanded(true);
    if (!state.any && topLevelItemCount() > 0)
        topLevelItem(0)->setExpanded(true); // the first document shows its sections
    if (QTreeWidgetItem* current = ItemAt(state.current))
        setCurrentItem(current);
    verticalScrollBar()->setValue(state.scroll);
}

void DocumentTree::Show(const DocumentData* document, const QtLocalizer& localizer,
                        const QSet<const OperationData*>& masked)
{
    const ViewState before = state();
    setUpdatesEnabled(false);
    clear();
    setHeaderLabels({localizer.Translate("Item"), localizer.Translate("Value")});
    if (document) {
        for (const auto& [item, outline] : TreeBuilder(*document, localizer, masked).Build(this)) {
            auto* drawing = new StockDrawing;
            drawing->setFixedSize(drawing->sizeHint());
            drawing->SetOutline(outline);
            setItemWidget(item, 1, drawing);
        }
        restore(before);
        if (!before.any) // later the user's column width stays
            setColumnWidth(0, std::max(sizeHintForColumn(0), 280));
    }
    setUpdatesEnabled(true);
}

} // namespace feldra
