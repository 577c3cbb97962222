#pragma once

#include <memory>
#include <string>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/ui/indicator/LevelMeter.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

class AppModel;

// The level of the microphone that is used. Listens only while it can be seen, and not during a
// dictation.
class MicrophoneLevel : public LevelMeter {
public:
    MicrophoneLevel(AppModel& model, Scheduler& scheduler);
    ~MicrophoneLevel() override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();
    void showColor();

    AppModel& model_;
    Scheduler& scheduler_;
    std::unique_ptr<AudioLevel> level_;  // while it listens
    std::string microphone_;             // to which
    Timer ticks_;
    Subscription changes_;
};

}  // namespace quorvi
