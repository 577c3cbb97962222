#pragma once

#include <QCoreApplication>

#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class AppUpdater;
class Switch;

// The settings section for updates: the switch for the daily check, the program's version, and the
// button that checks now. Main thread; the updater outlives it.
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
