#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <string>

#include "Quorvi/ui/settings/CloudAddress.h"
#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/TaskScope.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

class CloudAccess;
class CloudComputersList;
class CloudPlaceSettings;
class Preferences;
class SyncControl;
class Spinner;
class Switch;

// The settings section for synchronisation: where the data are shared, how it goes, a check of the
// cloud, and who shares. Main thread.
class AccountSyncSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(AccountSyncSettings)

public:
    AccountSyncSettings(SyncControl& sync, CloudAccess& cloud, Preferences& preferences,
                        Scheduler& scheduler);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void addCheck();
    CloudAddress address() const;
    QString placeText() const;
    QString sentence(const Message& message) const;
    void refresh();
    void refreshComputers();
    void startCheck();
    Task<void> check(std::stop_token stop);

    SyncControl& sync_;
    CloudAccess& cloud_;
    const Preferences& preferences_;
    Switch* enabled_;
    CloudPlaceSettings* choice_;
    Spinner* working_;
    QLabel* place_;
    QLabel* status_;
    QPushButton* now_;
    QPushButton* check_;
    QPushButton* cancel_;
    Spinner* checking_;
    QLabel* result_;
    QLabel* lastSynced_;
    CloudComputersList* computers_;
    bool isChecking_ = false;
    std::string listed_;  // the address and the time that the computers were read for
    TaskHandle running_;
    Subscription changes_;
    Subscription preferenceChanges_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
