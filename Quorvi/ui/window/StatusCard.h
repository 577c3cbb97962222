#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>

#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class AppModel;
class SymbolLabel;

// Shows whether dictation is ready, the current dictation, the shortcut, and the paste test.
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
    QWidget* failed_;
    QPushButton* retry_;
    QPushButton* discard_;
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
