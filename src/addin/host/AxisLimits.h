#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The axis limits of a turret, in order from 1.
class AxisLimits {
public:
    virtual ~AxisLimits() = default;
    virtual std::shared_ptr<host::AxisLimit> Item(int i) = 0;
    virtual int Count() = 0;
};

} // namespace host
