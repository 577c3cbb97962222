#include "Quorvi/ui/StageIcon.h"

#include <QPainterPath>

namespace quorvi {

namespace {

// All signs are drawn on a grid of 18 by 18.
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

void paintTick(QPainter& painter, const QColor& color) {
    paintDisc(painter, color);
    painter.setPen(stroke(Qt::white, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({QPointF(5.2, 9.3), QPointF(8, 12), QPointF(12.8, 6.4)}));
}

void paintExclamation(QPainter& painter, const QColor& color) {
    paintDisc(painter, color);
    painter.setPen(stroke(Qt::white, 2.2));
    painter.drawLine(QPointF(9, 5), QPointF(9, 9.8));
    painter.drawPoint(QPointF(9, 13.1));
}

void paintClipboard(QPainter& painter, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(3, 3, 12, 13.5), 2, 2);
    painter.drawRoundedRect(QRectF(6, 1, 6, 4), 1.5, 1.5);
    painter.setPen(stroke(Qt::white, 1.4));
    for (double y : {8.0, 10.6, 13.2}) painter.drawLine(QPointF(6, y), QPointF(12, y));
}

void paintDots(QPainter& painter, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    for (double x : {3.5, 9.0, 14.5}) painter.drawEllipse(QPointF(x, 9), 1.9, 1.9);
}

}  // namespace

void paintStageIcon(QPainter& painter, const QRectF& bounds, DictationStage stage,
                    const QColor& color) {
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
            paintDots(painter, color);
            break;
        case DictationStage::success:
        case DictationStage::learned:
            paintTick(painter, color);
            break;
        case DictationStage::clipboard:
            paintClipboard(painter, color);
            break;
        case DictationStage::failure:
            paintExclamation(painter, color);
            break;
    }
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
