#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <array>

#include "Quorvi/history/HistoryFigures.h"
#include "Quorvi/ui/history/HistoryEnvironment.h"
#include "Quorvi/ui/history/UsageCostSection.h"
#include "Quorvi/ui/insights/Charts.h"
#include "Quorvi/ui/widgets/Card.h"
#include "Quorvi/ui/widgets/Page.h"
#include "Quorvi/ui/widgets/ProblemNote.h"

namespace quorvi {

// Statistics of the dictations. Follows the store while visible; sums are calculated in the
// background. Main thread.
class InsightsPage : public Page {
    Q_DECLARE_TR_FUNCTIONS(InsightsPage)

public:
    explicit InsightsPage(HistoryEnvironment environment);

    // True if the numbers are up to date with the store.
    bool isComplete() const { return !summing_; }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    enum Metric { wordsDictated, wordsPerMinute, dictations, speakingTime, appsUsed, metricCount };

    QWidget* tile(Metric metric, const char* symbol, const QString& title);
    QWidget* buildMetrics();
    QWidget* buildDailyWords();
    QWidget* buildApps();
    QWidget* buildActivity();
    void follow();
    Task<void> sum(std::stop_token stop);
    void display(const HistoryFigures::Sums& sums, const Calendar& calendar);
    void showMetrics(const UsageSummary& usage, const LocaleFormats& formats);
    void showApps(const std::vector<AppUsage>& apps, const LocaleFormats& formats);
    void showDays(const UsageSummary& usage, const Calendar& calendar,
                  const LocaleFormats& formats);

    HistoryEnvironment environment_;
    HistoryFigures figures_;
    UsagePeriod period_ = UsagePeriod::week;
    bool seen_ = false;
    bool summing_ = false;

    ProblemNote* problem_;
    std::array<QWidget*, metricCount> tiles_{};
    std::array<QLabel*, metricCount> values_{};
    DailyBars* bars_ = nullptr;
    QLabel* appsPeriod_ = nullptr;
    QVBoxLayout* appsLayout_ = nullptr;
    QLabel* topApps_ = nullptr;
    QLabel* noApps_ = nullptr;
    QLabel* streak_ = nullptr;
    QLabel* best_ = nullptr;
    ActivityGrid* grid_ = nullptr;
    UsageCostSection* cost_ = nullptr;
    Subscription changes_;
    Subscription newDay_;
    TaskHandle sums_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
