#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The named entries of the machine setup, from 1.
class SetupEntries {
public:
    virtual ~SetupEntries() = default;
    virtual std::shared_ptr<host::SetupEntry> Item(int i) = 0;
    virtual int Count() = 0;
    virtual void Remove(int i) = 0;
    // Appends an entry of this setup that was removed before, as it was.
    virtual void Add(std::shared_ptr<host::SetupEntry> entry) = 0;
};

} // namespace host
