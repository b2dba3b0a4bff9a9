#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// Sink of a host document's events.
class DocumentEvents {
public:
    virtual ~DocumentEvents() = default;
    virtual void AfterDocumentSave() {}
};

} // namespace host
