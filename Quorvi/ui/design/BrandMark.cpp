#include "Quorvi/ui/design/BrandMark.h"

#include <QLinearGradient>
#include <QPainter>

#include "Quorvi/ui/StageIcon.h"
#include "Quorvi/ui/design/Colors.h"

namespace quorvi {

BrandMark::BrandMark(int size) : size_(size) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Quorvi"));
}

void BrandMark::paint(QPainter& painter, const QRectF& bounds, const QPalette& palette) {
    const QColor accent = color(ColorRole::accent, palette);
    QLinearGradient fill(bounds.topLeft(), bounds.bottomRight());
    fill.setColorAt(0, mixed(accent, Qt::white, 0.18));
    fill.setColorAt(1, mixed(accent, Qt::black, 0.12));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(bounds, bounds.width() * 0.26, bounds.width() * 0.26);
    const double inset = bounds.width() * 0.2;
    paintWaveform(painter, bounds.adjusted(inset, inset, -inset, -inset),
                  color(ColorRole::onAccent, palette));
}

void BrandMark::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint(painter, QRectF(0, 0, size_, size_), palette());
}

}  // namespace quorvi
