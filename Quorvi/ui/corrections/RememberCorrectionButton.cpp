#include "Quorvi/ui/corrections/RememberCorrectionButton.h"

#include <utility>

#include "Quorvi/ui/corrections/CorrectionEditor.h"
#include "Quorvi/ui/design/Symbols.h"

namespace quorvi {

RememberCorrectionButton::RememberCorrectionButton(QString transcript, CorrectionStore& store,
                                                   ButtonKind kind)
    : QPushButton(tr("Remember correction")), transcript_(std::move(transcript)), store_(store) {
    setKind(*this, kind);
    setIcon(symbolIcon("text.badge.plus",
                       kind == ButtonKind::quiet ? ColorRole::secondary : ColorRole::ink));
    setIconSize(QSize(16, 16));
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, [this] { openEditor(); });
}

void RememberCorrectionButton::openEditor() {
    auto* editor = new CorrectionEditor(store_, {}, transcript_, window());
    editor->open();
}

}  // namespace quorvi
