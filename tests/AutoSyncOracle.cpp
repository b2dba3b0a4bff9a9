#include "AutoSyncOracle.h"

#include "addin/host/Application.h"
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

#include <QVariant>

namespace oracle {

namespace {

QVariant ParameterValue(const std::shared_ptr<host::Operation>& operation, const QString& name)
{
    try {
        return operation->Technology()->Parameter(name)->Value();
    } catch (const host::HostError&) {
        return {};
    }
}

} // namespace

bool Ok(host::Application& application, const QStringList& list)
{
    const auto document = application.ActiveDocument();
    const int n = document->Operations()->Count();
    QList<std::shared_ptr<host::Operation>> OPs(n);
    for (int i = 0; i < list.size(); ++i)
        for (int j = 1; j <= n; ++j)
            if (document->Operations()->Item(j)->Name() == list[i])
                OPs[i] = document->Operations()->Item(j);
    document->Operations()->Rearrange(OPs, 1, true);
    RemoveAllSyncs(application);
    SyncSubSpindleOps(application, list);
    return SyncCutoffAndPickup(application);
}

void RemoveAllSyncs(host::Application& application)
{
    const int c = application.ActiveDocument()->Syncs()->Count();
    for (int i = c; i >= 1; --i)
        application.ActiveDocument()->Syncs()->Remove(i);
}

std::shared_ptr<host::Sync> MakeSync(host::Application& application, const QString& SyncName, int16_t NodesCount,
                                     std::shared_ptr<host::Operation> OP1, int32_t SyncPlacement1, int32_t Op1Index,
                                     std::shared_ptr<host::Operation> OP2, int32_t SyncPlacement2, int32_t Op2Index,
                                     std::shared_ptr<host::Operation> Op3, int32_t SyncPlacement3, int32_t Op3Index,
                                     std::shared_ptr<host::Operation> Op4, int32_t SyncPlacement4, int32_t Op4Index)
{
    const auto document = application.ActiveDocument();
    int typeIndex = 0;
    const auto entries = document->MachineSetup()->SetupEntries();
    for (int i = 1; i <= entries->Count(); ++i) {
        if (entries->Item(i)->Name() == SyncName) {
            typeIndex = i;
            break;
        }
    }
    std::array<host::SyncNode, 4> nodes;
    nodes[0] = {SyncPlacement1, OP1, 0, Op1Index, 0};
    nodes[1] = {SyncPlacement2, OP2, 0, Op2Index, 0};
    if (NodesCount >= 3)
        nodes[2] = {SyncPlacement3, Op3, 0, Op3Index, 0};
    if (NodesCount == 4)
        nodes[3] = {SyncPlacement4, Op4, 0, Op4Index, 0};
    return document->Syncs()->Add(typeIndex, nodes);
}

void SyncSubSpindleOps(host::Application& application, const QStringList& list)
{
    const auto document = application.ActiveDocument();
    bool outsideRun = true;
    bool insideRun = false;
    QList<std::shared_ptr<host::Operation>> runStarts;
    QList<std::shared_ptr<host::Operation>> runEnds;
    for (int i = 0; i < list.size(); ++i) {
        std::shared_ptr<host::Operation> operation;
        for (int j = 1; j <= document->Operations()->Count(); ++j) {
            if (document->Operations()->Item(j)->Name() == list[i]) {
                operation = document->Operations()->Item(j);
                break;
            }
        }
        if (!operation)
            continue;
        const QString toolId = ParameterValue(operation, QStringLiteral("ToolID")).toString();
        std::shared_ptr<host::Tool> tool;
        for (int t = 1; t <= document->Tools()->Count(); ++t) {
            if (document->Tools()->Item(t)->ToolID() == toolId) {
                tool = document->Tools()->Item(t);
                break;
            }
        }
        const int number = tool ? tool->Number() : 0;
        if (number < 21 || number > 23) {
            outsideRun = true;
            if (insideRun) {
                runEnds.append(operation);
                insideRun = false;
            }
        }
        if (number >= 21 && number <= 23 && ParameterValue(operation, QStringLiteral("HeadID")).toDouble() == 1) {
            if (outsideRun)
                runStarts.append(operation);
            outsideRun = false;
            insideRun = true;
            if (i == list.size() - 1) {
                runEnds.append(operation);
                insideRun = false;
            }
        }
    }
    if (runStarts.size() != runEnds.size())
        return;
    for (qsizetype k = 0; k < runStarts.size(); ++k) {
        double e = GetNextElementIndex(application, runStarts[k]);
        auto b = GetNextSubSpindleOP(application, list, runStarts[k]);
        double f = GetNextElementIndex(application, b);
        MakeSync(application, QStringLiteral("G821"), 2, runStarts[k], 3, numeric::RoundToInt32(e), b, 3,
                 numeric::RoundToInt32(f), nullptr, 0, 0, nullptr, 0, 0);
        e = GetNextElementIndex(application, runEnds[k]);
        b = GetNextSubSpindleOP(application, list, runEnds[k]);
        f = GetNextElementIndex(application, b);
        MakeSync(application, QStringLiteral("G820"), 2, runEnds[k], 3, numeric::RoundToInt32(e), b, 3,
                 numeric::RoundToInt32(f), nullptr, 0, 0, nullptr, 0, 0);
    }
}

bool SyncCutoffAndPickup(host::Application& application)
{
    const auto operations = application.ActiveDocument()->Operations();
    std::shared_ptr<host::Operation> cutoff;
    std::shared_ptr<host::Operation> pickup;
    for (int j = operations->Count(); j >= 1; --j) {
        const int type = operations->Item(j)->Technology()->TechnologyType();
        if (!cutoff && (type == 153 || type == 398))
            cutoff = operations->Item(j);
        if (!pickup && type == 207)
            pickup = operations->Item(j);
        if (cutoff && pickup)
            break;
    }
    if (!cutoff || !pickup)
        return false;
    int32_t e = numeric::RoundToInt32(GetNextElementIndex(application, cutoff));
    int32_t f = numeric::RoundToInt32(GetNextElementIndex(application, pickup));
    MakeSync(application, QStringLiteral("G811"), 2, cutoff, 4, e, pickup, 1, f, nullptr, 0, 0, nullptr, 0, 0);
    e = numeric::RoundToInt32(GetNextElementIndex(application, cutoff));
    f = numeric::RoundToInt32(GetNextElementIndex(application, pickup));
    MakeSync(application, QStringLiteral("G810"), 2, cutoff, 2, e, pickup, 2, f, nullptr, 0, 0, nullptr, 0, 0);
    return true;
}

std::shared_ptr<host::Operation> GetNextSubSpindleOP(host::Application& application, const QStringList& list,
                                                     const std::shared_ptr<host::Operation>& MainSpindleOP)
{
    const auto operations = application.ActiveDocument()->Operations();
    const int n = operations->Count();
    for (int i = 0; i < list.size(); ++i) {
        if (list[i] != MainSpindleOP->Name())
            continue;
        for (int k = 0; k < list.size(); ++k) {
            for (int j = 1; j <= n; ++j) {
                if (operations->Item(j)->Name() == list[k]) {
                    if (ParameterValue(operations->Item(j), QStringLiteral("SpindleID")).toDouble() > 1)
                        return operations->Item(j);
                    break;
                }
            }
        }
    }
    return nullptr;
}

double GetNextElementIndex(host::Application& application, const std::shared_ptr<host::Operation>& OPToBeSynced)
{
    Q_UNUSED(OPToBeSynced);
    const auto document = application.ActiveDocument();
    double result = 0;
    const auto syncs = document->Syncs();
    for (int s = 1; s <= syncs->Count(); ++s) {
        const auto nodes = syncs->Item(s)->Nodes();
        for (const host::SyncNode& node : nodes) {
            for (int j = 1; j <= document->Operations()->Count(); ++j) {
                if (node.operation && document->Operations()->Item(j)->Name() == node.operation->Name()
                    && node.elementIndex >= result)
                    result = node.elementIndex + 1;
            }
        }
    }
    return result;
}

} // namespace oracle
