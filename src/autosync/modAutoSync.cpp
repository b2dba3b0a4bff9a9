#include "autosync/modAutoSync.h"

#include "addin/host/Document.h"
#include "addin/host/HostError.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/Operation.h"
#include "addin/host/Operations.h"
#include "addin/host/SetupEntries.h"
#include "addin/host/SetupEntry.h"
#include "addin/host/Sync.h"
#include "addin/host/Syncs.h"
#include "addin/host/Technology.h"
#include "addin/host/TechnologyParameter.h"
#include "addin/host/Tool.h"
#include "addin/host/Tools.h"
#include "numeric/NumberText.h"

#include <QLocale>
#include <QVariant>
#include <algorithm>

namespace marelon {

namespace {

// The value of a technology parameter; empty when the technology has no such parameter.
QVariant ParameterValue(host::Technology& technology, const QString& name)
{
    std::shared_ptr<host::TechnologyParameter> parameter;
    try {
        parameter = technology.Parameter(name);
    } catch (const host::HostError&) {
        return {};
    }
    return parameter->Value();
}

// A parameter value as text, as a tool identifier is compared.
QString TextOf(const QVariant& value)
{
    if (value.typeId() == QMetaType::QString || !value.isValid())
        return value.toString();
    const std::optional<double> number = numeric::VariantToNumber(value, QLocale::c());
    return number ? numeric::NumberToInvariantText(*number) : value.toString();
}

bool IsBackSpindleTool(int toolNumber)
{
    return toolNumber >= 21 && toolNumber <= 23;
}

bool IsCutoff(int technologyType)
{
    return technologyType == 153 || technologyType == 398;
}

constexpr int kPickupType = 207;

// The number of the first tool of each identifier.
QHash<QString, int> ToolNumbersById(host::Tools& tools)
{
    QHash<QString, int> numbers;
    const int count = tools.Count();
    for (int i = 1; i <= count; ++i) {
        const auto tool = tools.Item(i);
        const QString id = tool->ToolID();
        if (!numbers.contains(id))
            numbers.insert(id, tool->Number());
    }
    return numbers;
}

// The position of the first setup entry of each name, from 1.
QHash<QString, int> TypeIndices(host::SetupEntries& entries)
{
    QHash<QString, int> indices;
    const int count = entries.Count();
    for (int i = 1; i <= count; ++i) {
        const QString name = entries.Item(i)->Name();
        if (!indices.contains(name))
            indices.insert(name, i);
    }
    return indices;
}

} // namespace

const QStringList& AutoSyncMachines()
{
    static const QStringList machines{
        QStringLiteral("B12"),      QStringLiteral("B2-12/20"), QStringLiteral("C-12/16"),
        QStringLiteral("E2-16J/25J/32"), QStringLiteral("E2-32IV"), QStringLiteral("L3-16/20"),
        QStringLiteral("L4-25/32"), QStringLiteral("L5-16/20"), QStringLiteral("L6-32"),
        QStringLiteral("M20"),      QStringLiteral("M2-12/16"), QStringLiteral("M2/3-20/32"),
        QStringLiteral("R04-VI"),
    };
    return machines;
}

bool IsAutoSyncSupported(const QString& machine)
{
    return machine == QLatin1String("L3-16/20") || machine == QLatin1String("L4-25/32")
           || machine == QLatin1String("L5-16/20");
}

AutoSync::AutoSync(std::shared_ptr<host::Document> document, QStringList list)
    : document_(std::move(document)), list_(std::move(list)), listed_(list_.cbegin(), list_.cend())
{
    readOperations();
    typeIndex_ = TypeIndices(*document_->MachineSetup()->SetupEntries());
    indexNames();
}

void AutoSync::readOperations()
{
    const QHash<QString, int> toolNumbers = ToolNumbersById(*document_->Tools());
    const auto operations = document_->Operations();
    const int count = operations->Count();
    operations_.reserve(count);
    for (int j = 1; j <= count; ++j) {
        SyncOperation read;
        read.operation = operations->Item(j);
        read.name = read.operation->Name();
        const auto technology = read.operation->Technology();
        read.technologyType = technology->TechnologyType();
        // A "ToolID" that names no tool of the document is not back-spindle work.
        const auto tool = toolNumbers.constFind(TextOf(ParameterValue(*technology, QStringLiteral("ToolID"))));
        read.backTool = tool != toolNumbers.cend() && IsBackSpindleTool(*tool);
        read.headOne = numeric::VariantToNumber(ParameterValue(*technology, QStringLiteral("HeadID")), QLocale::c()) == 1.0;
        const std::optional<double> spindle = numeric::VariantToNumber(ParameterValue(*technology, QStringLiteral("SpindleID")), QLocale::c());
        read.backSpindle = spindle && *spindle > 1;
        operations_.append(std::move(read));
    }
}

// The name look-ups, and the first back-spindle operation of the list, for
// the document's present order.
void AutoSync::indexNames()
{
    firstByName_.clear();
    lastByName_.clear();
    for (qsizetype j = 0; j < operations_.size(); ++j) {
        if (!firstByName_.contains(operations_[j].name))
            firstByName_.insert(operations_[j].name, j);
        lastByName_.insert(operations_[j].name, j);
    }
    firstBackSpindle_.reset();
    for (const QString& entry : list_) {
        const SyncOperation* operation = firstNamed(entry);
        if (operation && operation->backSpindle) {
            firstBackSpindle_ = operation->operation;
            break;
        }
    }
}

const SyncOperation* AutoSync::firstNamed(const QString& name) const
{
    const auto found = firstByName_.constFind(name);
    return found == firstByName_.cend() ? nullptr : &operations_[*found];
}

ListCheck AutoSync::CheckList(QString* repeatedName) const
{
    if (firstByName_.size() != operations_.size()) {
        if (repeatedName) {
            for (qsizetype j = 0; j < operations_.size(); ++j)
                if (firstByName_.value(operations_[j].name) != j) {
                    *repeatedName = operations_[j].name;
                    break;
                }
        }
        return ListCheck::NameRepeated;
    }
    // With every name used once, the list fits when it names each operation once.
    if (list_.size() != operations_.size() || listed_.size() != list_.size())
        return ListCheck::Outdated;
    const bool allFound = std::all_of(list_.cbegin(), list_.cend(),
                                      [this](const QString& entry) { return firstByName_.contains(entry); });
    return allFound ? ListCheck::Fits : ListCheck::Outdated;
}

CutoffAndPickup AutoSync::Run()
{
    Arrange();
    RemoveAllSyncs();
    SyncSubSpindleOps();
    return SyncCutoffAndPickup();
}

QList<std::shared_ptr<host::Operation>> AutoSync::OperationOrder() const
{
    QList<std::shared_ptr<host::Operation>> order(operations_.size());
    for (qsizetype i = 0; i < list_.size() && i < order.size(); ++i) {
        const auto found = lastByName_.constFind(list_[i]);
        if (found != lastByName_.cend())
            order[i] = operations_[*found].operation;
    }
    return order;
}

void AutoSync::Arrange()
{
    const auto order = OperationOrder();
    document_->Operations()->Rearrange(order, 1, true);

    // The document now runs in the list's order.
    QHash<host::Operation*, SyncOperation> byObject;
    for (SyncOperation& operation : operations_)
        byObject.insert(operation.operation.get(), std::move(operation));
    operations_.clear();
    for (const auto& operation : order)
        operations_.append(byObject.take(operation.get()));
    indexNames();
}

void AutoSync::RemoveAllSyncs()
{
    for (int i = document_->Syncs()->Count(); i >= 1; --i)
        document_->Syncs()->Remove(i);
    nextElementIndex_ = 0;
}

std::shared_ptr<host::Sync> AutoSync::MakeSync(const QString& syncName, int16_t nodesCount,
                                               const std::array<host::SyncNode, 4>& nodes)
{
    std::array<host::SyncNode, 4> used{nodes[0], nodes[1], host::SyncNode{}, host::SyncNode{}};
    if (nodesCount >= 3)
        used[2] = nodes[2];
    if (nodesCount == 4)
        used[3] = nodes[3];
    auto sync = document_->Syncs()->Add(typeIndex_.value(syncName, 0), used);
    noteElementIndices(used);
    return sync;
}

void AutoSync::SyncSubSpindleOps()
{
    bool outsideRun = true;
    bool insideRun = false;
    QList<const SyncOperation*> runStarts;
    QList<const SyncOperation*> runEnds;
    for (qsizetype i = 0; i < list_.size(); ++i) {
        const SyncOperation* operation = firstNamed(list_[i]);
        if (!operation)
            continue;
        if (!operation->backTool) {
            outsideRun = true;
            if (insideRun) {
                runEnds.append(operation);
                insideRun = false;
            }
        } else if (operation->headOne) {
            if (outsideRun)
                runStarts.append(operation);
            outsideRun = false;
            insideRun = true;
            if (i == list_.size() - 1) {
                runEnds.append(operation);
                insideRun = false;
            }
        }
    }
    if (runStarts.size() != runEnds.size())
        return;
    for (qsizetype k = 0; k < runStarts.size(); ++k) {
        tie(QStringLiteral("G821"), *runStarts[k], 3, GetNextSubSpindleOP(runStarts[k]->operation), 3);
        tie(QStringLiteral("G820"), *runEnds[k], 3, GetNextSubSpindleOP(runEnds[k]->operation), 3);
    }
}

CutoffAndPickup AutoSync::SyncCutoffAndPickup()
{
    const SyncOperation* cutoff = nullptr;
    const SyncOperation* pickup = nullptr;
    for (auto it = operations_.crbegin(); it != operations_.crend() && !(cutoff && pickup); ++it) {
        if (!cutoff && IsCutoff(it->technologyType))
            cutoff = &*it;
        if (!pickup && it->technologyType == kPickupType)
            pickup = &*it;
    }
    if (cutoff && pickup) {
        tie(QStringLiteral("G811"), *cutoff, 4, pickup->operation, 1);
        tie(QStringLiteral("G810"), *cutoff, 2, pickup->operation, 2);
    }
    return {cutoff != nullptr, pickup != nullptr};
}

// A two-node synchronisation; both nodes take the element index that is free
// before it is made.
void AutoSync::tie(const QString& syncName, const SyncOperation& own, int ownPlacement,
                   const std::shared_ptr<host::Operation>& other, int otherPlacement)
{
    const int index = numeric::RoundToInt32(GetNextElementIndex(own.operation));
    MakeSync(syncName, 2, {host::SyncNode{ownPlacement, own.operation, 0, index, 0},
                           host::SyncNode{otherPlacement, other, 0, index, 0}, host::SyncNode{}, host::SyncNode{}});
}

std::shared_ptr<host::Operation> AutoSync::GetNextSubSpindleOP(const std::shared_ptr<host::Operation>& MainSpindleOP)
{
    if (!MainSpindleOP || !listed_.contains(MainSpindleOP->Name()))
        return nullptr;
    return firstBackSpindle_;
}

double AutoSync::GetNextElementIndex(const std::shared_ptr<host::Operation>& OPToBeSynced)
{
    Q_UNUSED(OPToBeSynced);
    return elementIndexInUse();
}

int AutoSync::elementIndexInUse()
{
    if (!nextElementIndex_) {
        nextElementIndex_ = 0;
        const auto syncs = document_->Syncs();
        const int count = syncs->Count();
        for (int i = 1; i <= count; ++i)
            noteElementIndices(syncs->Item(i)->Nodes());
    }
    return *nextElementIndex_;
}

// Raises the next free element index above the nodes' indices, for nodes tied
// to an operation of the document.
void AutoSync::noteElementIndices(const std::array<host::SyncNode, 4>& nodes)
{
    if (!nextElementIndex_)
        return; // read from the document when first asked
    for (const host::SyncNode& node : nodes)
        if (node.operation && node.elementIndex >= *nextElementIndex_ && firstByName_.contains(node.operation->Name()))
            nextElementIndex_ = node.elementIndex + 1;
}

} // namespace marelon
