#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// Sink of the technology utility's events: the host edits an operation's technology.
class TechnologyUtilityEvents {
public:
    virtual ~TechnologyUtilityEvents() = default;
    virtual void OnEdit(std::shared_ptr<host::Technology> Technology, int editType, bool& bOverride,
                        int& resultCode)
    {
        (void)Technology; (void)editType; (void)bOverride; (void)resultCode;
    }
};

} // namespace host
