#pragma once

#include "addin/host/AddInCommandsEvents.h"
#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// The host's registry of one add-in's commands, and the source of their callbacks.
class AddInCommands {
public:
    virtual ~AddInCommands() = default;
    virtual int Cookie() = 0;
    // Registers command nCmdId of the add-in with this cookie; returns the command handle.
    virtual int AddCommand(int cookie, int nCmdId, const QString& groupName) = 0;
    // Removes the command and every control bound to it.
    virtual void RemoveCommand(int commandHandle) = 0;
    virtual void Advise(host::AddInCommandsEvents* sink) = 0;
    virtual void Unadvise(host::AddInCommandsEvents* sink) = 0;
};

} // namespace host
