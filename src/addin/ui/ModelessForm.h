#pragma once

class QWidget;

// Shows the add-in's dialogs beside the host: a modeless dialog stays owned by
// the host window, hides and shows with it, and gets a dialog's keyboard
// behaviour (Tab, Shift+Tab, Escape, arrow keys among option buttons) from a
// keyboard filter that exists exactly while at least one dialog is registered.
namespace marelon {

// The host main window the dialogs belong to (set at connection; none when
// the host runs without a window).
void SetHostWindow(QWidget* hostWindow);

// Shows a form: modeless (registered, shown and focused) or modal (a dialog's
// own event loop, no owner form).
void ShowForm(QWidget* form, bool modal);

// Hides a modeless form, unregisters it and gives the focus back to the host.
void HideModelessForm(QWidget* form);

// Makes the host main window the owner of the form's window.
void ParentToHost(QWidget* form);

void RegisterForm(QWidget* form);
void UnregisterForm(QWidget* form);

bool IsFormRegistered(const QWidget* form);
// True while the keyboard filter and the host window filter are installed.
bool IsKeyboardHookInstalled();

} // namespace marelon
