#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The turrets of the machine setup, by integer key (2 is the back-spindle turret).
class Turrets {
public:
    virtual ~Turrets() = default;
    virtual std::shared_ptr<host::Turret> Item(int key) = 0;
    virtual int Count() = 0;
};

} // namespace host
