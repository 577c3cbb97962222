#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

class AppModel;
class Picker;
class Spinner;
class Switch;

// The settings section for the speech service: which one, how to reach it, and a test of it.
// Disabled during a dictation. Main thread.
class SpeechServiceSettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(SpeechServiceSettings)

public:
    SpeechServiceSettings(AppModel& model, Scheduler& scheduler);

private:
    QWidget* otherService();
    void refresh();
    void startTest();
    Task<void> test(std::stop_token stop);

    AppModel& model_;
    Picker* kind_;
    QLabel* explanation_;
    QWidget* other_;
    QLineEdit* address_;
    QLineEdit* otherModel_;
    Switch* takesKey_;
    QPushButton* test_;
    QPushButton* cancel_;
    Spinner* testing_;
    QLabel* result_;
    bool isTesting_ = false;
    TaskHandle running_;
    Subscription changes_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
