#pragma once

#include "feldra/SimulationRunner.h"

#include <QTableWidget>

namespace feldra {

class QtLocalizer;

// The outcome of a simulation run: per operation whether Z2 and Z3 are
// enabled and where Z2 stands.
class SimulationPane : public QTableWidget {
public:
    explicit SimulationPane(QWidget* parent = nullptr);

    void Show(const QList<SimulatedOperation>& operations, const QtLocalizer& localizer);
};

} // namespace feldra
