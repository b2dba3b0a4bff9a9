#pragma once

#include <QLocale>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <optional>
#include <stdexcept>

// The number text conventions of Marelon: every number the add-in shows or
// reads as text goes through these functions, and nothing else formats or
// parses numbers by hand.
namespace numeric {

// A value that does not fit the integer it is rounded to, or a text that is not a number.
class NumberError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The shortest text of a double with at most 15 significant digits: no
// grouping, no trailing zeros, the locale's decimal separator
// (11.5470053837925, 0.5, -3). Very large and very small values use an
// exponent ("1E+20", "1E-05").
QString NumberToText(double value, const QLocale& locale = QLocale());
// The same with fewer significant digits (1 to 15).
QString NumberToText(double value, int significantDigits, const QLocale& locale = QLocale());

// The same text with "." as decimal separator, as holder files are written.
QString NumberToInvariantText(double value);

// The leading-number reading of a text: leading blanks skipped, an optional
// sign, digits, "." as the only decimal point, an optional exponent; reading
// stops at the first character that cannot continue the number. A text
// without a leading number reads as 0 ("12abc" is 12, "abc" is 0).
double LeadingNumber(const QString& text);

// Rounding to the nearest integer, halves to even (2.5 gives 2, 3.5 gives 4).
// A value outside the integer's range throws NumberError.
int16_t RoundToInt16(double value);
int32_t RoundToInt32(double value);

// The numeric test and conversion of the user's locale ("12,5" is numeric in
// German, "abc" and "" are not). ToDouble throws NumberError for a text that
// is not numeric.
bool IsNumeric(const QString& text, const QLocale& locale = QLocale());
double ToDouble(const QString& text, const QLocale& locale = QLocale());

// A host value (a parameter, a property) as a number: a number as it is, a
// text through the locale's numeric conversion, none for a text that is no
// number or a value that holds none.
std::optional<double> VariantToNumber(const QVariant& value, const QLocale& locale = QLocale());

// A value through one of the format masks "00", "###0", "###0.##",
// "###0.###", "####0.0000", "##,##0.0000" and "##,##0.000000", with the
// locale's grouping and decimal separators. "0" places are always written,
// "#" places only when needed; a mask with optional decimals keeps the point
// of a whole number ("###0.###" gives "2." for 2). Throws std::invalid_argument
// for any other mask.
QString Format(double value, const QString& mask, const QLocale& locale = QLocale());

} // namespace numeric
