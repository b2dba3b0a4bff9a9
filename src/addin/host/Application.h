#pragma once

#include "addin/host/ApplicationEvents.h"
#include "addin/host/Fwd.h"
#include "addin/host/Localizer.h"

#include <QString>
#include <QVariant>
#include <memory>

class QWidget;

namespace host {

// The host application (one per host process), and the source of its events.
class Application {
public:
    virtual ~Application() = default;
    // The active document, or none.
    virtual std::shared_ptr<host::Document> ActiveDocument() = 0;
    // The host's installation folder, ending with a path separator.
    virtual QString InstallFolder() = 0;
    // A writable folder, ending with a path separator.
    virtual QString TemporaryFolder() = 0;
    // The folder of the loaded add-in module, ending with a path separator.
    virtual QString AddInFolder() = 0;
    virtual std::shared_ptr<host::AddInCommands> AddInCommands() = 0;
    virtual std::shared_ptr<host::CommandBars> CommandBars() = 0;
    virtual std::shared_ptr<host::MainMenus> MainMenus() = 0;
    // The host main window; none when the host runs without one.
    virtual QWidget* MainWindowHandle() = 0;
    virtual std::shared_ptr<host::Configuration> Configuration() = 0;
    virtual void NotifyCommandStart(const QVariant& argument) = 0;
    virtual void RefreshCommandBars() = 0;
    // Sends keystrokes ("^m": control and M) to the host's active window without waiting.
    virtual void SendKeys(const QString& keys) = 0;
    // Opens a topic of a compiled help file (topic "posting.htm#Warning"; empty for its
    // default page), owned by the host main window.
    virtual void ShowHelpTopic(const QString& helpFile, const QString& topic) = 0;
    virtual std::shared_ptr<host::GeometryUtility> GeometryUtility() = 0;
    // The host's localisation object and help locale, as the add-in creates them.
    virtual std::shared_ptr<host::Localizer> CreateLocalizer() = 0;
    virtual std::shared_ptr<host::HelpLocale> CreateHelpLocale() = 0;
    // The host's message box: every message the add-in shows goes through it.
    virtual std::shared_ptr<host::MessageBoxService> MessageBoxes() = 0;
    virtual void Advise(host::ApplicationEvents* sink) = 0;
    virtual void Unadvise(host::ApplicationEvents* sink) = 0;
};

} // namespace host
