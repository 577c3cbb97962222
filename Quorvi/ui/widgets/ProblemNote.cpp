#include "Quorvi/ui/widgets/ProblemNote.h"

#include <QHBoxLayout>

#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

ProblemNote::ProblemNote() : text_(bodyText()) {
    auto* all = new QHBoxLayout(this);
    all->setContentsMargins({});
    all->setSpacing(spacing::small);
    all->addWidget(new SymbolLabel("exclamationmark.triangle", 18, ColorRole::warning), 0,
                   Qt::AlignTop);
    all->addWidget(text_, 1);
    hide();
}

void ProblemNote::show(const std::optional<Message>& problem) {
    if (problem) text_->setText(shown(*problem));
    setVisible(problem.has_value());
}

}  // namespace quorvi
