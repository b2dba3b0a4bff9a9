#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The host's main-menu popups, by number.
class MainMenus {
public:
    virtual ~MainMenus() = default;
    virtual std::shared_ptr<host::MenuControls> Item(int number) = 0;
};

} // namespace host
