#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <functional>
#include <vector>

#include "Quorvi/ui/widgets/Card.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

class AppModel;
class SymbolLabel;

// What is missing before the first dictation, one row each; hidden when complete.
class SetupCard : public Card {
    Q_DECLARE_TR_FUNCTIONS(SetupCard)

public:
    SetupCard(AppModel& model, Scheduler& scheduler);

private:
    struct Row {
        QWidget* widget;
        SymbolLabel* symbol;
        QLabel* title;
        QLabel* detail;
        QHBoxLayout* line;
        QPushButton* action;
        QLabel* ready;
        std::function<bool()> satisfied;
        bool hasAction;  // something that a button can do about it
        bool vanishes;   // if satisfied; otherwise the row says "Ready"
    };

    // `effect` is null if no button helps.
    Row& addRow(const QString& title, const QString& detail, const QString& action,
                std::function<bool()> satisfied, std::function<void()> effect);
    void addServiceRow();
    void addMicrophoneRow(Scheduler& scheduler);
    void addKeyboardRow();
    void refreshService();
    void refreshKeyboard();
    void refresh();

    AppModel& model_;
    std::vector<Row> rows_;     // the first is that of the speech service
    std::size_t keyboard_ = 0;  // its row
    QPushButton* useOffline_;
    QWidget* level_;  // of the microphone
    Subscription changes_;
};

}  // namespace quorvi
