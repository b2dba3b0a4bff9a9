#pragma once

#include "addin/host/Fwd.h"
#include "addin/host/TechnologyUtilityEvents.h"

#include <memory>

namespace host {

// A document's technology utility: only an event source for the add-in.
class TechnologyUtility {
public:
    virtual ~TechnologyUtility() = default;
    virtual void Advise(host::TechnologyUtilityEvents* sink) = 0;
    virtual void Unadvise(host::TechnologyUtilityEvents* sink) = 0;
};

} // namespace host
