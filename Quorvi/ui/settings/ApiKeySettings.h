#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "Quorvi/ui/design/Card.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

class AppModel;
class KeyStore;
class Switch;

// The settings' section on the user's API key, which is typed here and never shown again. Disabled
// during a dictation.
class ApiKeySettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(ApiKeySettings)

public:
    ApiKeySettings(AppModel& model, KeyStore& keys, Scheduler& scheduler);

private:
    void build();
    void refresh();
    void save();
    Task<void> storeKey(std::string key);
    Task<void> changeSync(bool on);
    Task<void> readSync();

    AppModel& model_;
    KeyStore& keys_;
    QWidget* saved_;
    QLineEdit* apiKey_;
    QPushButton* save_;
    QPushButton* remove_;
    Switch* sync_;
    QLabel* message_;
    Subscription changes_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
