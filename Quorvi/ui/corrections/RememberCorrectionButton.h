#pragma once

#include <QCoreApplication>
#include <QPushButton>
#include <QString>

#include "Quorvi/ui/design/Controls.h"

namespace quorvi {

class CorrectionStore;

// A button beside a transcript that opens the editor for a new rule, with a preview of the
// transcript.
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
