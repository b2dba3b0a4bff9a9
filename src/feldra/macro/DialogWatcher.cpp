#include "feldra/macro/DialogWatcher.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QUrl>

namespace feldra {

namespace {

bool IsOpenModalDialog(QWidget* form)
{
    auto* dialog = qobject_cast<QDialog*>(form);
    return dialog && dialog->isVisible() && dialog->isModal();
}

} // namespace

QString ScriptErrorText(const QJSValue& error)
{
    QString file = error.property("fileName").toString();
    if (file.startsWith(QStringLiteral("file:")))
        file = QUrl(file).toLocalFile();
    const int line = error.property("lineNumber").toInt();
    if (file.isEmpty() || line <= 0)
        return error.toString();
    return QStringLiteral("%1:%2: %3").arg(file).arg(line).arg(error.toString());
}

DialogWatcher::DialogWatcher(Wrap wrap, QWidget* mainWindow) : wrap_(std::move(wrap)), mainWindow_(mainWindow)
{
    qApp->installEventFilter(this);
}

DialogWatcher::~DialogWatcher() { qApp->removeEventFilter(this); }

void DialogWatcher::On(const QString& formName, const QJSValue& handler)
{
    if (handler.isCallable())
        handlers_.insert(formName, handler);
    else
        handlers_.remove(formName);
}

bool DialogWatcher::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto* form = static_cast<QWidget*>(watched);
        const bool answerable = handlers_.contains(form->objectName()) || handlers_.contains(kAnyForm) ||
                                qobject_cast<QDialog*>(form);
        if (form->isWindow() && form != mainWindow_ && answerable) {
            pending_.append(form);
            QMetaObject::invokeMethod(this, &DialogWatcher::Drain, Qt::QueuedConnection);
        }
    }
    return false;
}

void DialogWatcher::Drain()
{
    while (!pending_.isEmpty()) {
        QPointer<QWidget> form = pending_.takeFirst();
        if (form && form->isVisible())
            runOne(form);
    }
}

void DialogWatcher::runOne(QWidget* form)
{
    const QString name = form->objectName();
    const QJSValue handler = handlers_.value(name, handlers_.value(kAnyForm));
    if (handler.isCallable()) {
        QJSValue fn = handler;
        const QJSValue result = fn.call({wrap_(form)});
        if (result.isError())
            record(QStringLiteral("In the handler of dialog %1: %2").arg(name, ScriptErrorText(result)));
        else if (IsOpenModalDialog(form))
            record(QStringLiteral("The handler of dialog %1 left the modal dialog open.").arg(name));
    } else if (IsOpenModalDialog(form)) {
        record(QStringLiteral("The modal dialog %1 was shown, and no onDialog(\"%1\", ...) handler answers it.")
                   .arg(name));
    }
    if (IsOpenModalDialog(form))
        static_cast<QDialog*>(form)->reject();
}

void DialogWatcher::record(const QString& error)
{
    if (error_.isEmpty())
        error_ = error;
}

QString DialogWatcher::TakeError()
{
    QString error;
    std::swap(error, error_);
    return error;
}

} // namespace feldra
