#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <string>

#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class Preferences;
class SyncControl;
class Spinner;
class Switch;

// The settings section for synchronisation: where the data are shared, and how it goes. Stateless.
// Main thread.
class AccountSyncSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(AccountSyncSettings)

public:
    AccountSyncSettings(SyncControl& sync, const Preferences& preferences);

private:
    enum class Place { ownFolder, sharedFolder, server };

    std::string address() const;
    Place place() const;
    QString placeText() const;
    QString statusText() const;
    void refresh();

    SyncControl& sync_;
    const Preferences& preferences_;
    Switch* enabled_;
    Spinner* working_;
    QLabel* place_;
    QLabel* status_;
    QPushButton* now_;
    QLabel* lastSynced_;
    Subscription changes_;
};

}  // namespace quorvi
