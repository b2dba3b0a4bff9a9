#include "feldra/app/StockDrawing.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

namespace feldra {

StockDrawing::StockDrawing(QWidget* parent) : QWidget(parent)
{
    setObjectName("stockDrawing");
    setMinimumSize(sizeHint());
}

void StockDrawing::SetOutline(const QList<QPointF>& outline)
{
    outline_ = outline;
    update();
}

void StockDrawing::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().base());
    if (outline_.size() < 2)
        return;
    const QPolygonF polygon(outline_);
    const QRectF bounds = polygon.boundingRect();
    const QRectF area = QRectF(rect()).adjusted(8, 8, -8, -8);
    const double extent = std::max({bounds.width(), bounds.height(), 1e-9});
    const double scale = std::min(area.width(), area.height()) / extent;
    // Y up, the outline's centre in the middle of the widget.
    QTransform transform;
    transform.translate(area.center().x(), area.center().y());
    transform.scale(scale, -scale);
    transform.translate(-bounds.center().x(), -bounds.center().y());

    const QPolygonF shown = transform.map(polygon);
    QPainterPath path;
    path.addPolygon(shown);
    path.closeSubpath();
    painter.setPen(QPen(palette().text().color(), 1.5));
    painter.setBrush(QColor(192, 192, 192, 120));
    painter.drawPath(path);
    if (polygon.containsPoint(QPointF(0, 0), Qt::OddEvenFill)) {
        const QPointF centre = transform.map(QPointF(0, 0));
        painter.setPen(QPen(palette().text().color(), 1, Qt::DashLine));
        painter.drawLine(centre - QPointF(6, 0), centre + QPointF(6, 0));
        painter.drawLine(centre - QPointF(0, 6), centre + QPointF(0, 6));
    }
}

} // namespace feldra
