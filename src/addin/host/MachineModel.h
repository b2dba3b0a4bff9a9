#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The simulation's machine model: axes and components.
class MachineModel {
public:
    virtual ~MachineModel() = default;
    virtual std::shared_ptr<host::AxisGroups> AxisGroups() = 0;
    virtual std::shared_ptr<host::Components> Components() = 0;
};

} // namespace host
