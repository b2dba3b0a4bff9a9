#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// A spindle of the machine setup.
class Spindle {
public:
    virtual ~Spindle() = default;
    virtual QString Name() = 0;
    virtual void setWorkLength(double length) = 0;
};

} // namespace host
