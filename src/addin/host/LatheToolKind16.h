#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The view of a lathe tool of kind 16.
class LatheToolKind16 {
public:
    virtual ~LatheToolKind16() = default;
    virtual int MountCode() = 0;
    virtual double CentreOffset() = 0;
};

} // namespace host
