#pragma once

#include "addin/host/Application.h"
#include "feldra/View.h"

namespace feldra {

// The application as one add-in sees it: the add-in's own command registry
// (by its cookie) and everything the host shares with all add-ins.
class ApplicationView final : public host::Application, public View {
public:
    ApplicationView(std::shared_ptr<HostContext> context, int cookie)
        : View(std::move(context), nullptr), cookie_(cookie)
    {
    }

    std::shared_ptr<host::Document> ActiveDocument() override;
    QString InstallFolder() override;
    QString TemporaryFolder() override;
    QString AddInFolder() override;
    std::shared_ptr<host::AddInCommands> AddInCommands() override;
    std::shared_ptr<host::CommandBars> CommandBars() override;
    std::shared_ptr<host::MainMenus> MainMenus() override;
    QWidget* MainWindowHandle() override;
    std::shared_ptr<host::Configuration> Configuration() override;
    void NotifyCommandStart(const QVariant& argument) override;
    void RefreshCommandBars() override;
    void SendKeys(const QString& keys) override;
    void ShowHelpTopic(const QString& helpFile, const QString& topic) override;
    std::shared_ptr<host::GeometryUtility> GeometryUtility() override;
    std::shared_ptr<host::Localizer> CreateLocalizer() override;
    std::shared_ptr<host::HelpLocale> CreateHelpLocale() override;
    std::shared_ptr<host::MessageBoxService> MessageBoxes() override;
    void Advise(host::ApplicationEvents* sink) override;
    void Unadvise(host::ApplicationEvents* sink) override;

private:
    int cookie_;
};

} // namespace feldra
