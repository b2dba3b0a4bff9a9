#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The axis groups of the machine model, from 1.
class AxisGroups {
public:
    virtual ~AxisGroups() = default;
    virtual std::shared_ptr<host::AxisGroup> Item(int i) = 0;
    virtual int Count() = 0;
};

} // namespace host
