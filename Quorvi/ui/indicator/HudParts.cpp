#include "Quorvi/ui/indicator/HudParts.h"

#include <QPainter>
#include <QStyle>
#include <QTextLayout>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>

#include "Quorvi/ui/widgets/StageIcon.h"

namespace quorvi {

namespace {

constexpr int signSize = 20;  // room for a sign of 18 points and its antialiased edge
constexpr int spokes = 8;
constexpr int step = 90;  // milliseconds
constexpr int copySignSize = 13;
constexpr int copyButtonSize = 30;
constexpr int downloadSignSize = 11;
constexpr int capsuleHeight = 22;

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

}  // namespace

StageSign::StageSign(QWidget* parent) : QWidget(parent) {
    setFixedSize(signSize, signSize);
}

void StageSign::show(DictationStage stage, const ThemePalette& colors) {
    stage_ = stage;
    color_ = colors.stateAccent(stage);
    inner_ = colors.surfaceTop;
    inner_.setAlpha(255);
    turnOrRest();
    update();
}

void StageSign::turnOrRest() {
    const bool turns = isBusy(stage_) && isVisible();
    if (turns && !steps_.isActive())
        steps_.start(step, this);
    else if (!turns)
        steps_.stop();
}

void StageSign::timerEvent(QTimerEvent* event) {
    if (event->timerId() != steps_.timerId()) return QWidget::timerEvent(event);
    step_ = (step_ + 1) % spokes;
    update();
}

void StageSign::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    turnOrRest();
}

void StageSign::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    turnOrRest();
}

void StageSign::paintSpinner(QPainter& painter) const {
    painter.translate(rect().center() + QPointF(0.5, 0.5));
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const int age = (step_ - spoke + spokes) % spokes;
        painter.save();
        painter.rotate(360.0 * spoke / spokes);
        painter.setPen(QPen(withOpacity(color_, 1 - 0.8 * age / (spokes - 1)), 2, Qt::SolidLine,
                            Qt::RoundCap));
        painter.drawLine(QPointF(0, -4.2), QPointF(0, -7.6));
        painter.restore();
    }
}

void StageSign::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isBusy(stage_))
        paintSpinner(painter);
    else
        paintStageIcon(painter, QRectF(1, 1, 18, 18), stage_, color_, inner_);
}

HudText::HudText(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void HudText::setLineLimit(int lines) {
    if (lines_ == lines) return;
    lines_ = lines;
    updateGeometry();
    update();
}

int HudText::breakLines(QTextLayout& layout, double width) const {
    QTextOption option(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft));
    option.setTextDirection(layoutDirection());
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    const double spacing = QFontMetricsF(font()).lineSpacing();
    int end = 0;
    for (int number = 0; number < lines_; ++number) {
        auto line = layout.createLine();
        if (!line.isValid()) break;
        line.setLineWidth(width);
        line.setPosition({0, number * spacing});
        end = line.textStart() + line.textLength();
    }
    layout.endLayout();
    return end;
}

int HudText::heightForWidth(int width) const {
    QTextLayout layout(text(), font());
    breakLines(layout, width);
    return std::max(layout.lineCount(), 1) * fontMetrics().lineSpacing();
}

QSize HudText::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()), fontMetrics().lineSpacing()};
}

QSize HudText::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void HudText::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setFont(font());
    QTextLayout layout(text(), font());
    const bool isWhole = breakLines(layout, width()) == text().size();
    for (int number = 0; number < layout.lineCount(); ++number) {
        const auto line = layout.lineAt(number);
        if (isWhole || number + 1 < layout.lineCount()) {
            line.draw(&painter, {0, 0});
            continue;
        }
        const auto rest =
            fontMetrics().elidedText(text().mid(line.textStart()), Qt::ElideRight, width());
        painter.drawText(QRectF(0, line.y(), width(), line.height()),
                         static_cast<int>(layout.textOption().alignment() | Qt::AlignTop), rest);
    }
}

HudTime::HudTime(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

double HudTime::digitWidth() const {
    const QFontMetricsF metrics(font());
    double widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    return widest;
}

QSize HudTime::sizeHint() const {
    const QFontMetricsF metrics(font());
    double width = 0;
    for (const auto character : text())
        width += character.isDigit() ? digitWidth() : metrics.horizontalAdvance(character);
    return {static_cast<int>(std::ceil(width)), fontMetrics().lineSpacing()};
}

void HudTime::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    const QFontMetricsF metrics(font());
    double x = 0;
    for (const auto character : text()) {
        const double cell =
            character.isDigit() ? digitWidth() : metrics.horizontalAdvance(character);
        painter.drawText(QRectF(x, 0, cell, height()), Qt::AlignCenter, QString(character));
        x += cell;
    }
}

HudButton::HudButton(Sign sign, QWidget* parent) : QAbstractButton(parent), sign_(sign) {
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void HudButton::setColors(const ThemePalette& colors) {
    color_ = colors.accent;
    ground_ = colors.surfaceTop;
    ground_.setAlpha(255);
    update();
}

QSize HudButton::sizeHint() const {
    if (text().isEmpty()) return {copyButtonSize, copyButtonSize};
    return {fontMetrics().horizontalAdvance(text()) + downloadSignSize + 5 + 18, capsuleHeight};
}

void HudButton::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void HudButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

void HudButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double shade = isDown() ? 0.26 : underMouse() ? 0.18 : 0;
    const double round = height() / 2.0;
    if (text().isEmpty()) {
        painter.setBrush(withOpacity(color_, shade));
        painter.drawRoundedRect(rect(), round, round);
        QRectF bounds(0, 0, copySignSize, copySignSize);
        bounds.moveCenter(QRectF(rect()).center());
        sign_(painter, bounds, color_);
        return;
    }
    painter.setBrush(withOpacity(color_, 0.16 + shade / 2));
    painter.drawRoundedRect(rect(), round, round);
    const auto direction = layoutDirection();
    QRect bounds(9, (height() - downloadSignSize) / 2, downloadSignSize, downloadSignSize);
    sign_(painter, QRectF(QStyle::visualRect(direction, rect(), bounds)), color_);
    const int left = bounds.right() + 6;
    painter.setPen(color_);
    painter.drawText(
        QStyle::visualRect(direction, rect(), QRect(left, 0, width() - left, height())),
        static_cast<int>(QStyle::visualAlignment(direction, Qt::AlignLeft) | Qt::AlignVCenter),
        text());
}

}  // namespace quorvi
