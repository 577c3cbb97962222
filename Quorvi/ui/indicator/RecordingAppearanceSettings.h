#pragma once

#include <QCoreApplication>
#include <QWidget>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/indicator/RecordingHUD.h"

namespace quorvi {

// The settings for the indicator's theme, with a preview that never records. Main thread; the
// controller outlives it.
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
