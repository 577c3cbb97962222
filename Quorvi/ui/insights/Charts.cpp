#include "Quorvi/ui/insights/Charts.h"

#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QToolTip>
#include <algorithm>

#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

namespace {

constexpr int weekLength = 7;
constexpr double cellSize = 18;
constexpr double cellGap = 5;
constexpr double emptyDay = 0.06;  // opacity of the primary colour

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

QFont labelFont() {
    auto font = textFont(TextStyle::caption);
    if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * 0.92);
    return font;
}

double mostWords(const std::vector<ChartDay>& days) {
    double most = 0;
    for (const auto& day : days) most = std::max(most, day.words);
    return most;
}

QString allDescriptions(const std::vector<ChartDay>& days) {
    QStringList lines;
    for (const auto& day : days) lines << day.description;
    return lines.join(QLatin1Char('\n'));
}

// Shows the tool tip of the day under the pointer.
template <class Place>
bool showToolTip(QWidget* widget, QEvent* event, const std::vector<ChartDay>& days, Place place) {
    if (event->type() != QEvent::ToolTip) return false;
    const auto* help = static_cast<QHelpEvent*>(event);
    for (std::size_t day = 0; day < days.size(); ++day) {
        const QRectF area = place(day);
        if (!area.contains(help->pos())) continue;
        QToolTip::showText(help->globalPos(), days[day].description, widget, area.toAlignedRect());
        return true;
    }
    QToolTip::hideText();
    return true;
}

}  // namespace

DailyBars::DailyBars(const QString& accessibleName) {
    setAccessibleName(accessibleName);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void DailyBars::show(std::vector<ChartDay> days) {
    days_ = std::move(days);
    setAccessibleDescription(allDescriptions(days_));
    update();
}

QRectF DailyBars::slot(std::size_t day) const {
    const double step = static_cast<double>(width()) / static_cast<double>(days_.size());
    auto column = static_cast<double>(day);
    if (layoutDirection() == Qt::RightToLeft)
        column = static_cast<double>(days_.size() - 1) - column;
    return {column * step, 0, step, static_cast<double>(height())};
}

void DailyBars::paintEvent(QPaintEvent*) {
    if (days_.empty()) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(labelFont());
    const QFontMetricsF metrics(painter.font());
    const double labels = metrics.height() + 6;
    const double base = height() - labels;
    const double top = metrics.height() + 4;  // for the number above the tallest bar
    const double most = std::max(mostWords(days_), 1.0);
    const auto accent = color(ColorRole::accent, palette());
    const auto quiet = color(ColorRole::secondary, palette());

    painter.setPen(QPen(color(ColorRole::hairline, palette()), 1));
    painter.drawLine(QPointF(0, base + 0.5), QPointF(width(), base + 0.5));
    for (std::size_t day = 0; day < days_.size(); ++day) {
        const auto area = slot(day);
        const bool today = day + 1 == days_.size();
        const double wide = std::min(area.width() * 0.62, 32.0);
        const double high =
            days_[day].words > 0 ? std::max((base - top) * days_[day].words / most, 3.0) : 0;
        const QRectF bar(area.center().x() - wide / 2, base - high, wide, high);
        if (high > 0) {
            // Rounded at the top, straight at the bottom.
            const double round = std::min({5.0, wide / 2, high});
            QPainterPath shape;
            shape.moveTo(bar.bottomLeft());
            shape.lineTo(bar.left(), bar.top() + round);
            shape.quadTo(bar.topLeft(), QPointF(bar.left() + round, bar.top()));
            shape.lineTo(bar.right() - round, bar.top());
            shape.quadTo(bar.topRight(), QPointF(bar.right(), bar.top() + round));
            shape.lineTo(bar.bottomRight());
            shape.closeSubpath();
            painter.fillPath(shape, today ? accent : withOpacity(accent, 0.62));
        }
        if (days_[day].words > 0 && days_[day].words == mostWords(days_)) {
            painter.setPen(quiet);
            painter.drawText(QRectF(area.left() - area.width(), bar.top() - top, area.width() * 3,
                                    metrics.height()),
                             Qt::AlignCenter, days_[day].value);
        }
        painter.setPen(today ? color(ColorRole::ink, palette()) : quiet);
        painter.drawText(QRectF(area.left(), base + 5, area.width(), labels),
                         Qt::AlignHCenter | Qt::AlignTop, days_[day].label);
    }
}

bool DailyBars::event(QEvent* event) {
    return showToolTip(this, event, days_, [this](std::size_t day) { return slot(day); }) ||
           QWidget::event(event);
}

ActivityGrid::ActivityGrid(const QString& accessibleName) {
    setAccessibleName(accessibleName);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ActivityGrid::show(std::vector<ChartDay> days, int firstRow, QStringList weekdays) {
    days_ = std::move(days);
    firstRow_ = firstRow;
    weekdays_ = std::move(weekdays);
    setAccessibleDescription(allDescriptions(days_));
    updateGeometry();
    update();
}

double ActivityGrid::opacity(double words, double mostWords) {
    return 0.25 + 0.75 * words / std::max(mostWords, 1.0);
}

int ActivityGrid::columns() const {
    return (static_cast<int>(days_.size()) + firstRow_ + weekLength - 1) / weekLength;
}

int ActivityGrid::labelWidth() const {
    const QFontMetrics metrics(labelFont());
    int width = 0;
    for (const auto& name : weekdays_) width = std::max(width, metrics.horizontalAdvance(name));
    return width + 8;
}

QSize ActivityGrid::sizeHint() const {
    const double step = cellSize + cellGap;
    return {labelWidth() + static_cast<int>(columns() * step - cellGap),
            static_cast<int>(weekLength * step - cellGap)};
}

QRectF ActivityGrid::cell(std::size_t day) const {
    const int place = firstRow_ + static_cast<int>(day);
    const double step = cellSize + cellGap;
    const double x = labelWidth() + place / weekLength * step;
    const double left = layoutDirection() == Qt::RightToLeft ? width() - x - cellSize : x;
    return {left, place % weekLength * step, cellSize, cellSize};
}

void ActivityGrid::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(labelFont());
    painter.setPen(color(ColorRole::secondary, palette()));
    const double step = cellSize + cellGap;
    for (int row = 0; row < weekdays_.size(); ++row) {
        const QRect area(0, static_cast<int>(row * step), labelWidth() - 8,
                         static_cast<int>(cellSize));
        painter.drawText(
            QStyle::visualRect(layoutDirection(), rect(), area),
            static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) |
                             Qt::AlignVCenter),
            weekdays_[row]);
    }
    const auto ink = color(ColorRole::ink, palette());
    const auto accent = color(ColorRole::accent, palette());
    const double most = mostWords(days_);
    for (std::size_t day = 0; day < days_.size(); ++day) {
        const auto& one = days_[day];
        painter.setPen(Qt::NoPen);
        painter.setBrush(one.active ? withOpacity(accent, opacity(one.words, most))
                                    : withOpacity(ink, emptyDay));
        painter.drawRoundedRect(cell(day), 4, 4);
    }
    if (days_.empty()) return;
    // Today.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(withOpacity(ink, 0.5), 1.2));
    painter.drawRoundedRect(cell(days_.size() - 1).adjusted(0.6, 0.6, -0.6, -0.6), 3.6, 3.6);
}

bool ActivityGrid::event(QEvent* event) {
    return showToolTip(this, event, days_, [this](std::size_t day) { return cell(day); }) ||
           QWidget::event(event);
}

ShareBar::ShareBar(double share) : share_(std::clamp(share, 0.0, 1.0)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ShareBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF all(rect());
    const double round = all.height() / 2;
    painter.setBrush(withOpacity(color(ColorRole::ink, palette()), emptyDay));
    painter.drawRoundedRect(all, round, round);
    if (share_ <= 0) return;
    QRectF part(0, 0, std::max(all.width() * share_, all.height()), all.height());
    if (layoutDirection() == Qt::RightToLeft) part.moveRight(all.right());
    painter.setBrush(color(ColorRole::accent, palette()));
    painter.drawRoundedRect(part, round, round);
}

}  // namespace quorvi
