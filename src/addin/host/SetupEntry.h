#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// A named entry of the machine setup (the synchronisation types among them).
class SetupEntry {
public:
    virtual ~SetupEntry() = default;
    virtual QString Name() = 0;
};

} // namespace host
