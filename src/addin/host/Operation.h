#pragma once

#include "addin/host/Fwd.h"
#include "addin/host/GraphicObject.h"

#include <QString>
#include <memory>

namespace host {

// An operation of a document (also a graphic object).
class Operation : public GraphicObject {
public:
    virtual QString Name() = 0;
    virtual std::shared_ptr<host::Technology> Technology() = 0;
    virtual bool Suppressed() = 0;
    virtual std::shared_ptr<host::Feature> Feature() = 0;
    virtual std::shared_ptr<host::GeometryList> GeometryList() = 0;
};

} // namespace host
