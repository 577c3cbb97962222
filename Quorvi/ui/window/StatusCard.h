#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>

#include "Quorvi/ui/design/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class AppModel;
class SymbolLabel;

// Whether one can dictate, what the dictation under way is doing, the shortcut, and the test of
// pasting.
class StatusCard : public Card {
    Q_DECLARE_TR_FUNCTIONS(StatusCard)

public:
    explicit StatusCard(AppModel& model);

private:
    void build();
    void refresh();
    void refreshShortcut();
    void refreshRecording();

    AppModel& model_;
    SymbolLabel* symbol_;
    QLabel* heading_;
    QLabel* explanation_;
    QLabel* message_;
    QLabel* shortcut_;
    QPushButton* change_;
    QPushButton* keep_;
    QWidget* recording_;
    QLabel* elapsed_;
    QPushButton* stop_;
    QPushButton* cancel_;
    QLabel* testNote_;
    QPushButton* test_;
    QPushButton* cancelTest_;
    Subscription changes_;
};

}  // namespace quorvi
