#include "feldra/macro/MacroDialog.h"

#include "feldra/macro/MacroControl.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QJSEngine>
#include <QPixmap>

namespace feldra {

QString GrabToPng(QWidget* widget, const QString& path)
{
    QCoreApplication::sendPostedEvents(); // pending layouts, outside an event loop
    const QFileInfo file(path);
    if (!QDir().mkpath(file.absolutePath()) || !widget->grab().save(file.absoluteFilePath(), "PNG"))
        return {};
    return file.absoluteFilePath();
}

MacroDialog::MacroDialog(QWidget* form) : form_(form), name_(form->objectName()) {}

QString MacroDialog::title() const { return form_ ? form_->windowTitle() : QString(); }
bool MacroDialog::visible() const { return form_ && form_->isVisible(); }

QStringList MacroDialog::controls() const
{
    QStringList names;
    if (form_)
        for (const QWidget* child : form_->findChildren<QWidget*>())
            if (!child->objectName().isEmpty() && !child->objectName().startsWith("qt_"))
                names << child->objectName();
    return names;
}

QWidget* MacroDialog::find(const QString& controlName)
{
    QWidget* control = form_ ? form_->findChild<QWidget*>(controlName) : nullptr;
    if (!control)
        qjsEngine(this)->throwError(
            form_ ? QStringLiteral("%1 has no control named \"%2\"").arg(name_, controlName)
                  : QStringLiteral("the dialog %1 no longer exists").arg(name_));
    return control;
}

QJSValue MacroDialog::control(const QString& controlName)
{
    QWidget* control = find(controlName);
    return control ? qjsEngine(this)->newQObject(new MacroControl(control, name_)) : QJSValue();
}

void MacroDialog::click(const QString& controlName)
{
    const QJSValue control = this->control(controlName);
    if (control.isQObject())
        static_cast<MacroControl*>(control.toQObject())->click();
}

QString MacroDialog::text(const QString& controlName)
{
    const QJSValue control = this->control(controlName);
    return control.isQObject() ? static_cast<MacroControl*>(control.toQObject())->text() : QString();
}

void MacroDialog::setText(const QString& controlName, const QString& text)
{
    const QJSValue control = this->control(controlName);
    if (control.isQObject())
        static_cast<MacroControl*>(control.toQObject())->setText(text);
}

QString MacroDialog::screenshot(const QString& path)
{
    if (!form_) {
        qjsEngine(this)->throwError(QStringLiteral("the dialog %1 no longer exists").arg(name_));
        return {};
    }
    const QString written = GrabToPng(form_, path);
    if (written.isEmpty())
        qjsEngine(this)->throwError(QStringLiteral("cannot write the screenshot %1").arg(path));
    return written;
}

void MacroDialog::close()
{
    if (auto* dialog = qobject_cast<QDialog*>(form_.data()))
        dialog->reject();
    else if (form_)
        form_->close();
}

} // namespace feldra
