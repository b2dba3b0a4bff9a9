#pragma once

#include "addin/host/MessageBoxService.h"

class QWidget;

namespace feldra {

// The message box a user sees: a modal Qt message box over the host window.
class QtMessageBoxService : public host::MessageBoxService {
public:
    explicit QtMessageBoxService(QWidget* parent = nullptr) : parent_(parent) {}

    host::MsgResult Show(const QString& prompt, host::MsgButtons buttons, host::MsgIcon icon,
                         const QString& title) override;

private:
    QWidget* parent_;
};

} // namespace feldra
