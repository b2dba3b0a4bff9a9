#pragma once

#include <QList>
#include <QPointF>
#include <QWidget>

namespace feldra {

// A drawing of a stock's cross-section: its outline scaled to fit, with the
// spindle centre marked by a cross when the outline surrounds it.
class StockDrawing : public QWidget {
    Q_OBJECT
public:
    explicit StockDrawing(QWidget* parent = nullptr);

    void SetOutline(const QList<QPointF>& outline);
    const QList<QPointF>& Outline() const { return outline_; }

    QSize sizeHint() const override { return {150, 110}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QList<QPointF> outline_;
};

} // namespace feldra
