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
// Frames of the timer. While the level keeps changing, which is as frequent, each change draws one.
constexpr int frame = 50;

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
    if (frames_.isActive()) advance();
    from_ = shown_;
    level_ = level;
    if (!animated_ || !isVisible()) return settle();
    sinceBegin_.start();
    frames_.start(frame, this);
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
    if (static_cast<double>(sinceBegin_.elapsed()) >= movement) return settle();
    advance();
}

void LevelMeter::advance() {
    const double part = static_cast<double>(sinceBegin_.elapsed()) / movement;
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
