#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// A named work plane of a document: three unit vectors and an origin.
class WorkPlane {
public:
    virtual ~WorkPlane() = default;
    virtual QString Name() = 0;
    virtual void setU(double x, double y, double z) = 0;
    virtual void setV(double x, double y, double z) = 0;
    virtual void setW(double x, double y, double z) = 0;
    virtual void setOrigin(double x, double y, double z) = 0;
    virtual void setFlag(int flag) = 0;
};

} // namespace host
