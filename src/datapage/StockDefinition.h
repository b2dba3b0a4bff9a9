#pragma once

#include "addin/host/Fwd.h"

#include <QString>

#include <memory>

// The stock of the Data Page: the stock code kept in the document, the
// polygon's outside diameter and base angle, and the simulation stock
// "Main Stock" built from a polygon or from a profile feature.
namespace marelon {

// pi as 4 * atan(1).
double Pi();

// The stock choices that the document's StockCode packs.
struct StockChoice {
    int type = 0;              // 0 bar, 1 tube, 2 polygon, 3 profile
    bool insideCircle = false; // polygon on its inscribed circle (ID)
    int sidesPosition = 0;     // 0 "4", 1 "6", 2 "8"
    int baseAngle = 0;         // whole degrees, 0 to 99
};

// The StockCode text: type * 10000, and for a polygon 1000 when on its
// inside circle, the sides position * 100 and the base angle (a hexagon on
// its outside circle at 30 degrees is "20130"). A base angle outside 0..99 is
// clamped so that it never spills into the sides digit.
QString PackStockCode(const StockChoice& choice);

// The choices of a StockCode value: type = int(code / 10000), inside circle
// when int(code / 1000) is 21, sides position = (code mod 1000) div 100,
// base angle = code mod 100. A negative, non-finite or huge code, or one whose
// type is no stock type (99999), gives the default choice (a bar).
StockChoice UnpackStockCode(double code);

// The bar stock outside diameter of a polygon with n sides: the circle
// diameter itself on the outside circle, |d / cos(pi / n)| (across the
// corners) on the inside circle.
double PolygonOutsideDiameter(double circleDiameter, int sides, bool insideCircle);

// The base angle brought into the first pitch (360 / sides) of the polygon:
// -10 with 4 sides is 80, 200 with 8 sides is 20. An angle that is not finite
// gives 0; fewer than 3 sides leave the angle as it is.
double NormaliseBaseAngle(double angle, int sides);

// Creates the simulation stock "Main Stock" (kind 1) swept from the closed
// profile feature over length from start, in the default stock colour, on the
// main spindle, with the lathe's placement. Host failures propagate as
// host::HostError.
std::shared_ptr<host::Stock> AddMainStock(host::Document& document, std::shared_ptr<host::Feature> feature,
                                          double start, double length);

// Builds "Main Stock" from a regular polygon around the origin: circleKind 2
// takes diameter as the circumscribed circle (OD), 1 as the inscribed circle
// (ID); baseAngle in radians. The polygon's chain goes on the layer "Temp"
// (created when missing) and is turned a quarter turn about Y. Host failures
// propagate as host::HostError.
void BuildPolygonStock(host::Application& application, int circleKind, double diameter, int sides,
                       double baseAngle, double start, double length);

// The outline drawn for the part's polygon stock: the key of the chain
// "Main Stock" is swept from, when that chain is on the layer "Temp" (where
// BuildPolygonStock draws it). Host failures (no such stock) propagate as
// host::HostError.
QString PolygonOutlineKey(host::Document& document);

// Builds "Main Stock" from the chosen profile feature and updates the
// simulation. Host failures propagate as host::HostError.
void BuildProfileStock(host::Document& document, std::shared_ptr<host::Feature> feature, double start,
                       double length);

} // namespace marelon
