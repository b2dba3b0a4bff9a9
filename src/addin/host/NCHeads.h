#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The NC output heads of the machine setup, from 1.
class NCHeads {
public:
    virtual ~NCHeads() = default;
    virtual std::shared_ptr<host::NCHead> Item(int i) = 0;
    virtual int Count() = 0;
};

} // namespace host
