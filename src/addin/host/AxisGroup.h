#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// A group of simulated axes, from 1.
class AxisGroup {
public:
    virtual ~AxisGroup() = default;
    virtual std::shared_ptr<host::Axis> Item(int i) = 0;
    virtual int Count() = 0;
};

} // namespace host
