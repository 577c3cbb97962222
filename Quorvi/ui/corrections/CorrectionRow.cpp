#include "Quorvi/ui/corrections/CorrectionRow.h"

#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/widgets/Card.h"

namespace quorvi {

CorrectionRow::CorrectionRow(const TextCorrection& rule, const Actions& actions)
    : id_(rule.id),
      original_(contentText()),
      replacement_(contentText()),
      origin_(captionText()),
      enabled_(new Switch(tr("Enable correction"))),
      edit_(button(tr("Edit"))),
      delete_(symbolButton(tr("Delete correction"), "trash", ButtonKind::destructive)) {
    // Tab stops at the controls only, not at the selectable texts.
    original_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    replacement_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto bold = original_->font();
    bold.setWeight(QFont::DemiBold);
    original_->setFont(bold);
    auto* arrow =
        row({new SymbolLabel("arrow.turn.down.right", 16, ColorRole::secondary), replacement_});
    arrow->setStretch(1, 1);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(spacing::tiny);
    texts->addWidget(original_);
    texts->addLayout(arrow);
    texts->addWidget(origin_);
    auto* line = new QHBoxLayout;
    line->setSpacing(spacing::small);
    line->addLayout(texts, 1);
    line->addSpacing(spacing::small);
    line->addWidget(enabled_);
    line->addWidget(edit_);
    line->addWidget(delete_);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(spacing::medium);
    all->addWidget(divider());
    all->addLayout(line);
    // Queued, since the change may delete this row.
    connect(enabled_, &QCheckBox::toggled, this,
            [this, actions](bool on) { actions.setEnabled(id_, on); });
    connect(edit_, &QPushButton::clicked, this, [this, actions] { actions.edit(id_); });
    connect(
        delete_, &QPushButton::clicked, this, [this, actions] { actions.remove(id_); },
        Qt::QueuedConnection);
    show(rule);
}

QWidget* CorrectionRow::follow(QWidget* before) {
    for (QWidget* control : {static_cast<QWidget*>(enabled_), static_cast<QWidget*>(edit_),
                             static_cast<QWidget*>(delete_)}) {
        setTabOrder(before, control);
        before = control;
    }
    return before;
}

void CorrectionRow::show(const TextCorrection& rule) {
    const QString phrase = qt(rule.original);
    setContent(*original_, phrase);
    setContent(*replacement_, qt(rule.replacement));
    setAccessibleName(phrase);
    origin_->setText(rule.learnedAutomatically ? tr("Learned from an edit") : tr("Saved by you"));
    enabled_->show(rule.isEnabled);
    enabled_->setAccessibleName(tr("Enable correction for %1").arg(phrase));
    edit_->setAccessibleName(tr("Edit correction for %1").arg(phrase));
    delete_->setAccessibleName(tr("Delete correction for %1").arg(phrase));
}

}  // namespace quorvi
