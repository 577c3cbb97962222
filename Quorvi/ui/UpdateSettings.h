#pragma once

#include <QCheckBox>
#include <QPushButton>
#include <QWidget>

#include "Quorvi/system/updates/AppUpdater.h"

namespace quorvi {

// The settings' section on updates: the switch for the daily look, this program's version, and the
// user's own check. Follows the updater. Main thread; the updater outlives it.
class UpdateSettings : public QWidget {
public:
    explicit UpdateSettings(AppUpdater& updater);

private:
    AppUpdater& updater_;
    QCheckBox automatic_;
    QPushButton check_;
    Subscription changes_;
};

}  // namespace quorvi
