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

struct SimulatedOperation {
    int position = 0; // from 1, document order
    QString name;
    AxisState z2;
    AxisState z3;
};

// The host's simulation run: OnBegin, then for each operation in document order
// OnOperationStart and OnSimulateOperation; after each operation the Z2 and Z3
// axes of the document's machine model are read back.
class SimulationRunner {
public:
    explicit SimulationRunner(Host& host) : host_(host) {}

    QList<SimulatedOperation> Run(const std::shared_ptr<DocumentState>& document);

private:
    Host& host_;
};

} // namespace feldra
