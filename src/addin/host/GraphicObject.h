#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// A graphic object of a document: anything with a key and custom properties.
class GraphicObject {
public:
    virtual ~GraphicObject() = default;
    virtual QString Key() = 0;
    virtual std::shared_ptr<host::CustomProperties> CustomProperties() = 0;
};

} // namespace host
