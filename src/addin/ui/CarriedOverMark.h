#pragma once

#include <QString>

class QLineEdit;

namespace marelon {

// Shows that a field keeps a value that came from elsewhere (another tool,
// another machine model): italics on amber, and a tooltip that names where the
// value came from and how to keep it. An empty source gives the field its own
// look again.
void MarkCarriedOver(QLineEdit& field, const QString& source);

// Shows that a field's value is beyond what it may be: red, bold, and a
// tooltip that says the bound. An empty tooltip gives the field its own look again.
void MarkOutOfRange(QLineEdit& field, const QString& toolTip);

} // namespace marelon
