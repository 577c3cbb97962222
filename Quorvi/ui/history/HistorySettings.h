#pragma once

#include <QCoreApplication>

#include "Quorvi/history/HistoryFigures.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/history/HistoryEnvironment.h"
#include "Quorvi/ui/history/UsageCostSection.h"
#include "Quorvi/ui/widgets/Card.h"

namespace quorvi {

// The settings section for the history: whether and how long texts are kept, the estimated cost,
// and the button that deletes everything. Follows the store; calculates sums only while visible.
// Main thread.
class HistorySettings : public Card {
    Q_DECLARE_TR_FUNCTIONS(HistorySettings)

public:
    explicit HistorySettings(HistoryEnvironment environment);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void follow();
    void sum();
    Task<void> showCost(std::stop_token stop);
    void confirmClearing();

    HistoryEnvironment environment_;
    HistoryFigures figures_;
    UsagePeriod costPeriod_ = UsagePeriod::calendarMonth;
    bool seen_ = false;
    Switch* keep_;
    Picker* retention_;
    UsageCostSection* cost_;
    Subscription changes_;
    Subscription newDay_;
    TaskHandle summing_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
