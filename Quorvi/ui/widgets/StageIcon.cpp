#include "Quorvi/ui/widgets/StageIcon.h"

#include <QPainterPath>

namespace quorvi {

namespace {

// All icons are drawn on an 18 × 18 grid.
constexpr double grid = 18;

QPen stroke(const QColor& color, double width) {
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void paintMicrophone(QPainter& painter, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(6, 1.5, 6, 9.5), 3, 3);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(stroke(color, 1.6));
    painter.drawArc(QRectF(3.5, 3.5, 11, 10), 180 * 16, 180 * 16);
    painter.drawLine(QPointF(9, 13.6), QPointF(9, 16));
    painter.drawLine(QPointF(6, 16.2), QPointF(12, 16.2));
}

void paintDisc(QPainter& painter, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(1, 1, 16, 16));
}

void paintTick(QPainter& painter, const QColor& color, const QColor& inner) {
    paintDisc(painter, color);
    painter.setPen(stroke(inner, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({QPointF(5.2, 9.3), QPointF(8, 12), QPointF(12.8, 6.4)}));
}

void paintExclamation(QPainter& painter, const QColor& color, const QColor& inner) {
    paintDisc(painter, color);
    painter.setPen(stroke(inner, 2.2));
    painter.drawLine(QPointF(9, 5), QPointF(9, 9.8));
    painter.drawPoint(QPointF(9, 13.1));
}

void paintClipboard(QPainter& painter, const QColor& color, const QColor& inner) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(3, 3, 12, 13.5), 2, 2);
    painter.drawRoundedRect(QRectF(6, 1, 6, 4), 1.5, 1.5);
    painter.setPen(stroke(inner, 1.4));
    for (double y : {8.0, 10.6, 13.2}) painter.drawLine(QPointF(6, y), QPointF(12, y));
}

// A speech bubble with three dots.
void paintBubble(QPainter& painter, const QColor& color) {
    QPainterPath bubble;
    bubble.addRoundedRect(QRectF(1.8, 2.6, 14.4, 10.6), 3.4, 3.4);
    QPainterPath tail;
    tail.addPolygon(QPolygonF({QPointF(4.6, 12), QPointF(4.6, 16.4), QPointF(9.4, 12)}));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(stroke(color, 1.5));
    painter.drawPath(bubble.united(tail).simplified());
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    for (double x : {5.6, 9.0, 12.4}) painter.drawEllipse(QPointF(x, 7.9), 1.15, 1.15);
}

}  // namespace

void paintStageIcon(QPainter& painter, const QRectF& bounds, DictationStage stage,
                    const QColor& color, const QColor& inner) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(bounds.topLeft());
    painter.scale(bounds.width() / grid, bounds.height() / grid);
    switch (stage) {
        case DictationStage::idle:
        case DictationStage::recording:
            paintMicrophone(painter, color);
            break;
        case DictationStage::transcribing:
        case DictationStage::inserting:
            paintBubble(painter, color);
            break;
        case DictationStage::success:
        case DictationStage::learned:
            paintTick(painter, color, inner);
            break;
        case DictationStage::clipboard:
            paintClipboard(painter, color, inner);
            break;
        case DictationStage::failure:
            paintExclamation(painter, color, inner);
            break;
    }
    painter.restore();
}

void paintCopySign(QPainter& painter, const QRectF& bounds, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(bounds.topLeft());
    painter.scale(bounds.width() / grid, bounds.height() / grid);
    painter.setPen(stroke(color, 1.8));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(6.5, 6.5, 9.5, 9.5), 2, 2);
    QPainterPath behind;
    behind.moveTo(4.6, 11.5);
    behind.lineTo(4, 11.5);
    behind.arcTo(QRectF(2, 7.5, 4, 4), 270, -90);
    behind.lineTo(2, 4);
    behind.arcTo(QRectF(2, 2, 4, 4), 180, -90);
    behind.lineTo(9.5, 2);
    behind.arcTo(QRectF(7.5, 2, 4, 4), 90, -90);
    behind.lineTo(11.5, 4.6);
    painter.drawPath(behind);
    painter.restore();
}

// Three quarters of a circle with an arrow's head at its end.
void paintRetrySign(QPainter& painter, const QRectF& bounds, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(bounds.topLeft());
    painter.scale(bounds.width() / grid, bounds.height() / grid);
    painter.setPen(stroke(color, 2));
    painter.drawArc(QRectF(2.5, 2.5, 13, 13), 150 * 16, 290 * 16);
    painter.drawPolyline(QPolygonF({QPointF(2.6, 1.8), QPointF(2.6, 6.2), QPointF(7, 6.2)}));
    painter.restore();
}

void paintDownloadSign(QPainter& painter, const QRectF& bounds, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(bounds.topLeft());
    painter.scale(bounds.width() / grid, bounds.height() / grid);
    painter.setPen(stroke(color, 2));
    painter.drawLine(QPointF(9, 2.5), QPointF(9, 11.5));
    painter.drawPolyline(QPolygonF({QPointF(5.2, 8), QPointF(9, 11.8), QPointF(12.8, 8)}));
    painter.drawLine(QPointF(3, 15.5), QPointF(15, 15.5));
    painter.restore();
}

void paintWaveform(QPainter& painter, const QRectF& bounds, const QColor& color) {
    constexpr double heights[] = {4, 9, 15, 8, 12, 5};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(bounds.topLeft());
    painter.scale(bounds.width() / grid, bounds.height() / grid);
    painter.setPen(stroke(color, 1.8));
    double x = 2;
    for (double height : heights) {
        painter.drawLine(QPointF(x, (grid - height) / 2), QPointF(x, (grid + height) / 2));
        x += 2.8;
    }
    painter.restore();
}

}  // namespace quorvi
