#pragma once

#include <QCoreApplication>
#include <QLabel>

#include "Quorvi/ui/design/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class AppModel;
class CorrectionStore;
class RememberCorrectionButton;

// The text of the last dictation, while there is one.
class TranscriptCard : public Card {
    Q_DECLARE_TR_FUNCTIONS(TranscriptCard)

public:
    TranscriptCard(AppModel& model, CorrectionStore& corrections);

private:
    void refresh();

    AppModel& model_;
    QLabel* text_;
    RememberCorrectionButton* remember_;
    Subscription changes_;
};

}  // namespace quorvi
