#include "Quorvi/ui/design/Symbols.h"

#include <QBuffer>
#include <QFile>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPixmapCache>
#include <cstring>

// The linker drops the resources of a static library unless they are initialised explicitly.
static void useIcons() {
    Q_INIT_RESOURCE(icons);
}

namespace quorvi {

namespace {

struct Entry {
    const char* name;
    const char* file;  // of the set compiled in from Quorvi/ui/icons
};

constexpr Entry entries[] = {
    {"waveform", "audio-lines"},
    {"clock.arrow.circlepath", "history"},
    {"chart.bar.xaxis", "chart-column"},
    {"slider.horizontal.3", "sliders-horizontal"},
    {"globe", "globe"},
    {"checkmark.circle.fill", "circle-check"},
    {"checkmark.circle", "circle-check"},
    {"checkmark.shield.fill", "shield-check"},
    {"checkmark", "check"},
    {"circle", "circle"},
    {"circle.dashed", "circle-dashed"},
    {"doc.on.clipboard", "clipboard-paste"},
    {"doc.on.clipboard.fill", "clipboard-paste"},
    {"doc.on.doc", "copy"},
    {"keyboard", "keyboard"},
    {"mic.fill", "mic"},
    {"mic", "mic"},
    {"ellipsis.bubble", "message-circle-more"},
    {"exclamationmark.circle.fill", "circle-alert"},
    {"exclamationmark.triangle", "triangle-alert"},
    {"text.badge.checkmark", "list-checks"},
    {"text.badge.plus", "list-plus"},
    {"text.magnifyingglass", "text-search"},
    {"magnifyingglass", "search"},
    {"arrow.turn.down.right", "corner-down-right"},
    {"arrow.down.circle", "circle-arrow-down"},
    {"trash", "trash-2"},
    {"icloud", "cloud"},
    {"gearshape", "settings"},
    {"paintpalette", "palette"},
    {"calendar", "calendar"},
    {"flame", "flame"},
    {"clock", "clock"},
    {"speedometer", "gauge"},
    {"text.bubble", "message-square-text"},
    {"macwindow", "app-window"},
    {"square.grid.2x2", "layout-grid"},
    {"dollarsign.circle", "coins"},
    {"chevron.down", "chevron-down"},
    {"chevron.up", "chevron-up"},
    {"chevron.up.chevron.down", "chevrons-up-down"},
    {"xmark", "x"},
    {"xmark.circle.fill", "circle-x"},
    {"plus", "plus"},
    {"pencil", "pencil"},
    {"arrow.clockwise", "refresh-cw"},
    {"arrow.counterclockwise", "rotate-ccw"},
    {"play", "play"},
    {"speaker.wave.2", "volume-2"},
    {"speaker.slash", "volume-x"},
    {"key", "key-round"},
    {"lock", "lock"},
    {"hourglass", "hourglass"},
    {"hand.raised", "hand"},
    {"info.circle", "info"},
    {"arrow.up.right.square", "external-link"},
    {"character.cursor.ibeam", "text-cursor-input"},
    {"accessibility", "accessibility"},
    {"doc.text", "file-text"},
};

QByteArray drawing(const char* name) {
    useIcons();
    for (const auto& entry : entries) {
        if (std::strcmp(entry.name, name) != 0) continue;
        QFile file(QStringLiteral(":/icons/%1.svg").arg(QLatin1StringView(entry.file)));
        if (file.open(QIODevice::ReadOnly)) return file.readAll();
    }
    return {};
}

// Draws a symbol at any size, in the current palette.
class SymbolEngine : public QIconEngine {
public:
    SymbolEngine(const char* name, ColorRole role) : name_(name), role_(role) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const int size = qMin(rect.width(), rect.height());
        const QPointF corner(rect.x() + (rect.width() - size) / 2.0,
                             rect.y() + (rect.height() - size) / 2.0);
        const qreal ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(corner, symbolPixmap(name_, tint(mode), size, ratio));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1);
    }

    // The size is in device pixels.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override {
        return symbolPixmap(name_, tint(mode), qMin(size.width(), size.height()), 1);
    }

    QIconEngine* clone() const override { return new SymbolEngine(*this); }

private:
    QColor tint(QIcon::Mode mode) const {
        if (mode == QIcon::Disabled) return QPalette().color(QPalette::Disabled, QPalette::Text);
        if (mode == QIcon::Selected) return color(ColorRole::onAccent);
        return color(role_);
    }

    const char* name_;
    ColorRole role_;
};

}  // namespace

QIcon symbolIcon(const char* name, ColorRole role) {
    for (const auto& entry : entries)
        if (std::strcmp(entry.name, name) == 0) return QIcon(new SymbolEngine(entry.name, role));
    return {};
}

QPixmap symbolPixmap(const char* name, const QColor& color, int size, qreal ratio) {
    const int pixels = qRound(size * ratio);
    const QString key = QStringLiteral("symbol:%1:%2:%3")
                            .arg(QLatin1StringView(name), color.name(QColor::HexArgb))
                            .arg(pixels);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        auto svg = drawing(name);
        if (svg.isEmpty()) return {};
        svg.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
        QBuffer source(&svg);
        QImageReader reader(&source, "svg");
        reader.setScaledSize(QSize(pixels, pixels));
        pixmap = QPixmap::fromImage(reader.read());
        QPixmapCache::insert(key, pixmap);
    }
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

}  // namespace quorvi
