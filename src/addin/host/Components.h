#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// The components of the machine model, by text key.
class Components {
public:
    virtual ~Components() = default;
    virtual std::shared_ptr<host::Component> Item(const QString& key) = 0;
    virtual int Count() = 0;
};

} // namespace host
