#pragma once

#include "addin/host/HostError.h"
#include "addin/ui/UiServices.h"

#include <QObject>

#include <exception>

namespace marelon {

// Runs a dialog handler for one of its controls. A failure cannot leave
// through the dialog's event loop: it ends the handler and is shown. Called
// from code, the handlers let their failures leave them.
template <class Handler>
void RunControlHandler(Handler&& handler)
{
    try {
        handler();
    } catch (const host::HostError& error) {
        MsgBox(error.Description(), host::MsgButtons::OK, host::MsgIcon::Critical);
    } catch (const std::exception& error) {
        MsgBox(QString::fromUtf8(error.what()), host::MsgButtons::OK, host::MsgIcon::Critical);
    }
}

// Connects a control's signal to a handler of its form, run as above.
template <class Form, class Sender, class Signal>
void ConnectHandler(Form* form, Sender* sender, Signal signal, void (Form::*handler)())
{
    QObject::connect(sender, signal, form, [form, handler] { RunControlHandler([form, handler] { (form->*handler)(); }); });
}

} // namespace marelon
