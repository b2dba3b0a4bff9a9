#pragma once

#include "addin/host/Localizer.h"
#include "addin/host/MessageBoxService.h"

#include <QString>
#include <memory>

class QWidget;

namespace marelon {

// The title of every message box that names no title of its own.
inline const QString kDefaultTitle = QStringLiteral("Marelon");

// The host services through which the add-in shows text: the connection
// installs them and every dialog and message reaches them here.
void InstallUiServices(std::shared_ptr<host::Localizer> localizer,
                       std::shared_ptr<host::MessageBoxService> messages);
void RemoveUiServices();

// English text in the user's language, at the moment it is shown.
// Without a localiser the text is shown as it is.
QString Tr(const QString& english);

// Translates a form's captions through the host's localiser (nothing without one).
void TranslateForm(QWidget* form);

// The language of the installed localiser (1033 English without one).
int UiLanguageCode();

// A message box through the host's service. The prompt and title are shown as
// given: translate them with Tr first.
host::MsgResult MsgBox(const QString& prompt, host::MsgButtons buttons = host::MsgButtons::OK,
                       host::MsgIcon icon = host::MsgIcon::None,
                       const QString& title = kDefaultTitle);

} // namespace marelon
