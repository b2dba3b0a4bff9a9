#pragma once

#include <QString>

// The bar loader settings of the Data Page as the document keeps them: the
// loader type code, the M155 bar-change line and which fields are enabled.
namespace marelon {

// The bar-change values of the Data Page's bar loader frame.
struct BarLoaderLine {
    double chamferX = 0;
    double chamferZ = 0;
    double pullBack = 0;
    bool spindleStop = false; // "YES": the spindle stops during the bar change
    double spindleRpm = 0;
    bool m1 = false; // a polygon or profile stock
};

// The M155 line: "M155 X0.5 Z0.3 W2.25 R1 S800", " R1 S<rpm>" only when the
// spindle keeps turning, " M1" at the end for a polygon or profile stock.
// "." is the decimal point whatever the user's locale; a whole chamfer
// distance keeps its point ("X2.").
QString BuildBarLoaderCommand(const BarLoaderLine& line);

// The values of an M155 line. Each marker ("X", "Z", "W", "S") is found by its
// first occurrence, with case; the number that follows it is read up to the
// first character that cannot continue it, with "." as decimal point. A
// missing marker, a marker followed by no number ("M155 Xabc", "M155 X Z")
// and a number too large for a double all give 0, so a line that is not ours
// gives zeros rather than an error. The spindle stops ("YES") unless the line
// holds "R1"; a lower-case line ("m155 x1 r1") therefore reads as zeros with
// the spindle stopped. The M1 piece is not read back (m1 stays false).
BarLoaderLine ReadBarLoaderCommand(const QString& command);

// The document's BarLoaderType: 0 hydrostatic, 1 magazine with a sub program
// (program type position 0), 2 magazine with the M code (any other position).
int BarLoaderTypeCode(bool magazine, int programTypePosition);

// Which bar loader fields are enabled, each together with its label.
struct BarLoaderEnabling {
    bool subProgramNumber;
    bool programType;
    bool mCodeFields; // chamfer X and Z, pull back, spindle stop, spindle RPM
};

BarLoaderEnabling BarLoaderEnablingFor(bool magazine, int programTypePosition);

} // namespace marelon
