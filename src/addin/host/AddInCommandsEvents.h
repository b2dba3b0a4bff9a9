#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// Sink of the add-in command registry's events: the command callbacks.
class AddInCommandsEvents {
public:
    virtual ~AddInCommandsEvents() = default;
    virtual void OnCommand(int cookie, int nCmdId) { (void)cookie; (void)nCmdId; }
    virtual void OnCommandUI(int cookie, int nCmdId, bool& Enabled, bool& Checked)
    {
        (void)cookie; (void)nCmdId; (void)Enabled; (void)Checked;
    }
};

} // namespace host
