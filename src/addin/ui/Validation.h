#pragma once

#include <QString>

#include <optional>

class QComboBox;
class QLineEdit;

namespace marelon {

// Checks that a numeric text field holds a number within the optional bounds.
// Tells the user what is wrong in a message box and returns whether the field
// may be used. A disabled field is always accepted. With both bounds the
// range includes them; `inclusive` decides for a single bound whether the
// bound itself is allowed. The field's text, selection and focus are left
// as they are.
bool ValidateNumber(const QString& caption, const QLineEdit& field,
                    std::optional<double> lower = std::nullopt,
                    std::optional<double> upper = std::nullopt, bool inclusive = false);

// Checks that a list has an entry chosen; tells the user which list in the
// same message as a number's check. A disabled list is always accepted.
bool ValidateChoice(const QString& caption, const QComboBox& list);

} // namespace marelon
