#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>
#include <optional>

namespace host {

// The entries of a host menu popup, by position from 1.
class MenuControls {
public:
    virtual ~MenuControls() = default;
    virtual std::shared_ptr<host::MenuControl> Item(int position) = 0;
    virtual int Count() = 0;
    // Type 0 is a separator, 1 a command; without a position the entry goes to the end.
    virtual std::shared_ptr<host::MenuControl> Add(int type, const QString& caption = QString(), int commandHandle = 0,
                                               std::optional<int> before = std::nullopt) = 0;
    virtual void Remove(int position) = 0;
    // Removes the first entry with this caption.
    virtual void Remove(const QString& caption) = 0;
};

} // namespace host
