#pragma once

#include "addin/host/AddInCommandsEvents.h"
#include "addin/host/ApplicationEvents.h"
#include "addin/host/Localizer.h"
#include "feldra/ApplicationData.h"
#include "feldra/DocumentState.h"
#include "feldra/EventSource.h"
#include "feldra/FaultInjector.h"
#include "feldra/HostLog.h"
#include "feldra/MessageBoxRecorder.h"

#include <QMap>
#include <QStringList>
#include <functional>
#include <memory>

class QWidget;

namespace feldra {

// The services behind the facade that the Feldra application (or a test)
// provides. Every request is recorded in the host log first; a service that is
// not installed does nothing more, except where noted.
struct HostServices {
    std::function<void(const QString& keys)> sendKeys;
    std::function<void(const QString& helpFile, const QString& topic)> showHelpTopic;
    std::function<void()> refreshView;
    std::function<void()> refreshCommandBars;
    // Lets the user pick an object: its key, or an empty text when the user
    // cancels. Without it the queued pick answers are used.
    std::function<QString(const QString& prompt, int filter)> pickObject;
    QStringList pickAnswers;
    // Creates the localiser the add-in asks for; without it texts stay English.
    std::function<std::shared_ptr<host::Localizer>()> createLocalizer;
    // The message box the add-ins show their messages in: a recorder unless
    // the application installs a window of its own.
    std::shared_ptr<host::MessageBoxService> messageBox = std::make_shared<MessageBoxRecorder>();
    QWidget* mainWindow = nullptr;
    // The title of an undo step the host names ("Simulate") in the user's
    // language; without it the English name.
    std::function<QString(const QString& name)> translateStep;
};

// Everything the host's facade objects share: the fault injector, the log, the
// services, the application's state, the open documents and the event sources
// of the application and of each add-in's command registry (by cookie).
struct HostContext {
    FaultInjector faults;
    HostLog log;
    HostServices services;
    ApplicationData app = ApplicationData::Standard();
    QList<std::shared_ptr<DocumentState>> documents;
    std::shared_ptr<DocumentState> activeDocument;
    EventSource<host::ApplicationEvents> applicationEvents;
    QMap<int, std::shared_ptr<EventSource<host::AddInCommandsEvents>>> commandEvents;

    EventSource<host::AddInCommandsEvents>& CommandEvents(int cookie)
    {
        auto& source = commandEvents[cookie];
        if (!source)
            source = std::make_shared<EventSource<host::AddInCommandsEvents>>();
        return *source;
    }
};

} // namespace feldra
