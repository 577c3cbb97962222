#include "Quorvi/ui/widgets/Page.h"

#include <QApplication>

#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

Page::Page(const QString& eyebrow, const QString& title, const QString& subtitle)
    : column_(*new QVBoxLayout) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(title);

    auto* centred = new QWidget;
    auto* margins = new QHBoxLayout(centred);
    margins->setContentsMargins(spacing::huge, spacing::huge, spacing::huge, spacing::huge);
    auto* content = new QWidget;
    content->setMaximumWidth(spacing::columnWidth);
    margins->addStretch(1);
    margins->addWidget(content, 1000);
    margins->addStretch(1);
    auto* all = new QVBoxLayout(content);
    all->setContentsMargins(0, 0, 0, 0);

    auto* heading = new QVBoxLayout;
    heading->setSpacing(spacing::tiny);
    if (!eyebrow.isEmpty()) heading->addWidget(eyebrowText(eyebrow));
    heading->addWidget(titleText(title));
    if (!subtitle.isEmpty()) heading->addWidget(secondaryText(subtitle));
    column_.setSpacing(spacing::large);
    column_.addLayout(heading);
    all->addLayout(&column_);
    all->addStretch(1);
    setWidget(centred);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && widget()->isAncestorOf(now)) ensureWidgetVisible(now, 0, spacing::large);
    });
}

}  // namespace quorvi
