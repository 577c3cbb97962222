#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>

#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class SyncControl;
class Spinner;
class Switch;

// The settings section for synchronisation. Stateless. Main thread.
class AccountSyncSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(AccountSyncSettings)

public:
    explicit AccountSyncSettings(SyncControl& sync);

private:
    void refresh();

    SyncControl& sync_;
    Switch* enabled_;
    Spinner* working_;
    QLabel* status_;
    QPushButton* now_;
    QLabel* lastSynced_;
    Subscription changes_;
};

}  // namespace quorvi
