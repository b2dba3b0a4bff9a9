#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// The layers of a document, by name.
class Layers {
public:
    virtual ~Layers() = default;
    virtual std::shared_ptr<host::Layer> Item(const QString& name) = 0;
    virtual int Count() = 0;
    virtual std::shared_ptr<host::Layer> Add(const QString& name) = 0;
};

} // namespace host
