#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// A station of a turret.
class Station {
public:
    virtual ~Station() = default;
    virtual int Number() = 0;
};

} // namespace host
