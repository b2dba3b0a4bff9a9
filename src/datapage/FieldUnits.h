#pragma once

#include "datapage/DataPageSettings.h"

#include <QString>

class QWidget;

namespace marelon {

// The unit a value of this quantity is shown and typed in, translated:
// "mm" or "in" for a length, "mm/rev" or "in/rev" for a feed, "rpm", "s",
// "°"; empty for a count, a code or a value without a unit.
QString UnitText(Quantity quantity, bool inchPart);

// Puts a unit label ("unit" and the field's control name) beside every text
// field of the field table whose quantity has a unit. The label follows its
// field: hidden with it, greyed with it. Once, when the page is built.
void AddUnitLabels(QWidget& page);

// The unit labels' texts for the part's unit, and the note beside the unit
// for NC code ("lblNCCodeUnitNote") that says what the chosen unit changes.
void ShowUnits(QWidget& page, bool inchPart);

} // namespace marelon
