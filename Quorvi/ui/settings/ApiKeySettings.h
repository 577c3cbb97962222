#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "Quorvi/ui/widgets/Card.h"
#include "Quorvi/ui/widgets/Working.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

class AppModel;
class KeyStore;
class Switch;

// The settings section for the API key, which can be entered but is never shown. Disabled during a
// dictation. Main thread.
class ApiKeySettings : public Card, public Working {
    Q_DECLARE_TR_FUNCTIONS(ApiKeySettings)

public:
    // `isGiven`: the keys are those of this run only, and begin with one from the environment.
    ApiKeySettings(AppModel& model, KeyStore& keys, Scheduler& scheduler, bool isGiven);
    bool isWorking() const override { return !tasks_.isEmpty(); }

private:
    void build();
    void refresh();
    void save();
    Task<void> storeKey(std::string key);
    Task<void> changeSync(bool on);
    Task<void> readSync();

    AppModel& model_;
    KeyStore& keys_;
    const bool isGiven_;
    QWidget* saved_;
    QLineEdit* apiKey_;
    QPushButton* save_;
    QPushButton* get_;
    QPushButton* remove_;
    Switch* sync_;
    QLabel* note_;
    QLabel* message_;
    Subscription changes_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
