#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <QVariant>
#include <memory>

namespace marelon {

// What the add-in does while the host simulates a document of a Marelon lathe
// (machine type 1, machine setup tagged "MARELON"): it switches the simulated
// back-spindle axes Z2 and Z3 operation by operation, and drives the back
// spindle to each operation's "Z2Position". The connection calls the handlers
// from its simulation events.
//
// The check that a document is a Marelon lathe lets host failures through to
// the caller; after it, a failing host call leaves out just its own step.
class SimulationHooks {
public:
    // Takes the simulation's machine model and finds its axes Z2 and Z3.
    void OnBegin(host::Document& document, host::Simulation& simulation);
    void OnOperationStart(host::Document& document, host::Operation& operation);
    void OnSimulateOperation(host::Document& document, host::Operation& operation);

    // The object's custom property of this name and type: created (or
    // re-created when it has another type) with the placeholder value, "" for a
    // text (type 8). A failed look-up counts as none; a failing add or remove
    // reaches the caller.
    static std::shared_ptr<host::CustomProperty> GetCustomProperty(host::GraphicObject& object, const QString& name,
                                                                   int type);
    // The upper travel limit of axis "Z2" of turret 2, a double; empty when
    // turret 2 has no such limit. Host failures reach the caller.
    static QVariant GetZ2UpperLimit(host::Document& document);

private:
    std::shared_ptr<host::Axis> findAxis(const QString& name) const;
    void driveToZ2Position(host::Document& document, host::Operation& operation, host::Technology& technology);
    void moveComponentToZ2(host::Document& document, host::Technology& technology,
                           const std::shared_ptr<host::CustomProperty>& z2Position) const;
    void returnZ2ToReference(host::Document& document) const;

    std::shared_ptr<host::MachineModel> machineModel_;
    std::shared_ptr<host::Axis> z2_;
    std::shared_ptr<host::Axis> z3_;
    // Set when an operation has driven the back spindle to its Z2 position.
    bool z2Moved_ = false;
};

} // namespace marelon
