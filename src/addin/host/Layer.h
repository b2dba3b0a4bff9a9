#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// A named layer of a document.
class Layer {
public:
    virtual ~Layer() = default;
    virtual QString Name() = 0;
};

} // namespace host
