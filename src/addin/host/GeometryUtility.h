#pragma once

#include "addin/host/Fwd.h"
#include "addin/host/Segment.h"

#include <QList>
#include <memory>

namespace host {

// The host's geometry utility: polygons and rotations of chains.
class GeometryUtility {
public:
    virtual ~GeometryUtility() = default;
    // The closed outline of a regular polygon around centre: one segment per side, in order.
    // circleKind 1 takes diameter as the inscribed circle, 2 as the circumscribed circle;
    // baseAngle in radians turns the first corner. At most 8 sides.
    virtual QList<host::Segment> RegularPolygon(std::shared_ptr<host::Point> centre, int circleKind,
                                                double diameter, double baseAngle, int sides) = 0;
    // Turns a feature by angle (radians) about the Y axis through the origin.
    virtual void RotateAboutY(std::shared_ptr<host::Feature> feature, double angle) = 0;
};

} // namespace host
