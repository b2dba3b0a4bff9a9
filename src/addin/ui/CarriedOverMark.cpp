#include "addin/ui/CarriedOverMark.h"

#include "addin/ui/UiServices.h"

#include <QLineEdit>

namespace marelon {

void MarkCarriedOver(QLineEdit& field, const QString& source)
{
    if (source.isEmpty()) {
        field.setFont(QFont()); // the dialog's own look again
        field.setPalette(QPalette());
        field.setToolTip(QString());
        return;
    }
    QFont italic;
    italic.setItalic(true);
    field.setFont(italic);
    QPalette amber;
    amber.setColor(QPalette::Base, QColor(0xFF, 0xD8, 0x8A));
    field.setPalette(amber);
    field.setToolTip(Tr(QStringLiteral("Carried over from %1: press Enter in the field to keep it, or type another value")).arg(source));
}

} // namespace marelon
