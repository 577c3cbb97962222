#pragma once

#include <QCoreApplication>

#include "Quorvi/ui/design/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class AppUpdater;
class Switch;

// The settings' section on updates: the switch for the daily look, this program's version, and the
// user's own check. Follows the updater. Main thread; the updater outlives it.
class UpdateSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(UpdateSettings)

public:
    explicit UpdateSettings(AppUpdater& updater);

private:
    AppUpdater& updater_;
    Switch* automatic_;
    Subscription changes_;
};

}  // namespace quorvi
