#pragma once

#include <QCoreApplication>
#include <QWidget>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/indicator/RecordingHUD.h"

namespace quorvi {

// The choice of the indicator's look, with a preview, which never listens. Follows the controller,
// which outlives it.
class RecordingAppearanceSettings : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(RecordingAppearanceSettings)

public:
    explicit RecordingAppearanceSettings(AppModel& model);

private:
    void follow();

    AppModel& model_;
    Picker* style_;
    QLabel* detail_;
    RecordingHUD* preview_;
    Subscription changes_;
};

}  // namespace quorvi
