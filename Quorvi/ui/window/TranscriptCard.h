#pragma once

#include <QCoreApplication>
#include <QLabel>

#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class AppModel;
class CorrectionStore;
class RememberCorrectionButton;

// The text of the last dictation; hidden if there is none.
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
