#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QStringList>
#include <vector>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

class AppModel;
class Picker;

// The settings section for the microphone: which one, and its level. Disabled during a dictation.
class MicrophoneSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(MicrophoneSettings)

public:
    MicrophoneSettings(AppModel& model, Scheduler& scheduler);

private:
    void refresh();
    void fillPicker();

    AppModel& model_;
    Picker* picker_;
    std::vector<Microphone> offered_;  // by the picker; the first is the system's default
    QStringList texts_;                // of the picker
    QLabel* used_;
    QWidget* level_;
    QLabel* explanation_;
    Subscription changes_;
};

}  // namespace quorvi
