#pragma once

#include <QJSValue>
#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

namespace feldra {

// Runs a macro's dialog handlers: when a window whose form name has a handler
// becomes visible (a Show event seen by an application event filter), the
// handler is queued and runs as soon as control is back in an event loop:
// the modal dialog's own loop for a dialog shown with exec, or the macro
// runner's next step for a modeless one. A modal dialog left open by its
// handler, or shown with no handler at all, is rejected and recorded as an
// error, so that a macro can never hang on a dialog.
class DialogWatcher : public QObject {
public:
    using Wrap = std::function<QJSValue(QWidget*)>;
    // The handler of every form that has none of its own.
    static inline const QString kAnyForm = QStringLiteral("*");

    DialogWatcher(Wrap wrap, QWidget* mainWindow);
    ~DialogWatcher() override;

    // Sets the handler of a form name; an undefined or null handler removes it.
    void On(const QString& formName, const QJSValue& handler);

    // Runs the queued handlers now.
    void Drain();
    // The first error since the last call, empty when none.
    QString TakeError();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void runOne(QWidget* form);
    void record(const QString& error);

    Wrap wrap_;
    QPointer<QWidget> mainWindow_;
    QMap<QString, QJSValue> handlers_;
    QList<QPointer<QWidget>> pending_;
    QString error_;
};

// "file:line: message" of a JavaScript error value.
QString ScriptErrorText(const QJSValue& error);

} // namespace feldra
