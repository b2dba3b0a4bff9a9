#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// The view of a technology of type 154.
class Technology154 {
public:
    virtual ~Technology154() = default;
    virtual int SpindleCode() = 0;
    // Nonzero when the operation has no tool.
    virtual int WithoutTool() = 0;
    virtual QString ToolID() = 0;
};

} // namespace host
