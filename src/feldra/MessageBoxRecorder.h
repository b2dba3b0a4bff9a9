#pragma once

#include "addin/host/MessageBoxService.h"

#include <QList>
#include <QString>

#include <functional>

namespace feldra {

// The message box of tests and macros: records every message and answers it
// with the next queued answer, or with the first button of the box.
class MessageBoxRecorder : public host::MessageBoxService {
public:
    struct Message {
        QString prompt;
        host::MsgButtons buttons;
        host::MsgIcon icon;
        QString title;
    };

    host::MsgResult Show(const QString& prompt, host::MsgButtons buttons, host::MsgIcon icon,
                         const QString& title) override;

    // Queues the answer to the next message.
    void Answer(host::MsgResult result) { answers_.append(result); }

    const QList<Message>& Messages() const { return messages_; }
    // Runs while each message is shown, before it is answered: a test looks
    // at the windows as the user sees them behind the message.
    std::function<void(const Message&)> whileShown;
    const Message& Last() const { return messages_.last(); }
    void Clear();

private:
    QList<Message> messages_;
    QList<host::MsgResult> answers_;
};

} // namespace feldra
