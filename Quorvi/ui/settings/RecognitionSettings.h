#pragma once

#include <QCoreApplication>
#include <QLineEdit>

#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class AppModel;
class Picker;

// The settings section for the speech-to-text service. Disabled during a dictation. Main thread.
class RecognitionSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(RecognitionSettings)

public:
    explicit RecognitionSettings(AppModel& model);

private:
    void refresh();
    void edited(const QString& text);

    AppModel& model_;
    Picker* modelPicker_;
    QLineEdit* vocabulary_;
    Subscription changes_;
};

}  // namespace quorvi
