#pragma once

#include <QList>
#include <QString>
#include <memory>

namespace feldra {

class Host;
struct DocumentState;

// What the back-spindle axes show once an operation has been simulated.
struct AxisState {
    bool present = false; // the machine model has the axis
    bool enabled = false;
    double position = 0;
};

// A component of the machine model that an operation moved.
struct ComponentMove {
    QString key;
    double z = 0; // where it stands along Z afterwards
};

struct SimulatedOperation {
    int position = 0; // from 1, document order
    QString name;
    AxisState z2; // after the operation
    AxisState z3;
    AxisState z2Before; // when the operation started
    AxisState z3Before;
    QList<ComponentMove> moved;
};

// The host's simulation run: OnBegin, then for each operation in document order
// OnOperationStart and OnSimulateOperation; before and after each operation the
// Z2 and Z3 axes and the components of the document's machine model are read.
class SimulationRunner {
public:
    explicit SimulationRunner(Host& host) : host_(host) {}

    QList<SimulatedOperation> Run(const std::shared_ptr<DocumentState>& document);

private:
    Host& host_;
};

} // namespace feldra
