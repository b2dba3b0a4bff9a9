#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The view of a pick-up technology (type 207).
class Technology207 {
public:
    virtual ~Technology207() = default;
    virtual double ColletExtension() = 0;
    virtual void setColletExtension(double value) = 0;
};

} // namespace host
