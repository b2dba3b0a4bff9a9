#pragma once

#include "addin/host/Fwd.h"

#include <QList>
#include <memory>

namespace host {

// The geometry entries of an operation: a kind code and the points each holds.
class GeometryList {
public:
    virtual ~GeometryList() = default;
    virtual int Count() = 0;
    // 902 and 903 are points; 12 and 13 hold the points of a curve.
    virtual int Kind(int i) = 0;
    virtual QList<std::shared_ptr<host::Point>> Points(int i) = 0;
};

} // namespace host
