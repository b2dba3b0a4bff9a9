#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The view of a lathe tool of kind 21.
class LatheToolKind21 {
public:
    virtual ~LatheToolKind21() = default;
    virtual int MountCode() = 0;
    virtual double CentreOffset() = 0;
};

} // namespace host
