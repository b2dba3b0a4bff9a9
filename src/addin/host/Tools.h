#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The tools of a document, from 1.
class Tools {
public:
    virtual ~Tools() = default;
    virtual std::shared_ptr<host::Tool> Item(int i) = 0;
    virtual int Count() = 0;
    virtual std::shared_ptr<host::Tool> Add(int toolType) = 0;
};

} // namespace host
