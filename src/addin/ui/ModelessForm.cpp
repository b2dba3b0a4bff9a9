#include "addin/ui/ModelessForm.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMap>
#include <QPointer>
#include <QRadioButton>
#include <QWidget>


namespace marelon {
namespace {

QString formKey(const QWidget* form)
{
    return QString::number(quintptr(form), 16);
}

// The keyboard filter of the registered dialogs, and the host window's resize filter.
class KeyboardHook : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool handleKey(QWidget* dialog, QKeyEvent* key);
    void hostStateChanged(QWidget* host);
};

struct ModelessState {
    QMap<QString, QPointer<QWidget>> registered;
    std::unique_ptr<KeyboardHook> hook;
    QPointer<QWidget> hostWindow;
    QPointer<QWidget> filteredHostWindow;
};

ModelessState& state()
{
    static ModelessState s;
    return s;
}

QWidget* registeredActiveDialog()
{
    QWidget* active = QApplication::activeWindow();
    if (!active && QApplication::focusWidget())
        active = QApplication::focusWidget()->window();
    return active && IsFormRegistered(active) ? active : nullptr;
}

// The dialog's visible, enabled controls that pass `accept`, in tab order.
template <typename Accept>
QList<QWidget*> controlsInTabOrder(QWidget* dialog, Accept accept)
{
    QList<QWidget*> controls;
    for (QWidget* w = dialog->nextInFocusChain(); w && w != dialog; w = w->nextInFocusChain()) {
        if (dialog->isAncestorOf(w) && w->isVisible() && w->isEnabled() && accept(w)
            && !controls.contains(w))
            controls.append(w);
    }
    return controls;
}

// The dialog's controls that Tab reaches.
QList<QWidget*> tabStops(QWidget* dialog)
{
    return controlsInTabOrder(dialog, [](QWidget* w) { return bool(w->focusPolicy() & Qt::TabFocus); });
}

// The control `step` places from `current` in a list, wrapping around at both ends.
QWidget* neighbour(const QList<QWidget*>& list, QWidget* current, int step)
{
    if (list.isEmpty())
        return nullptr;
    const auto at = list.indexOf(current);
    if (at < 0)
        return step > 0 ? list.first() : list.last();
    return list.at((at + step + list.size()) % list.size());
}

void moveTabFocus(QWidget* dialog, bool backwards)
{
    if (QWidget* next = neighbour(tabStops(dialog), dialog->focusWidget(), backwards ? -1 : 1))
        next->setFocus(backwards ? Qt::BacktabFocusReason : Qt::TabFocusReason);
}

// Option buttons of one frame, whether or not Tab stops at them (an exclusive
// group lets Tab reach only its checked button).
void moveAmongOptionButtons(QWidget* dialog, QRadioButton* current, int step)
{
    const auto group = controlsInTabOrder(dialog, [&](QWidget* w) {
        return qobject_cast<QRadioButton*>(w) && w->parentWidget() == current->parentWidget();
    });
    if (auto* next = qobject_cast<QRadioButton*>(neighbour(group, current, step))) {
        next->setChecked(true);
        next->setFocus(Qt::OtherFocusReason);
    }
}

bool KeyboardHook::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == state().filteredHostWindow && event->type() == QEvent::WindowStateChange)
        hostStateChanged(state().filteredHostWindow);

    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    QWidget* dialog = registeredActiveDialog();
    if (!dialog || !watched->isWidgetType())
        return false;
    // A key event travels from the focus widget up to its parents: handle it once.
    QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : dialog;
    if (watched != target)
        return false;
    return handleKey(dialog, static_cast<QKeyEvent*>(event));
}

bool KeyboardHook::handleKey(QWidget* dialog, QKeyEvent* key)
{
    const bool released = key->type() == QEvent::KeyRelease;
    switch (key->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (released)
            moveTabFocus(dialog, key->key() == Qt::Key_Backtab
                                     || (key->modifiers() & Qt::ShiftModifier));
        return true;
    case Qt::Key_Escape:
        if (released)
            HideModelessForm(dialog);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Right:
    case Qt::Key_Down: {
        // Arrow keys move among option buttons; in any other control they keep their own meaning.
        auto* option = qobject_cast<QRadioButton*>(dialog->focusWidget());
        if (!option)
            return false;
        if (released) {
            const bool back = key->key() == Qt::Key_Left || key->key() == Qt::Key_Up;
            moveAmongOptionButtons(dialog, option, back ? -1 : 1);
        }
        return true;
    }
    default:
        return false;
    }
}

void KeyboardHook::hostStateChanged(QWidget* host)
{
    const bool minimised = host->isMinimized();
    for (const auto& form : std::as_const(state().registered)) {
        if (form)
            form->setVisible(!minimised);
    }
}

void installHook()
{
    auto& s = state();
    s.hook = std::make_unique<KeyboardHook>();
    qApp->installEventFilter(s.hook.get());
    s.filteredHostWindow = s.hostWindow;
}

void removeHook()
{
    auto& s = state();
    qApp->removeEventFilter(s.hook.get());
    s.hook.reset();
    s.filteredHostWindow = nullptr;
}

} // namespace

void SetHostWindow(QWidget* hostWindow)
{
    state().hostWindow = hostWindow;
}

void ShowForm(QWidget* form, bool modal)
{
    if (modal) {
        if (auto* dialog = qobject_cast<QDialog*>(form)) {
            dialog->exec();
            return;
        }
        form->setWindowModality(Qt::ApplicationModal);
        form->show();
        return;
    }
    RegisterForm(form);
    form->showNormal();
    form->activateWindow();
    form->setFocus(Qt::ActiveWindowFocusReason);
}

void HideModelessForm(QWidget* form)
{
    UnregisterForm(form);
    form->hide();
    if (QWidget* host = state().hostWindow) {
        host->activateWindow();
        host->setFocus(Qt::ActiveWindowFocusReason);
    }
}

void ParentToHost(QWidget* form)
{
    QWidget* host = state().hostWindow;
    if (!host || form->parentWidget() == host)
        return;
    // Owned by the host window: it stays above it and follows it, as a window of its own.
    form->setParent(host, form->windowFlags() | Qt::Window | Qt::Tool);
}

void RegisterForm(QWidget* form)
{
    auto& s = state();
    s.registered.insert(formKey(form), form);
    if (!s.hook)
        installHook();
}

void UnregisterForm(QWidget* form)
{
    auto& s = state();
    s.registered.remove(formKey(form));
    if (s.registered.isEmpty() && s.hook)
        removeHook();
}

bool IsFormRegistered(const QWidget* form)
{
    return state().registered.contains(formKey(form));
}

bool IsKeyboardHookInstalled()
{
    return state().hook != nullptr;
}

} // namespace marelon
