// The application and what hangs from it: configuration, help locale, the
// add-in command registry, command bars, main menus and the geometry utility.
#include "feldra/ApplicationViews.h"

#include "addin/host/AddInCommands.h"
#include "addin/host/CommandBar.h"
#include "addin/host/CommandBarControl.h"
#include "addin/host/CommandBars.h"
#include "addin/host/Configuration.h"
#include "addin/host/HelpLocale.h"
#include "addin/host/MainMenus.h"
#include "addin/host/MenuControl.h"
#include "addin/host/MenuControls.h"
#include "feldra/FeldraGeometryUtility.h"
#include "feldra/PassThroughLocalizer.h"
#include "feldra/Views.h"

namespace feldra {

namespace {

class ConfigurationView final : public host::Configuration, public View {
public:
    using View::View;
    int LanguageCode() override { return get("Configuration.LanguageCode", ctx().app.languageCode); }
};

// The help folder of a language is its own when the host ships help in it,
// else the English one (1033).
class HelpLocaleView final : public host::HelpLocale, public View {
public:
    using View::View;
    int HelpLanguageNumber(int languageCode) override
    {
        guard("HelpLocale.HelpLanguageNumber");
        return ctx().app.helpLanguages.contains(languageCode) ? languageCode : 1033;
    }
};

class AddInCommandsView final : public host::AddInCommands, public View {
public:
    AddInCommandsView(ContextPtr context, int cookie) : View(std::move(context), nullptr), cookie_(cookie) {}

    int Cookie() override { return get("AddInCommands.Cookie", cookie_); }
    int AddCommand(int cookie, int nCmdId, const QString& groupName) override
    {
        guard("AddInCommands.AddCommand");
        if (cookie != cookie_)
            fail("AddInCommands.AddCommand", QStringLiteral("The cookie %1 is not this add-in's.").arg(cookie));
        for (const CommandData& command : ctx().app.commands)
            if (command.cookie == cookie && command.id == nCmdId)
                fail("AddInCommands.AddCommand", QStringLiteral("Command %1 is registered already.").arg(nCmdId));
        const int handle = ctx().app.nextCommandHandle++;
        ctx().app.commands.append({handle, cookie, nCmdId, groupName});
        return handle;
    }
    void RemoveCommand(int commandHandle) override
    {
        guard("AddInCommands.RemoveCommand");
        const CommandData* command = ctx().app.Command(commandHandle);
        if (!command || command->cookie != cookie_)
            fail("AddInCommands.RemoveCommand", QStringLiteral("No command with the handle %1.").arg(commandHandle));
        ctx().app.commands.removeIf([commandHandle](const CommandData& c) { return c.handle == commandHandle; });
        auto boundToIt = [commandHandle](const auto& control) { return control->commandHandle == commandHandle; };
        for (const auto& bar : ctx().app.commandBars) {
            // A bar that loses buttons does not keep a separator at its end.
            if (bar->controls.removeIf(boundToIt) > 0)
                while (!bar->controls.isEmpty() && bar->controls.last()->type == ControlData::Separator)
                    bar->controls.removeLast();
        }
        for (const auto& menu : ctx().app.mainMenus)
            menu->entries.removeIf(boundToIt);
    }
    void Advise(host::AddInCommandsEvents* sink) override
    {
        guard("AddInCommands.Advise");
        ctx().CommandEvents(cookie_).Advise(sink);
    }
    void Unadvise(host::AddInCommandsEvents* sink) override
    {
        guard("AddInCommands.Unadvise");
        ctx().CommandEvents(cookie_).Unadvise(sink);
    }

private:
    int cookie_;
};

class CommandBarControlView final : public host::CommandBarControl, public View {
public:
    CommandBarControlView(ContextPtr context, std::shared_ptr<ControlData> data)
        : View(std::move(context), nullptr), data_(std::move(data))
    {
    }
    void setVisible(bool visible) override { put("CommandBarControl.Visible", data_->visible, visible); }
    void setCaption(const QString& caption) override { put("CommandBarControl.Caption", data_->caption, caption); }
    void setToolTip(const QString& toolTip) override { put("CommandBarControl.ToolTip", data_->toolTip, toolTip); }
    void SetBitmaps(const QString& smallBitmapFile, const QString& largeBitmapFile) override
    {
        guard("CommandBarControl.SetBitmaps");
        data_->smallBitmap = smallBitmapFile;
        data_->largeBitmap = largeBitmapFile;
    }

private:
    std::shared_ptr<ControlData> data_;
};

// Inserts a control before a position counted from 1; one past the end appends.
void InsertControl(ControlList& controls, std::optional<int> before, std::shared_ptr<ControlData> control,
                   const QString& operation)
{
    const int position = before.value_or(int(controls.size()) + 1);
    if (position < 1 || position > controls.size() + 1)
        throw host::HostError(operation, QStringLiteral("Position %1 is not between 1 and %2.")
                                             .arg(position)
                                             .arg(controls.size() + 1));
    controls.insert(position - 1, std::move(control));
}

std::shared_ptr<ControlData> NewControl(const HostContext& context, int type, const QString& caption,
                                        int commandHandle, const QString& operation)
{
    if (type != ControlData::Separator && type != ControlData::Button)
        throw host::HostError(operation, QStringLiteral("Unknown control type %1.").arg(type));
    if (type == ControlData::Button && !context.app.Command(commandHandle))
        throw host::HostError(operation, QStringLiteral("No command with the handle %1.").arg(commandHandle));
    auto control = std::make_shared<ControlData>();
    control->type = type;
    control->caption = caption;
    control->commandHandle = type == ControlData::Button ? commandHandle : 0;
    return control;
}

class CommandBarView final : public host::CommandBar, public View {
public:
    CommandBarView(ContextPtr context, std::shared_ptr<CommandBarData> data)
        : View(std::move(context), nullptr), data_(std::move(data))
    {
    }
    int ControlCount() override { return get("CommandBar.ControlCount", int(data_->controls.size())); }
    void AddSeparator(std::optional<int> before) override
    {
        const QString operation = QStringLiteral("CommandBar.AddSeparator");
        guard(operation);
        InsertControl(data_->controls, before, NewControl(ctx(), ControlData::Separator, {}, 0, operation), operation);
    }
    std::shared_ptr<host::CommandBarControl> AddControl(int type, const QString& caption, int commandHandle,
                                                        int before) override
    {
        guard("CommandBar.AddControl");
        auto control = NewControl(ctx(), type, caption, commandHandle, "CommandBar.AddControl");
        InsertControl(data_->controls, before, control, "CommandBar.AddControl");
        return std::make_shared<CommandBarControlView>(ctx_, control);
    }
    std::shared_ptr<host::CommandBarControl> Control(int position) override
    {
        guard("CommandBar.Control");
        return std::make_shared<CommandBarControlView>(ctx_, at(data_->controls, position, "CommandBar.Control"));
    }

private:
    std::shared_ptr<CommandBarData> data_;
};

class CommandBarsView final : public host::CommandBars, public View {
public:
    using View::View;
    std::shared_ptr<host::CommandBar> Item(int number) override
    {
        guard("CommandBars.Item");
        auto bar = ctx().app.CommandBar(number);
        if (!bar)
            fail("CommandBars.Item", QStringLiteral("No command bar %1.").arg(number));
        return std::make_shared<CommandBarView>(ctx_, bar);
    }
};

class MenuControlView final : public host::MenuControl, public View {
public:
    MenuControlView(ContextPtr context, std::shared_ptr<ControlData> data)
        : View(std::move(context), nullptr), data_(std::move(data))
    {
    }
    bool HasCommand() override { return get("MenuControl.HasCommand", data_->type != ControlData::Separator); }
    QString Caption() override { return get("MenuControl.Caption", data_->caption); }

private:
    std::shared_ptr<ControlData> data_;
};

class MenuControlsView final : public host::MenuControls, public View {
public:
    MenuControlsView(ContextPtr context, std::shared_ptr<MenuData> data)
        : View(std::move(context), nullptr), data_(std::move(data))
    {
    }
    std::shared_ptr<host::MenuControl> Item(int position) override
    {
        guard("MenuControls.Item");
        return std::make_shared<MenuControlView>(ctx_, at(data_->entries, position, "MenuControls.Item"));
    }
    int Count() override { return get("MenuControls.Count", int(data_->entries.size())); }
    std::shared_ptr<host::MenuControl> Add(int type, const QString& caption, int commandHandle,
                                           std::optional<int> before) override
    {
        guard("MenuControls.Add");
        auto entry = NewControl(ctx(), type, caption, commandHandle, "MenuControls.Add");
        InsertControl(data_->entries, before, entry, "MenuControls.Add");
        return std::make_shared<MenuControlView>(ctx_, entry);
    }
    void Remove(int position) override
    {
        guard("MenuControls.Remove");
        at(data_->entries, position, "MenuControls.Remove");
        data_->entries.removeAt(position - 1);
    }
    void Remove(const QString& caption) override
    {
        guard("MenuControls.Remove");
        auto it = std::find_if(data_->entries.cbegin(), data_->entries.cend(),
                               [&caption](const auto& entry) { return entry->caption == caption; });
        if (it == data_->entries.cend())
            fail("MenuControls.Remove", QStringLiteral("No entry \"%1\".").arg(caption));
        data_->entries.erase(it);
    }

private:
    std::shared_ptr<MenuData> data_;
};

// The host's message box as an add-in keeps it from its connection on: each
// message goes to the service installed when it is shown (the window, or the
// recorder of a test or macro).
class MessageBoxView final : public host::MessageBoxService, public View {
public:
    using View::View;
    host::MsgResult Show(const QString& prompt, host::MsgButtons buttons, host::MsgIcon icon,
                         const QString& title) override
    {
        guard("MessageBox.Show");
        const auto service = ctx().services.messageBox;
        if (!service)
            fail("MessageBox.Show", QStringLiteral("The host has no message box."));
        return service->Show(prompt, buttons, icon, title);
    }
};

class MainMenusView final : public host::MainMenus, public View {
public:
    using View::View;
    std::shared_ptr<host::MenuControls> Item(int number) override
    {
        guard("MainMenus.Item");
        auto menu = ctx().app.Menu(number);
        if (!menu)
            fail("MainMenus.Item", QStringLiteral("No main-menu popup %1.").arg(number));
        return std::make_shared<MenuControlsView>(ctx_, menu);
    }
};

} // namespace

std::shared_ptr<host::Document> ApplicationView::ActiveDocument()
{
    guard("Application.ActiveDocument");
    return ctx().activeDocument ? MakeDocument(ctx_, ctx().activeDocument) : nullptr;
}

QString ApplicationView::InstallFolder() { return get("Application.InstallFolder", ctx().app.installFolder); }
QString ApplicationView::TemporaryFolder() { return get("Application.TemporaryFolder", ctx().app.temporaryFolder); }
QString ApplicationView::AddInFolder()
{
    QString folder = ctx().app.addInFolder;
    for (const AddInData& addIn : ctx().app.addIns)
        if (addIn.cookie == cookie_ && !addIn.folder.isEmpty())
            folder = addIn.folder;
    return get("Application.AddInFolder", folder);
}

std::shared_ptr<host::AddInCommands> ApplicationView::AddInCommands()
{
    guard("Application.AddInCommands");
    return std::make_shared<AddInCommandsView>(ctx_, cookie_);
}

std::shared_ptr<host::CommandBars> ApplicationView::CommandBars()
{
    guard("Application.CommandBars");
    return std::make_shared<CommandBarsView>(ctx_, nullptr);
}

std::shared_ptr<host::MainMenus> ApplicationView::MainMenus()
{
    guard("Application.MainMenus");
    return std::make_shared<MainMenusView>(ctx_, nullptr);
}

QWidget* ApplicationView::MainWindowHandle() { return get("Application.MainWindowHandle", ctx().services.mainWindow); }

std::shared_ptr<host::Configuration> ApplicationView::Configuration()
{
    guard("Application.Configuration");
    return std::make_shared<ConfigurationView>(ctx_, nullptr);
}

void ApplicationView::NotifyCommandStart(const QVariant& argument)
{
    guard("Application.NotifyCommandStart");
    ctx().log.RecordRequest("Application.NotifyCommandStart", {argument.toString()});
}

void ApplicationView::RefreshCommandBars()
{
    guard("Application.RefreshCommandBars");
    ctx().log.RecordRequest("Application.RefreshCommandBars");
    if (ctx().services.refreshCommandBars)
        ctx().services.refreshCommandBars();
}

void ApplicationView::SendKeys(const QString& keys)
{
    guard("Application.SendKeys");
    ctx().log.RecordRequest("Application.SendKeys", {keys});
    if (ctx().services.sendKeys)
        ctx().services.sendKeys(keys);
}

void ApplicationView::ShowHelpTopic(const QString& helpFile, const QString& topic)
{
    guard("Application.ShowHelpTopic");
    ctx().log.RecordRequest("Application.ShowHelpTopic", {helpFile, topic});
    if (ctx().services.showHelpTopic)
        ctx().services.showHelpTopic(helpFile, topic);
}

std::shared_ptr<host::GeometryUtility> ApplicationView::GeometryUtility()
{
    guard("Application.GeometryUtility");
    return std::make_shared<FeldraGeometryUtility>(ctx_);
}

std::shared_ptr<host::Localizer> ApplicationView::CreateLocalizer()
{
    guard("Application.CreateLocalizer");
    if (ctx().services.createLocalizer)
        return ctx().services.createLocalizer();
    return std::make_shared<PassThroughLocalizer>();
}

std::shared_ptr<host::HelpLocale> ApplicationView::CreateHelpLocale()
{
    guard("Application.CreateHelpLocale");
    return std::make_shared<HelpLocaleView>(ctx_, nullptr);
}

std::shared_ptr<host::MessageBoxService> ApplicationView::MessageBoxes()
{
    guard("Application.MessageBoxes");
    return std::make_shared<MessageBoxView>(ctx_, nullptr);
}

void ApplicationView::Advise(host::ApplicationEvents* sink)
{
    guard("Application.Advise");
    ctx().applicationEvents.Advise(sink);
}

void ApplicationView::Unadvise(host::ApplicationEvents* sink)
{
    guard("Application.Unadvise");
    ctx().applicationEvents.Unadvise(sink);
}

} // namespace feldra
