#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>
#include <optional>

namespace host {

// A numbered host command bar; control positions count from 1.
class CommandBar {
public:
    virtual ~CommandBar() = default;
    virtual int ControlCount() = 0;
    // Without a position the separator goes to the end.
    virtual void AddSeparator(std::optional<int> before = std::nullopt) = 0;
    // Type 1 is a button bound to the command handle; before is a position from 1,
    // one past the last control appends.
    virtual std::shared_ptr<host::CommandBarControl> AddControl(int type, const QString& caption,
                                                                int commandHandle, int before) = 0;
    virtual std::shared_ptr<host::CommandBarControl> Control(int position) = 0;
};

} // namespace host
