#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// A component of the simulated machine model.
class Component {
public:
    virtual ~Component() = default;
    // A copy of the component's position; MoveTo puts it back.
    virtual std::shared_ptr<host::Point> Position() = 0;
    virtual void MoveTo(std::shared_ptr<host::Point> position) = 0;
};

} // namespace host
