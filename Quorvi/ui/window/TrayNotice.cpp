#include "Quorvi/ui/window/TrayNotice.h"

#include <QHBoxLayout>
#include <QPainter>

#include "Quorvi/ui/design/Colors.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

TrayNotice::TrayNotice(std::function<void()> quit) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(spacing::huge, spacing::medium, spacing::huge, spacing::medium);
    layout->setSpacing(spacing::medium);
    layout->addWidget(new SymbolLabel("info.circle", 18, ColorRole::accent));
    layout->addWidget(bodyText(tr("This desktop shows no tray icons. Quorvi keeps running when you "
                                  "close this window; start it again to come back here.")),
                      1);
    auto* leave = button(tr("Quit Quorvi"));
    connect(leave, &QPushButton::clicked, this, [quit = std::move(quit)] {
        if (quit) quit();
    });
    layout->addWidget(leave);
}

void TrayNotice::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), color(ColorRole::card, palette()));
    painter.fillRect(QRect(0, height() - 1, width(), 1), color(ColorRole::hairline, palette()));
}

}  // namespace quorvi
