#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The view of a lathe tool of kind 23.
class LatheToolKind23 {
public:
    virtual ~LatheToolKind23() = default;
    virtual int MountCode() = 0;
    virtual double CentreOffset() = 0;
    virtual int SideCode() = 0;
    virtual int CornerCode() = 0;
    virtual double Width() = 0;
};

} // namespace host
