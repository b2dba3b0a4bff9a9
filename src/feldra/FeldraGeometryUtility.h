#pragma once

#include "addin/host/GeometryUtility.h"
#include "feldra/View.h"

namespace feldra {

// The Feldra geometry utility: regular polygons in the XY plane and rotations
// of a document's features.
class FeldraGeometryUtility final : public host::GeometryUtility, public View {
public:
    explicit FeldraGeometryUtility(std::shared_ptr<HostContext> context) : View(std::move(context), nullptr) {}

    QList<host::Segment> RegularPolygon(std::shared_ptr<host::Point> centre, int circleKind, double diameter,
                                        double baseAngle, int sides) override;
    void RotateAboutY(std::shared_ptr<host::Feature> feature, double angle) override;
};

} // namespace feldra
