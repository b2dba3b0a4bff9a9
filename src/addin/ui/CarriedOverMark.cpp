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

void MarkOutOfRange(QLineEdit& field, const QString& toolTip)
{
    if (toolTip.isEmpty()) {
        field.setFont(QFont());
        field.setPalette(QPalette());
        field.setToolTip(QString());
        return;
    }
    QFont bold;
    bold.setBold(true);
    field.setFont(bold);
    QPalette red;
    red.setColor(QPalette::Base, QColor(0xFF, 0xC8, 0xC8));
    red.setColor(QPalette::Text, QColor(0x9C, 0x00, 0x06));
    field.setPalette(red);
    field.setToolTip(toolTip);
}

} // namespace marelon
