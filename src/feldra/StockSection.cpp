#include "feldra/StockSection.h"

#include <QVector3D>
#include <algorithm>
#include <cmath>

namespace feldra {

namespace {

QVector3D Vector(const Point3& p) { return QVector3D(float(p.x), float(p.y), float(p.z)); }

// Newell's normal of a polygon: robust for any planar outline, open or closed.
QVector3D NewellNormal(const QList<Point3>& points)
{
    double x = 0, y = 0, z = 0;
    for (qsizetype i = 0; i < points.size(); ++i) {
        const Point3& a = points[i];
        const Point3& b = points[(i + 1) % points.size()];
        x += (a.y - b.y) * (a.z + b.z);
        y += (a.z - b.z) * (a.x + b.x);
        z += (a.x - b.x) * (a.y + b.y);
    }
    return QVector3D(float(x), float(y), float(z));
}

// The component of largest magnitude: 0 x, 1 y, 2 z.
int MainAxis(const QVector3D& v)
{
    const float x = std::abs(v.x()), y = std::abs(v.y()), z = std::abs(v.z());
    return x >= y && x >= z ? 0 : y >= z ? 1 : 2;
}

} // namespace

QList<QPointF> OutlineInItsPlane(const QList<Point3>& points)
{
    if (points.size() < 2)
        return {};
    QVector3D normal = NewellNormal(points);
    if (normal.length() < 1e-9f)
        normal = QVector3D(0, 0, 1); // a straight line: seen from +Z
    normal.normalize();
    const int main = MainAxis(normal);
    if (normal[main] < 0)
        normal = -normal;
    QVector3D up = main == 1 ? QVector3D(1, 0, 0) : QVector3D(0, 1, 0);
    up = (up - QVector3D::dotProduct(up, normal) * normal).normalized();
    const QVector3D across = QVector3D::crossProduct(up, normal);
    QList<QPointF> outline;
    outline.reserve(points.size());
    for (const Point3& p : points)
        outline.append(QPointF(QVector3D::dotProduct(Vector(p), across), QVector3D::dotProduct(Vector(p), up)));
    return outline;
}

QList<QPointF> StockCrossSection(const DocumentData& document, const StockData& stock)
{
    const auto feature = std::find_if(document.features.cbegin(), document.features.cend(),
                                      [&stock](const auto& f) { return f && f->key == stock.featureKey; });
    return feature == document.features.cend() ? QList<QPointF>() : OutlineInItsPlane((*feature)->elements);
}

const StockData* MainStock(const DocumentData& document)
{
    for (const auto& stock : document.simulation.stocks)
        if (stock && stock->name == QLatin1String("Main Stock"))
            return stock.get();
    return nullptr;
}

} // namespace feldra
