#include "feldra/ApplicationData.h"

#include <QDir>
#include <QStringList>
#include <algorithm>

namespace feldra {

namespace {

std::shared_ptr<ControlData> HostButton(const QString& caption)
{
    auto control = std::make_shared<ControlData>();
    control->caption = caption;
    control->toolTip = caption;
    return control;
}

std::shared_ptr<ControlData> HostSeparator()
{
    auto control = std::make_shared<ControlData>();
    control->type = ControlData::Separator;
    return control;
}

QString WithSeparator(QString folder)
{
    folder = QDir::toNativeSeparators(folder);
    return folder.endsWith(QDir::separator()) ? folder : folder + QDir::separator();
}

} // namespace

ApplicationData ApplicationData::Standard()
{
    ApplicationData app;
    app.temporaryFolder = WithSeparator(QDir::tempPath());
    const QStringList barNames{"Standard", "Edit", "View", "Geometry", "Features", "Solids"};
    for (int number = 1; number <= 23; ++number) {
        auto bar = std::make_shared<CommandBarData>();
        bar->number = number;
        bar->name = number <= barNames.size() ? barNames[number - 1] : QStringLiteral("Bar %1").arg(number);
        app.commandBars.append(bar);
    }
    app.CommandBar(2)->controls = {HostButton("Cut"), HostButton("Copy"), HostButton("Paste")};
    app.CommandBar(23)->name = QStringLiteral("Lathe");
    app.CommandBar(23)->controls = {HostButton("Turret Setup"), HostButton("Simulate"),
                                    HostButton("Generate NC Code")};

    const QStringList menuNames{"File", "Edit", "View", "Geometry", "Features",
                                "Operations", "Tools", "Window", "Help"};
    for (int number = 1; number <= menuNames.size(); ++number) {
        auto menu = std::make_shared<MenuData>();
        menu->number = number;
        menu->caption = menuNames[number - 1];
        app.mainMenus.append(menu);
    }
    app.Menu(9)->entries = {HostButton("Help Topics"), HostSeparator(), HostButton("About Feldra")};
    return app;
}

std::shared_ptr<CommandBarData> ApplicationData::CommandBar(int number) const
{
    auto it = std::find_if(commandBars.cbegin(), commandBars.cend(),
                           [number](const auto& bar) { return bar->number == number; });
    return it == commandBars.cend() ? nullptr : *it;
}

std::shared_ptr<MenuData> ApplicationData::Menu(int number) const
{
    auto it = std::find_if(mainMenus.cbegin(), mainMenus.cend(),
                           [number](const auto& menu) { return menu->number == number; });
    return it == mainMenus.cend() ? nullptr : *it;
}

QString ApplicationData::CommandCaption(int handle) const
{
    for (const auto& bar : commandBars)
        for (const auto& control : bar->controls)
            if (control->commandHandle == handle)
                return control->caption;
    for (const auto& menu : mainMenus)
        for (const auto& entry : menu->entries)
            if (entry->commandHandle == handle)
                return entry->caption;
    return {};
}

const CommandData* ApplicationData::Command(int handle) const
{
    auto it = std::find_if(commands.cbegin(), commands.cend(),
                           [handle](const CommandData& command) { return command.handle == handle; });
    return it == commands.cend() ? nullptr : &*it;
}

} // namespace feldra
