#include "feldra/FeldraGeometryUtility.h"

#include "feldra/Views.h"

#include <cmath>
#include <numbers>

namespace feldra {

QList<host::Segment> FeldraGeometryUtility::RegularPolygon(std::shared_ptr<host::Point> centre, int circleKind,
                                                           double diameter, double baseAngle, int sides)
{
    const QString operation = QStringLiteral("GeometryUtility.RegularPolygon");
    guard(operation);
    if (sides < 3 || sides > 8)
        fail(operation, QStringLiteral("A polygon has 3 to 8 sides, not %1.").arg(sides));
    if (circleKind != 1 && circleKind != 2)
        fail(operation, QStringLiteral("Unknown circle kind %1.").arg(circleKind));
    if (!(diameter > 0))
        fail(operation, QStringLiteral("The diameter must be positive."));
    const Point3 c = own<PointView>(centre, operation).Value();
    const double step = 2 * std::numbers::pi / sides;
    // Kind 2: the circle through the corners; kind 1: the circle touching the sides.
    const double radius = circleKind == 2 ? diameter / 2 : diameter / 2 / std::cos(step / 2);
    auto corner = [&](int k) {
        const double a = baseAngle + k * step;
        return Point3{c.x + radius * std::cos(a), c.y + radius * std::sin(a), c.z};
    };
    QList<host::Segment> segments;
    for (int k = 0; k < sides; ++k) {
        const Point3 from = corner(k);
        const Point3 to = corner((k + 1) % sides);
        segments.append({from.x, from.y, from.z, to.x, to.y, to.z});
    }
    return segments;
}

void FeldraGeometryUtility::RotateAboutY(std::shared_ptr<host::Feature> feature, double angle)
{
    change("GeometryUtility.RotateAboutY");
    FeatureData& data = own<FeatureView>(feature, "GeometryUtility.RotateAboutY").Data();
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    for (Point3& p : data.elements)
        p = {c * p.x + s * p.z, p.y, -s * p.x + c * p.z};
}

} // namespace feldra
