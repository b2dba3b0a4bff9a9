#pragma once

#include "feldra/DocumentData.h"

#include <QList>
#include <QPointF>

// The cross-section of a simulation stock as a user compares it with what they
// chose: the outline of its profile feature, drawn in the profile's own plane.
namespace feldra {

// The points of a planar outline in the plane they lie in, seen so that a
// polygon drawn in the XY plane and then turned about the Y axis shows as it
// was drawn: Y (or, for an outline across Y, X) stays up, and the outline's
// normal points along the positive direction of its main axis whichever way
// the outline runs. Fewer than two points give nothing.
QList<QPointF> OutlineInItsPlane(const QList<Point3>& points);

// The outline of the stock's profile feature in its plane; nothing when the
// document no longer has the feature.
QList<QPointF> StockCrossSection(const DocumentData& document, const StockData& stock);

// The stock named "Main Stock", or none.
const StockData* MainStock(const DocumentData& document);

} // namespace feldra
