#include "feldra/QtMessageBoxService.h"

#include <QApplication>
#include <QMessageBox>

namespace feldra {
namespace {

using host::MsgButtons;
using host::MsgIcon;
using host::MsgResult;

QMessageBox::StandardButtons standardButtons(MsgButtons buttons)
{
    switch (buttons) {
    case MsgButtons::OK: return QMessageBox::Ok;
    case MsgButtons::OKCancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case MsgButtons::AbortRetryIgnore:
        return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case MsgButtons::YesNoCancel: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MsgButtons::YesNo: return QMessageBox::Yes | QMessageBox::No;
    case MsgButtons::RetryCancel: return QMessageBox::Retry | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon standardIcon(MsgIcon icon)
{
    switch (icon) {
    case MsgIcon::None: return QMessageBox::NoIcon;
    case MsgIcon::Critical: return QMessageBox::Critical;
    case MsgIcon::Question: return QMessageBox::Question;
    case MsgIcon::Exclamation: return QMessageBox::Warning;
    case MsgIcon::Information: return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

MsgResult result(int button)
{
    switch (button) {
    case QMessageBox::Cancel: return MsgResult::Cancel;
    case QMessageBox::Abort: return MsgResult::Abort;
    case QMessageBox::Retry: return MsgResult::Retry;
    case QMessageBox::Ignore: return MsgResult::Ignore;
    case QMessageBox::Yes: return MsgResult::Yes;
    case QMessageBox::No: return MsgResult::No;
    default: return MsgResult::OK;
    }
}

} // namespace

MsgResult QtMessageBoxService::Show(const QString& prompt, MsgButtons buttons, MsgIcon icon,
                                    const QString& title)
{
    // Over the window the user is working in (a dialog's check over the
    // dialog, which stays where it is), else over the main window.
    QWidget* over = QApplication::activeModalWidget();
    if (!over)
        over = QApplication::activeWindow();
    if (!over || !over->isVisible())
        over = parent_;
    QMessageBox box(standardIcon(icon), title, prompt, standardButtons(buttons), over);
    return result(box.exec());
}

} // namespace feldra
