#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The stations of a turret, by integer key.
class Stations {
public:
    virtual ~Stations() = default;
    virtual std::shared_ptr<host::Station> Item(int key) = 0;
    virtual int Count() = 0;
};

} // namespace host
