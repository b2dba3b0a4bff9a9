#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// A point of the host's geometry: X, Y and Z, read and written.
class Point {
public:
    virtual ~Point() = default;
    virtual double X() = 0;
    virtual void setX(double x) = 0;
    virtual double Y() = 0;
    virtual void setY(double y) = 0;
    virtual double Z() = 0;
    virtual void setZ(double z) = 0;
};

} // namespace host
