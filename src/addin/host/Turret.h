#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// A turret of the machine setup.
class Turret {
public:
    virtual ~Turret() = default;
    virtual double ZOffset() = 0;
    // The Z to which the back-spindle axis returns.
    virtual double ReferenceZ() = 0;
    virtual std::shared_ptr<host::Stations> Stations() = 0;
    virtual std::shared_ptr<host::AxisLimits> AxisLimits() = 0;
};

} // namespace host
