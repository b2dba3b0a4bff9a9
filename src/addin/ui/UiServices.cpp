#include "addin/ui/UiServices.h"

#include "addin/host/HostError.h"

namespace marelon {
namespace {

struct Services {
    std::shared_ptr<host::Localizer> localizer;
    std::shared_ptr<host::MessageBoxService> messages;
};

Services& current()
{
    static Services services;
    return services;
}

} // namespace

void InstallUiServices(std::shared_ptr<host::Localizer> localizer,
                       std::shared_ptr<host::MessageBoxService> messages)
{
    current() = Services{std::move(localizer), std::move(messages)};
}

void RemoveUiServices()
{
    current() = Services{};
}

QString Tr(const QString& english)
{
    const auto& localizer = current().localizer;
    return localizer ? localizer->Translate(english) : english;
}

void TranslateForm(QWidget* form)
{
    if (const auto& localizer = current().localizer)
        localizer->TranslateForm(form);
}

int UiLanguageCode()
{
    const auto& localizer = current().localizer;
    return localizer ? localizer->LanguageCode() : 1033;
}

host::MsgResult MsgBox(const QString& prompt, host::MsgButtons buttons, host::MsgIcon icon,
                       const QString& title)
{
    const auto& messages = current().messages;
    if (!messages)
        throw host::HostError(QStringLiteral("MsgBox"),
                              QStringLiteral("no message box service is installed"));
    return messages->Show(prompt, buttons, icon, title);
}

} // namespace marelon
