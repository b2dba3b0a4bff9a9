#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The spindles of the machine setup, by integer key (1 is the main spindle).
class Spindles {
public:
    virtual ~Spindles() = default;
    virtual std::shared_ptr<host::Spindle> Item(int key) = 0;
    virtual int Count() = 0;
};

} // namespace host
