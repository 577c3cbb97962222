#include "Quorvi/ui/design/BrandMark.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>

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
    // Five strokes; lengths as shares of the height.
    constexpr double strokes[] = {0.2, 0.46, 0.62, 0.34, 0.16};
    const double step = bounds.width() * 0.14;
    double x = bounds.center().x() - 2 * step;
    painter.setPen(QPen(color(ColorRole::onAccent, palette), bounds.width() * 0.075, Qt::SolidLine,
                        Qt::RoundCap));
    for (double share : strokes) {
        const double half = bounds.height() * share / 2;
        painter.drawLine(QPointF(x, bounds.center().y() - half),
                         QPointF(x, bounds.center().y() + half));
        x += step;
    }
}

QPalette BrandMark::launcherPalette() {
    QPalette palette;
    palette.setColor(QPalette::Active, QPalette::Highlight, QColor(0x25, 0x6d, 0x9a));
    palette.setColor(QPalette::Active, QPalette::HighlightedText, Qt::white);
    return palette;
}

QIcon BrandMark::icon() {
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(painter, QRectF(0, 0, size, size), launcherPalette());
        icon.addPixmap(pixmap);
    }
    return icon;
}

void BrandMark::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint(painter, QRectF(0, 0, size_, size_), palette());
}

}  // namespace quorvi
