#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// A simulated machine axis.
class Axis {
public:
    virtual ~Axis() = default;
    virtual QString Name() = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual void setPosition(double position) = 0;
};

} // namespace host
