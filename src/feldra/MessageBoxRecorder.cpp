#include "feldra/MessageBoxRecorder.h"

namespace feldra {
namespace {

host::MsgResult firstButton(host::MsgButtons buttons)
{
    using host::MsgButtons;
    using host::MsgResult;
    switch (buttons) {
    case MsgButtons::OK:
    case MsgButtons::OKCancel: return MsgResult::OK;
    case MsgButtons::AbortRetryIgnore: return MsgResult::Abort;
    case MsgButtons::YesNoCancel:
    case MsgButtons::YesNo: return MsgResult::Yes;
    case MsgButtons::RetryCancel: return MsgResult::Retry;
    }
    return MsgResult::OK;
}

} // namespace

host::MsgResult MessageBoxRecorder::Show(const QString& prompt, host::MsgButtons buttons,
                                         host::MsgIcon icon, const QString& title)
{
    messages_.append(Message{prompt, buttons, icon, title});
    if (whileShown)
        whileShown(messages_.last());
    return answers_.isEmpty() ? firstButton(buttons) : answers_.takeFirst();
}

void MessageBoxRecorder::Clear()
{
    messages_.clear();
    answers_.clear();
}

} // namespace feldra
