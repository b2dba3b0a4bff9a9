#include "addin/ui/Validation.h"

#include "addin/ui/UiServices.h"
#include "numeric/NumberText.h"

#include <QComboBox>
#include <QLineEdit>

namespace marelon {
namespace {

using numeric::IsNumeric;
using numeric::NumberToText;
using numeric::ToDouble;

bool refuse(const QString& caption, const QString& request)
{
    const QString crlf = QStringLiteral("\r\n");
    MsgBox(Tr(QStringLiteral("Bad data entered for -")) + QLatin1Char(' ') + caption + crlf + crlf + request,
           host::MsgButtons::OK, host::MsgIcon::Information);
    return false;
}

QString requestWithBound(const char* english, double bound)
{
    return Tr(QString::fromLatin1(english)) + QLatin1Char(' ') + NumberToText(bound);
}

} // namespace

bool ValidateNumber(const QString& caption, const QLineEdit& field, std::optional<double> lower,
                    std::optional<double> upper, bool inclusive)
{
    if (!field.isEnabled())
        return true;
    if (!IsNumeric(field.text()))
        return refuse(caption, Tr(QStringLiteral("Please enter a numeric value")));

    const double v = ToDouble(field.text());
    if (lower && upper) {
        if (v < *lower || v > *upper)
            return refuse(caption, requestWithBound("Please enter a numeric value between", *lower)
                                       + QLatin1Char(' ') + Tr(QStringLiteral("and"))
                                       + QLatin1Char(' ') + NumberToText(*upper));
        return true;
    }
    if (lower) {
        if (inclusive && v < *lower)
            return refuse(caption, requestWithBound(
                                       "Please enter a numeric value greater than or equal to", *lower));
        if (!inclusive && v <= *lower)
            return refuse(caption, requestWithBound("Please enter a numeric value greater than", *lower));
    }
    if (upper) {
        if (inclusive && v > *upper)
            return refuse(caption, requestWithBound(
                                       "Please enter a numeric value less than or equal to", *upper));
        if (!inclusive && v >= *upper)
            return refuse(caption, requestWithBound("Please enter a numeric value less than", *upper));
    }
    return true;
}

bool ValidateChoice(const QString& caption, const QComboBox& list)
{
    if (!list.isEnabled() || list.currentIndex() >= 0)
        return true;
    return refuse(caption, Tr(QStringLiteral("Please choose an entry of the list")));
}

} // namespace marelon
