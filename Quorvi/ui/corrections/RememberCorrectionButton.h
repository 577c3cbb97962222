#pragma once

#include <QCoreApplication>
#include <QPushButton>
#include <QString>

#include "Quorvi/ui/design/Controls.h"

namespace quorvi {

class CorrectionStore;

// Opens the editor for a new rule next to a transcript, which the editor then previews.
class RememberCorrectionButton : public QPushButton {
    Q_DECLARE_TR_FUNCTIONS(RememberCorrectionButton)

public:
    // The store outlives the button.
    RememberCorrectionButton(QString transcript, CorrectionStore& store,
                             ButtonKind kind = ButtonKind::regular);

    void setTranscript(QString transcript) { transcript_ = std::move(transcript); }

private:
    void openEditor();

    QString transcript_;
    CorrectionStore& store_;
};

}  // namespace quorvi
