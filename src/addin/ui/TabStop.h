#pragma once

#include <QWidget>

namespace marelon {

// Puts a control into the dialog's tab order or takes it out; out of it, the
// control still takes the focus when clicked.
inline void SetTabStop(QWidget* control, bool tabStop)
{
    control->setFocusPolicy(tabStop ? Qt::StrongFocus : Qt::ClickFocus);
}

inline bool TabStop(const QWidget* control)
{
    return control->focusPolicy() & Qt::TabFocus;
}

} // namespace marelon
