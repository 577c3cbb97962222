#include "Quorvi/ui/indicator/LevelMeter.h"

#include <QPainter>
#include <QTimerEvent>
#include <algorithm>

namespace quorvi {

namespace {

constexpr double barWidth = 3;
constexpr double barGap = 3;
constexpr double restingHeight = 3;
constexpr double tallest = 22;
constexpr double movement = 100;  // milliseconds
constexpr int frame = 33;         // enough for bars of a few pixels, and half the work of a screen's

double easedOut(double part) {
    const double rest = 1 - std::clamp(part, 0.0, 1.0);
    return 1 - rest * rest;
}

}  // namespace

double LevelMeter::barHeight(std::size_t bar, double level) {
    return restingHeight + std::clamp(level, 0.0, 1.0) * weights[bar];
}

LevelMeter::LevelMeter(QWidget* parent) : QWidget(parent) {
    constexpr auto count = static_cast<double>(weights.size());
    setFixedSize(static_cast<int>(count * barWidth + (count - 1) * barGap),
                 static_cast<int>(tallest));
}

void LevelMeter::setLevel(double level) {
    level = std::clamp(level, 0.0, 1.0);
    if (level == level_) return;
    from_ = shown_;
    level_ = level;
    if (!animated_ || !isVisible()) return settle();
    sinceBegin_.start();
    if (!frames_.isActive()) frames_.start(frame, Qt::PreciseTimer, this);
}

void LevelMeter::setColor(const QColor& color) {
    if (color_ == color) return;
    color_ = color;
    update();
}

void LevelMeter::settle() {
    frames_.stop();
    shown_ = level_;
    update();
}

void LevelMeter::timerEvent(QTimerEvent* event) {
    if (event->timerId() != frames_.timerId()) return QWidget::timerEvent(event);
    const double part = static_cast<double>(sinceBegin_.elapsed()) / movement;
    if (part >= 1) return settle();
    shown_ = from_ + (level_ - from_) * easedOut(part);
    update();
}

void LevelMeter::hideEvent(QHideEvent* event) {
    settle();
    QWidget::hideEvent(event);
}

void LevelMeter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color_);
    double x = 0;
    for (std::size_t bar = 0; bar < weights.size(); ++bar) {
        const double height = barHeight(bar, shown_);
        painter.drawRoundedRect(QRectF(x, (tallest - height) / 2, barWidth, height), barWidth / 2,
                                barWidth / 2);
        x += barWidth + barGap;
    }
}

}  // namespace quorvi
