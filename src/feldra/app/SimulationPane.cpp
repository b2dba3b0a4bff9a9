#include "feldra/app/SimulationPane.h"

#include "feldra/QtLocalizer.h"
#include "numeric/NumberText.h"

#include <QHeaderView>

namespace feldra {

namespace {

QString Enabled(const AxisState& axis, const QtLocalizer& localizer)
{
    if (!axis.present)
        return localizer.Translate("none");
    return localizer.Translate(axis.enabled ? "enabled" : "disabled");
}

} // namespace

SimulationPane::SimulationPane(QWidget* parent) : QTableWidget(parent)
{
    setObjectName("simulationPane");
    setColumnCount(4);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    verticalHeader()->hide();
    horizontalHeader()->setStretchLastSection(true);
}

void SimulationPane::Show(const QList<SimulatedOperation>& operations, const QtLocalizer& localizer)
{
    setHorizontalHeaderLabels({localizer.Translate("Operation"), "Z2", "Z3", localizer.Translate("Z2 Position")});
    setRowCount(int(operations.size()));
    for (int row = 0; row < operations.size(); ++row) {
        const SimulatedOperation& operation = operations[row];
        const QStringList cells{QStringLiteral("%1 %2").arg(operation.position).arg(operation.name),
                                Enabled(operation.z2, localizer), Enabled(operation.z3, localizer),
                                operation.z2.present ? numeric::NumberToText(operation.z2.position) : QString()};
        for (int column = 0; column < cells.size(); ++column)
            setItem(row, column, new QTableWidgetItem(cells[column]));
    }
    resizeColumnsToContents();
    resizeRowsToContents();
}

} // namespace feldra
