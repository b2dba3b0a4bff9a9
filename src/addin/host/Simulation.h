#pragma once

#include "addin/host/Fwd.h"
#include "addin/host/SimulationEvents.h"

#include <QString>
#include <memory>

namespace host {

// The simulation of a document, and the source of its events.
class Simulation {
public:
    virtual ~Simulation() = default;
    virtual std::shared_ptr<host::MachineModel> MachineModel() = 0;
    // kind 1 is a stock swept from a profile feature over length, from start.
    virtual std::shared_ptr<host::Stock> AddStock(const QString& name, int kind, std::shared_ptr<host::Feature> profile,
                                         double length, double start) = 0;
    // The stock of that name; an error when there is none.
    virtual std::shared_ptr<host::Stock> Stock(const QString& name) = 0;
    virtual void DeleteStock(const QString& name) = 0;
    virtual int DefaultStockColour() = 0;
    virtual void Update(bool full) = 0;
    virtual void Advise(host::SimulationEvents* sink) = 0;
    virtual void Unadvise(host::SimulationEvents* sink) = 0;
};

} // namespace host
