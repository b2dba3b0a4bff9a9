#pragma once

#include "feldra/SimulationRunner.h"

#include <QWidget>

class QLabel;
class QTableWidget;

namespace feldra {

class QtLocalizer;
class StockDrawing;
struct DocumentData;

// The simulation: per operation (by its number in document order) whether Z2
// and Z3 are enabled, where Z2 stands and what the operation did to the
// back-spindle axes and components; beside it the document's "Main Stock"
// with its kind, start, length and a drawing of its cross-section.
class SimulationPane : public QWidget {
public:
    explicit SimulationPane(QWidget* parent = nullptr);

    // The column headings and the stock captions in the localiser's language.
    void Retranslate(const QtLocalizer& localizer);
    void Show(const QList<SimulatedOperation>& operations, const QtLocalizer& localizer);
    // The stock of the document (none when there is none).
    void ShowStock(const DocumentData* document, const QtLocalizer& localizer);

    QTableWidget* Table() const { return table_; }

private:
    QTableWidget* table_;
    QLabel* stock_;
    StockDrawing* drawing_;
};

} // namespace feldra
