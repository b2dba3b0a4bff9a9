#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The view of a lathe tool of kind 22.
class LatheToolKind22 {
public:
    virtual ~LatheToolKind22() = default;
    virtual int MountCode() = 0;
    virtual double CentreOffset() = 0;
};

} // namespace host
