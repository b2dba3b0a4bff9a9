#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The host's command bars, by number.
class CommandBars {
public:
    virtual ~CommandBars() = default;
    virtual std::shared_ptr<host::CommandBar> Item(int number) = 0;
};

} // namespace host
