#pragma once

#include "addin/host/Fwd.h"
#include "addin/host/Segment.h"

#include <QString>
#include <memory>

namespace host {

// The feature chains of a document, by key.
class FeatureChains {
public:
    virtual ~FeatureChains() = default;
    virtual std::shared_ptr<host::Feature> Item(const QString& key) = 0;
    virtual int Count() = 0;
    // A new chain that starts with this segment.
    virtual std::shared_ptr<host::Feature> Add(const host::Segment& firstSegment) = 0;
    // Removes the chain; refused while an operation or a stock is made from it.
    virtual void Remove(const QString& key) = 0;
};

} // namespace host
