#include "numeric/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <cstdio>
#include <limits>

namespace numeric {
namespace {

// Integers up to this size are exact in a double, so scaled rounding stays exact.
constexpr double kExactIntegerLimit = 9007199254740992.0; // 2^53

// Whether a number text out of a double's range is too large (rather than
// too small): the decimal place of its first significant digit plus its
// exponent is positive.
bool isBeyondOne(std::string_view number)
{
    const auto e = number.find_first_of("eE");
    long exponent = 0;
    if (e != std::string_view::npos) {
        auto digits = number.substr(e + 1);
        if (!digits.empty() && digits.front() == '+')
            digits.remove_prefix(1);
        if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec != std::errc())
            return digits.front() != '-'; // an exponent beyond a long decides alone
    }
    const auto mantissa = number.substr(0, e);
    const auto point = std::min(mantissa.find('.'), mantissa.size());
    const auto first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos)
        return false;
    const long place = first < point ? long(point - first) : -long(first - point - 1);
    return place + exponent > 0;
}

// The number text[start, end) that LeadingNumber has delimited: ASCII
// digits, sign, "." and exponent only. Read with from_chars, which ignores the
// process's C locale (strtod would take "," as decimal point under German).
double parseInvariant(const QString& text, qsizetype start, qsizetype end)
{
    char buffer[64];
    std::string longNumber;
    const qsizetype length = end - start;
    char* chars = buffer;
    if (length >= qsizetype(sizeof buffer)) {
        longNumber.resize(size_t(length));
        chars = longNumber.data();
    }
    qsizetype n = 0;
    for (qsizetype i = start; i < end; ++i) {
        if (text.at(i) != QLatin1Char('+') || i != start) // from_chars takes no leading "+"
            chars[n++] = char(text.at(i).unicode());
    }
    double value = 0;
    const auto [ptr, error] = std::from_chars(chars, chars + n, value);
    if (error == std::errc::result_out_of_range) {
        // Too large reads as infinity, too small as zero, as strtod gives them.
        const double magnitude = isBeyondOne(std::string_view(chars, size_t(n))) ? HUGE_VAL : 0.0;
        return chars[0] == '-' ? -magnitude : magnitude;
    }
    return value;
}

QString withDecimalPoint(QString text, const QLocale& locale)
{
    return text.replace(QLatin1Char('.'), locale.decimalPoint());
}

template <typename Int>
Int roundHalfToEven(double value, const char* typeName)
{
    const double rounded = std::nearbyint(value); // the default rounding mode is half to even
    if (!(rounded >= std::numeric_limits<Int>::min() && rounded <= std::numeric_limits<Int>::max()))
        throw NumberError(std::string("Overflow: ") + std::to_string(value) + " does not fit a "
                          + typeName);
    return static_cast<Int>(rounded);
}

// A format mask split into its parts: "##,##0.0000" has grouping, one
// required integer digit, four required and no optional decimals.
struct Mask {
    int integerDigits = 0;
    bool grouping = false;
    bool point = false;
    int requiredDecimals = 0;
    int optionalDecimals = 0;
};

Mask parseMask(const QString& text)
{
    static const QStringList known = {
        QStringLiteral("00"),         QStringLiteral("###0"),        QStringLiteral("###0.##"),
        QStringLiteral("###0.###"),   QStringLiteral("####0.0000"),  QStringLiteral("##,##0.0000"),
        QStringLiteral("##,##0.000000"),
    };
    if (!known.contains(text))
        throw std::invalid_argument("Unknown number format mask: " + text.toStdString());

    Mask mask;
    const qsizetype pointAt = text.indexOf(QLatin1Char('.'));
    const QString integerPart = pointAt < 0 ? text : text.left(pointAt);
    mask.integerDigits = int(integerPart.count(QLatin1Char('0')));
    mask.grouping = integerPart.contains(QLatin1Char(','));
    if (pointAt >= 0) {
        const QString decimals = text.mid(pointAt + 1);
        mask.point = true;
        mask.requiredDecimals = int(decimals.count(QLatin1Char('0')));
        mask.optionalDecimals = int(decimals.count(QLatin1Char('#')));
    }
    return mask;
}

// |value| rounded half away from zero to `decimals` places, as "digits.digits".
QString roundedMagnitude(double value, int decimals)
{
    const double scale = std::pow(10.0, decimals);
    const double scaled = std::fabs(value) * scale;
    if (scaled >= kExactIntegerLimit)
        return QString::number(std::fabs(value), 'f', decimals);
    return QString::number(std::round(scaled) / scale, 'f', decimals);
}

QString groupThousands(const QString& digits, const QLocale& locale)
{
    QString grouped;
    for (qsizetype i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            grouped += locale.groupSeparator();
        grouped += digits.at(i);
    }
    return grouped;
}

} // namespace

QString NumberToText(double value, const QLocale& locale)
{
    return NumberToText(value, 15, locale);
}

QString NumberToText(double value, int significantDigits, const QLocale& locale)
{
    if (std::isnan(value))
        return QStringLiteral("NaN");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity");
    if (value == 0)
        return QStringLiteral("0"); // never "-0"

    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.*G", std::clamp(significantDigits, 1, 15), value);
    return withDecimalPoint(QString::fromLatin1(buffer), locale);
}

QString NumberToInvariantText(double value)
{
    return NumberToText(value, QLocale::c());
}

double LeadingNumber(const QString& text)
{
    qsizetype i = 0;
    const qsizetype n = text.size();
    auto isDigit = [&](qsizetype at) { return at < n && text.at(at).isDigit() && text.at(at).unicode() < 128; };

    while (i < n && (text.at(i) == QLatin1Char(' ') || text.at(i) == QLatin1Char('\t')))
        ++i;
    const qsizetype start = i;
    if (i < n && (text.at(i) == QLatin1Char('+') || text.at(i) == QLatin1Char('-')))
        ++i;
    const qsizetype mantissaStart = i;
    while (isDigit(i))
        ++i;
    if (i < n && text.at(i) == QLatin1Char('.')) {
        ++i;
        while (isDigit(i))
            ++i;
    }
    if (i - mantissaStart == 0 || (i - mantissaStart == 1 && text.at(mantissaStart) == QLatin1Char('.')))
        return 0; // no digit at all
    qsizetype end = i;
    if (i < n && (text.at(i) == QLatin1Char('E') || text.at(i) == QLatin1Char('e'))) {
        qsizetype e = i + 1;
        if (e < n && (text.at(e) == QLatin1Char('+') || text.at(e) == QLatin1Char('-')))
            ++e;
        if (isDigit(e)) {
            while (isDigit(e))
                ++e;
            end = e;
        }
    }
    return parseInvariant(text, start, end);
}

int16_t RoundToInt16(double value)
{
    return roundHalfToEven<int16_t>(value, "16-bit integer");
}

int32_t RoundToInt32(double value)
{
    return roundHalfToEven<int32_t>(value, "32-bit integer");
}

bool IsNumeric(const QString& text, const QLocale& locale)
{
    bool ok = false;
    const double value = locale.toDouble(text.trimmed(), &ok);
    return ok && std::isfinite(value);
}

double ToDouble(const QString& text, const QLocale& locale)
{
    bool ok = false;
    const double value = locale.toDouble(text.trimmed(), &ok);
    if (!ok || !std::isfinite(value))
        throw NumberError("Type mismatch: '" + text.toStdString() + "' is not a number");
    return value;
}

std::optional<double> VariantToNumber(const QVariant& value, const QLocale& locale)
{
    if (value.typeId() == QMetaType::QString || value.typeId() == QMetaType::QByteArray) {
        const QString text = value.toString();
        if (!IsNumeric(text, locale))
            return std::nullopt;
        return ToDouble(text, locale);
    }
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok ? std::optional<double>(number) : std::nullopt;
}

QString Format(double value, const QString& maskText, const QLocale& locale)
{
    const Mask mask = parseMask(maskText);
    const QString magnitude =
        roundedMagnitude(value, mask.requiredDecimals + mask.optionalDecimals);

    const qsizetype pointAt = magnitude.indexOf(QLatin1Char('.'));
    QString integerDigits = pointAt < 0 ? magnitude : magnitude.left(pointAt);
    QString decimals = pointAt < 0 ? QString() : magnitude.mid(pointAt + 1);

    while (decimals.size() > mask.requiredDecimals && decimals.endsWith(QLatin1Char('0')))
        decimals.chop(1);
    while (integerDigits.size() < mask.integerDigits)
        integerDigits.prepend(QLatin1Char('0'));
    if (mask.grouping)
        integerDigits = groupThousands(integerDigits, locale);

    QString text = integerDigits;
    if (mask.point)
        text += locale.decimalPoint() + decimals;

    const bool roundsToZero =
        magnitude.count(QLatin1Char('0')) + magnitude.count(QLatin1Char('.')) == magnitude.size();
    if (value < 0 && !roundsToZero)
        text.prepend(QLatin1Char('-'));
    return text;
}

} // namespace numeric
