#include "Quorvi/ui/widgets/Card.h"

#include <QPainter>

#include "Quorvi/ui/design/Colors.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

namespace {

class Divider : public QWidget {
public:
    Divider() { setFixedHeight(1); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), color(ColorRole::hairline, palette()));
    }
};

}  // namespace

Card::Card() : content_(*new QVBoxLayout(this)) {
    content_.setContentsMargins(spacing::large, spacing::large, spacing::large, spacing::large);
    content_.setSpacing(spacing::medium);
}

Card::Card(const QString& heading, const char* symbol) : Card() {
    setAccessibleName(heading);
    header_ = new QHBoxLayout;
    header_->setSpacing(spacing::small);
    if (symbol) header_->addWidget(new SymbolLabel(symbol, 20, ColorRole::accent));
    header_->addWidget(headingText(heading), 1);
    content_.addLayout(header_);
}

void Card::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color(ColorRole::hairline, palette()), 1));
    painter.setBrush(color(ColorRole::card, palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), spacing::cardRadius,
                            spacing::cardRadius);
}

QVBoxLayout* cardTitle(QWidget* eyebrow, QWidget* heading) {
    auto* layout = new QVBoxLayout;
    layout->setSpacing(spacing::tiny);
    layout->addWidget(eyebrow);
    layout->addWidget(heading);
    return layout;
}

QHBoxLayout* row(std::initializer_list<QWidget*> widgets) {
    auto* layout = new QHBoxLayout;
    layout->setSpacing(spacing::small);
    for (auto* widget : widgets) {
        if (!widget)
            layout->addStretch(1);
        else
            layout->addWidget(widget);
    }
    return layout;
}

QWidget* divider() {
    return new Divider;
}

}  // namespace quorvi
