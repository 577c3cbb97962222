#include "Quorvi/ui/widgets/Spinner.h"

#include <QCoreApplication>
#include <QPainter>
#include <QStyle>
#include <QTimerEvent>

#include "Quorvi/ui/design/Colors.h"

namespace quorvi {

namespace {

constexpr int frame = 60;  // milliseconds
constexpr int step = 30;   // degrees

}  // namespace

Spinner::Spinner() {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(QCoreApplication::translate("Spinner", "In progress"));
}

void Spinner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color(ColorRole::accent, palette()), 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(rect()).adjusted(2, 2, -2, -2), -turn_ * 16, 270 * 16);
}

void Spinner::showEvent(QShowEvent*) {
    if (style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0)
        timer_.start(frame, this);
}

void Spinner::hideEvent(QHideEvent*) {
    timer_.stop();
}

void Spinner::timerEvent(QTimerEvent*) {
    turn_ = (turn_ + step) % 360;
    update();
}

}  // namespace quorvi
