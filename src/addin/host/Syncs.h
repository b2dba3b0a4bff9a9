#pragma once

#include "addin/host/Fwd.h"
#include "addin/host/SyncNode.h"

#include <array>
#include <memory>

namespace host {

// The synchronisations of a document, from 1.
class Syncs {
public:
    virtual ~Syncs() = default;
    virtual int Count() = 0;
    virtual std::shared_ptr<host::Sync> Item(int i) = 0;
    virtual void Remove(int i) = 0;
    virtual std::shared_ptr<host::Sync> Add(int typeIndex, const std::array<host::SyncNode, 4>& nodes) = 0;
};

} // namespace host
