#pragma once

#include "addin/host/Fwd.h"

#include <array>
#include <memory>

namespace host {

// A stock of the simulation.
class Stock {
public:
    virtual ~Stock() = default;
    virtual void setColour(int colour) = 0;
    virtual void setStyleCode(int code) = 0;
    virtual void setOptionFlag(bool flag) = 0;
    // Origin, then three unit vectors: twelve doubles.
    virtual void setPlacement(const std::array<double, 12>& placement) = 0;
    virtual void setSpindle(std::shared_ptr<host::Spindle> spindle) = 0;
    // The feature the stock is swept from.
    virtual std::shared_ptr<host::Feature> Profile() = 0;
};

} // namespace host
