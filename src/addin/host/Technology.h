#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// The technology of an operation: its kind and its parameters by number.
class Technology {
public:
    virtual ~Technology() = default;
    virtual int TechnologyType() = 0;
    // The parameter with this number as text ("797").
    virtual std::shared_ptr<host::TechnologyParameter> Parameter(const QString& number) = 0;
    // The type-specific views; they fail for a technology of another type.
    virtual std::shared_ptr<host::Technology207> AsTechnology207() = 0;
    virtual std::shared_ptr<host::Technology154> AsTechnology154() = 0;
};

} // namespace host
