#pragma once

#include "addin/host/Fwd.h"
#include "addin/host/GraphicObject.h"
#include "addin/host/Segment.h"

#include <memory>

namespace host {

// A feature (chain of geometry) of a document; its elements count from 1.
class Feature : public GraphicObject {
public:
    virtual int Count() = 0;
    // The coordinates of element i.
    virtual std::shared_ptr<host::Point> Element(int i) = 0;
    // Appends a segment to the chain, joined to its last element.
    virtual void AddSegment(const host::Segment& segment) = 0;
    // The layer the chain is on.
    virtual std::shared_ptr<host::Layer> Layer() = 0;
    virtual void setLayer(std::shared_ptr<host::Layer> layer) = 0;
};

} // namespace host
