#pragma once

#include <QStringList>
#include <cstdint>
#include <memory>

namespace host {
class Application;
class Operation;
class Sync;
} // namespace host

// Auto Sync written out step by step, every name compared in nested loops
// through the host's objects, exactly as the routines are described. The
// tests hold the product's version against it; it is far too slow to ship.
// Where the description leaves a choice, it takes the product's: no type-0
// synchronisation between "G811" and "G810", none of the two without both a
// cut-off and a pick-up operation, a "ToolID" naming no tool is not
// back-spindle work, and a missing parameter reads as empty.
namespace oracle {

// OK after the machine check: the order, then the synchronisations. False when
// no cut-off and pick-up synchronisations were made.
bool Ok(host::Application& application, const QStringList& list);

void RemoveAllSyncs(host::Application& application);
std::shared_ptr<host::Sync> MakeSync(host::Application& application, const QString& SyncName, int16_t NodesCount,
                                     std::shared_ptr<host::Operation> OP1, int32_t SyncPlacement1, int32_t Op1Index,
                                     std::shared_ptr<host::Operation> OP2, int32_t SyncPlacement2, int32_t Op2Index,
                                     std::shared_ptr<host::Operation> Op3, int32_t SyncPlacement3, int32_t Op3Index,
                                     std::shared_ptr<host::Operation> Op4, int32_t SyncPlacement4, int32_t Op4Index);
void SyncSubSpindleOps(host::Application& application, const QStringList& list);
bool SyncCutoffAndPickup(host::Application& application);
std::shared_ptr<host::Operation> GetNextSubSpindleOP(host::Application& application, const QStringList& list,
                                                     const std::shared_ptr<host::Operation>& MainSpindleOP);
double GetNextElementIndex(host::Application& application, const std::shared_ptr<host::Operation>& OPToBeSynced);

} // namespace oracle
