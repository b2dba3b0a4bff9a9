#pragma once

#include <QString>

namespace host {

enum class MsgButtons { OK, OKCancel, AbortRetryIgnore, YesNoCancel, YesNo, RetryCancel };
enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgResult { OK = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

// The host's message box: a window for a user, a recorder for tests and macros.
class MessageBoxService {
public:
    virtual ~MessageBoxService() = default;

    virtual MsgResult Show(const QString& prompt, MsgButtons buttons, MsgIcon icon,
                           const QString& title) = 0;
};

} // namespace host
