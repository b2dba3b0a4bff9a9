#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// The work planes of a document, by name or by position from 1.
class WorkPlanes {
public:
    virtual ~WorkPlanes() = default;
    virtual std::shared_ptr<host::WorkPlane> Item(const QString& name) = 0;
    virtual std::shared_ptr<host::WorkPlane> Item(int position) = 0;
    virtual int Count() = 0;
    virtual std::shared_ptr<host::WorkPlane> Add(const QString& name) = 0;
    virtual void Remove(const QString& name) = 0;
};

} // namespace host
