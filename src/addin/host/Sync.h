#pragma once

#include "addin/host/Fwd.h"
#include "addin/host/SyncNode.h"

#include <array>
#include <memory>

namespace host {

// A synchronisation of a document: a type and four nodes.
class Sync {
public:
    virtual ~Sync() = default;
    // Position of the synchronisation type among the machine setup entries, 0 for none.
    virtual int TypeIndex() = 0;
    virtual std::array<host::SyncNode, 4> Nodes() = 0;
};

} // namespace host
