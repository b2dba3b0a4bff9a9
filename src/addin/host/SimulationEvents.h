#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// Sink of a document simulation's events.
class SimulationEvents {
public:
    virtual ~SimulationEvents() = default;
    virtual void OnBegin() {}
    virtual void OnOperationStart(std::shared_ptr<host::Operation> Operation) { (void)Operation; }
    virtual void OnSimulateOperation(std::shared_ptr<host::Operation> Operation) { (void)Operation; }
};

} // namespace host
