#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The view of a lathe tool of kind 19.
class LatheToolKind19 {
public:
    virtual ~LatheToolKind19() = default;
    virtual int MountCode() = 0;
    virtual int ZCode() = 0;
    virtual double Length() = 0;
};

} // namespace host
