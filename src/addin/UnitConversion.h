#pragma once

// Length conversions between a document's units, inches and a tool's units.
// Unit codes: 70 inches, 71 millimetres.
namespace marelon {

inline constexpr int kInchUnits = 70;
inline constexpr int kMillimetreUnits = 71;
inline constexpr double kMillimetresPerInch = 25.4;

// A length in document units in inches (divided by 25.4 for a millimetre document).
inline double DocumentToInches(double value, int documentUnits)
{
    return documentUnits == kMillimetreUnits ? value / kMillimetresPerInch : value;
}

// A length in inches in document units (multiplied by 25.4 for a millimetre document).
inline double InchesToDocument(double value, int documentUnits)
{
    return documentUnits == kMillimetreUnits ? value * kMillimetresPerInch : value;
}

// A length in document units in a tool's units: unchanged when the codes agree,
// converted between inches and millimetres, 0 for any other pair of codes.
inline double DocumentToTool(double value, int documentUnits, int toolUnits)
{
    if (documentUnits == toolUnits)
        return value;
    if (documentUnits == kInchUnits && toolUnits == kMillimetreUnits)
        return value * kMillimetresPerInch;
    if (documentUnits == kMillimetreUnits && toolUnits == kInchUnits)
        return value / kMillimetresPerInch;
    return 0;
}

} // namespace marelon
