#include "feldra/app/SimulationPane.h"

#include "feldra/DocumentData.h"
#include "feldra/QtLocalizer.h"
#include "feldra/StockSection.h"
#include "feldra/app/DocumentTree.h"
#include "feldra/app/StockDrawing.h"
#include "numeric/NumberText.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace feldra {

namespace {

QString Number(double value) { return numeric::NumberToText(value); }

QString Enabled(const AxisState& axis, const QtLocalizer& localizer)
{
    if (!axis.present)
        return localizer.Translate("none");
    return localizer.Translate(axis.enabled ? "enabled" : "disabled");
}

// What an operation did to the back-spindle axes and the components it moved:
// "Z2 enabled, Z2 to 150, BACK to Z 42".
QString WhatHappened(const SimulatedOperation& operation, const QtLocalizer& localizer)
{
    QStringList changes;
    const auto axis = [&](const char* name, const AxisState& before, const AxisState& after) {
        if (!after.present)
            return;
        if (after.enabled != before.enabled)
            changes << QString::fromLatin1(name) + QLatin1Char(' ')
                           + localizer.Translate(after.enabled ? "enabled" : "disabled");
        if (after.position != before.position)
            changes << QString::fromLatin1(name) + QLatin1Char(' ') + localizer.Translate("to") + QLatin1Char(' ')
                           + Number(after.position);
    };
    axis("Z2", operation.z2Before, operation.z2);
    axis("Z3", operation.z3Before, operation.z3);
    for (const ComponentMove& move : operation.moved)
        changes << move.key + QLatin1Char(' ') + localizer.Translate("to") + QStringLiteral(" Z ") + Number(move.z);
    return changes.isEmpty() ? localizer.Translate("no change") : changes.join(QStringLiteral(", "));
}

} // namespace

SimulationPane::SimulationPane(QWidget* parent)
    : QWidget(parent), table_(new QTableWidget), stock_(new QLabel), drawing_(new StockDrawing)
{
    setObjectName("simulationPane");
    table_->setObjectName("simulationTable");
    table_->setColumnCount(5);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setStretchLastSection(true);
    stock_->setObjectName("lblStock");
    stock_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    stock_->setWordWrap(true);
    auto* stockColumn = new QVBoxLayout;
    stockColumn->addWidget(stock_);
    stockColumn->addWidget(drawing_);
    stockColumn->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(table_, 1);
    layout->addLayout(stockColumn);
}

void SimulationPane::Retranslate(const QtLocalizer& localizer)
{
    table_->setHorizontalHeaderLabels({localizer.Translate("Operation"), QStringLiteral("Z2"),
                                       localizer.Translate("Z2 Position"), QStringLiteral("Z3"),
                                       localizer.Translate("Back Spindle Axes")});
}

void SimulationPane::Show(const QList<SimulatedOperation>& operations, const QtLocalizer& localizer)
{
    Retranslate(localizer);
    table_->setRowCount(int(operations.size()));
    for (int row = 0; row < operations.size(); ++row) {
        const SimulatedOperation& operation = operations[row];
        const QStringList cells{QStringLiteral("%1 %2").arg(operation.position).arg(operation.name),
                                Enabled(operation.z2, localizer),
                                operation.z2.present ? Number(operation.z2.position) : QString(),
                                Enabled(operation.z3, localizer), WhatHappened(operation, localizer)};
        for (int column = 0; column < cells.size(); ++column)
            table_->setItem(row, column, new QTableWidgetItem(cells[column]));
    }
    table_->resizeColumnsToContents();
    table_->resizeRowsToContents();
}

void SimulationPane::ShowStock(const DocumentData* document, const QtLocalizer& localizer)
{
    const StockData* stock = document ? MainStock(*document) : nullptr;
    drawing_->setVisible(stock != nullptr);
    if (!stock) {
        stock_->setText(localizer.Translate("No \"Main Stock\"."));
        drawing_->SetOutline({});
        return;
    }
    stock_->setText(QStringLiteral("<b>%1</b><br>%2 %3<br>%4 %5<br>%6 %7")
                        .arg(stock->name.toHtmlEscaped(), localizer.Translate("Kind"), StockKindText(stock->kind, localizer),
                             localizer.Translate("Start"), Number(stock->start), localizer.Translate("Length"),
                             Number(stock->length)));
    drawing_->SetOutline(StockCrossSection(*document, *stock));
}

} // namespace feldra
