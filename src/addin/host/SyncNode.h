#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The host's synchronisation node record: five fields, of which the add-in sets
// the placement, the operation and the element index.
struct SyncNode {
    int placement = 0;
    std::shared_ptr<host::Operation> operation;
    int reserved3 = 0;
    int elementIndex = 0;
    int reserved5 = 0;
};

} // namespace host
