#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The view of a lathe tool of kind 18.
class LatheToolKind18 {
public:
    virtual ~LatheToolKind18() = default;
    virtual int MountCode() = 0;
    virtual int ZCode() = 0;
    virtual double Length() = 0;
};

} // namespace host
