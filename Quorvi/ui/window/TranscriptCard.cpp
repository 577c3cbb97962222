#include "Quorvi/ui/window/TranscriptCard.h"

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/corrections/RememberCorrectionButton.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

TranscriptCard::TranscriptCard(AppModel& model, CorrectionStore& corrections)
    : Card(tr("Last transcript"), "text.bubble"),
      model_(model),
      text_(contentText()),
      remember_(new RememberCorrectionButton({}, corrections)) {
    content().addWidget(text_);
    auto* copy = button(tr("Copy"), ButtonKind::regular, "doc.on.doc");
    auto* clear = button(tr("Clear transcript"));
    content().addLayout(row({copy, remember_, nullptr, clear}));
    content().addWidget(
        captionText(tr("This copy stays until Quorvi quits. Saved dictations are in History.")));
    connect(copy, &QPushButton::clicked, this, [this] { model_.copyTranscript(); });
    connect(clear, &QPushButton::clicked, this, [this] { model_.clearTranscript(); });
    refresh();
    changes_ = model_.onChange([this] { refresh(); });
}

void TranscriptCard::refresh() {
    const QString text = qt(model_.lastTranscript());
    setVisible(!text.isEmpty());
    if (text == text_->accessibleName()) return;
    setContent(*text_, text);
    remember_->setTranscript(text);
}

}  // namespace quorvi
