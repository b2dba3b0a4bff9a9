#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// An entry of a host menu popup: a command or a separator.
class MenuControl {
public:
    virtual ~MenuControl() = default;
    virtual bool HasCommand() = 0;
    virtual QString Caption() = 0;
};

} // namespace host
