#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// A travel limit of a turret's axis.
class AxisLimit {
public:
    virtual ~AxisLimit() = default;
    virtual QString Name() = 0;
    virtual double UpperLimit() = 0;
};

} // namespace host
