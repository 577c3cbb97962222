#pragma once

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/system/updates/AppUpdater.h"
#include "Quorvi/ui/indicator/RecordingHUD.h"

namespace quorvi {

// Feeds the indicator from the controller and the updater, while it is visible. Main thread; both
// outlive it.
class RecordingOverlay : public RecordingHUD {
public:
    RecordingOverlay(AppModel& model, AppUpdater& updater, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void follow();
    Values current();

    AppModel& model_;
    AppUpdater& updater_;
    bool seen_ = false;
    Subscription changes_;
    Subscription updates_;
};

}  // namespace quorvi
