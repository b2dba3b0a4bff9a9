#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The view of a lathe tool of kind 17.
class LatheToolKind17 {
public:
    virtual ~LatheToolKind17() = default;
    virtual int MountCode() = 0;
    virtual double CentreOffset() = 0;
    virtual int SideCode() = 0;
    virtual int CornerCode() = 0;
    virtual double Width() = 0;
};

} // namespace host
