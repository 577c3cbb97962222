#include "Quorvi/ui/insights/InsightsPage.h"

#include <QDateTime>
#include <QLocale>
#include <QShowEvent>
#include <QTimeZone>
#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/history/HistoryTexts.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

namespace {

constexpr std::size_t shownDays = 14;

QString periodLabel(UsagePeriod period) {
    return shown(title(period));
}

// Days of the user's calendar as QDate.
class Days {
public:
    explicit Days(const Calendar& calendar)
        : zone_(QByteArray::fromStdString(calendar.zone())), locale_(qt(calendar.locale())) {}

    // `start` is the start of a day, later than 0:00 where clocks skip midnight.
    QDate day(Date start) const {
        constexpr double anHour = 3600;
        const auto when = static_cast<qint64>(start.unixSeconds() + anHour);
        return QDateTime::fromSecsSinceEpoch(when, zone_).date();
    }
    QString number(QDate day) const { return locale_.toString(day.day()); }
    // The index of the day in its week.
    int row(QDate day) const {
        return (day.dayOfWeek() - static_cast<int>(locale_.firstDayOfWeek()) + 7) % 7;
    }
    QStringList weekdays() const {
        QStringList names;
        for (int row = 0; row < 7; ++row) {
            const int day = (static_cast<int>(locale_.firstDayOfWeek()) - 1 + row) % 7 + 1;
            names << locale_.standaloneDayName(day, QLocale::ShortFormat);
        }
        return names;
    }

private:
    QTimeZone zone_;
    QLocale locale_;
};

}  // namespace

InsightsPage::InsightsPage(HistoryEnvironment environment)
    : Page(tr("YOUR DICTATION, IN NUMBERS"), tr("Insights"),
           tr("Usage across your synced Macs, measured from your Quorvi dictations.")),
      environment_(std::move(environment)),
      figures_(environment_.executor, environment_.scheduler),
      problem_(new ProblemNote),
      tasks_(environment_.scheduler) {
    auto* picker = new PeriodPicker(tr("Period"), period_);
    auto* label = bodyText(tr("Period"));
    label->setWordWrap(false);
    label->setBuddy(picker);
    QObject::connect(picker, &QComboBox::currentIndexChanged, this, [this, picker] {
        period_ = picker->period();
        follow();
    });
    column().addLayout(row({label, picker, nullptr}));
    add(problem_);
    add(buildMetrics());
    add(buildDailyWords());
    add(buildApps());
    add(buildActivity());
    auto* costCard = new Card;
    costCard->setAccessibleName(tr("Estimated API cost"));
    cost_ = new UsageCostSection(period_);
    costCard->content().addWidget(cost_);
    add(costCard);
    add(captionText(
        tr("Speed is total words divided by recording time. Counts include completed "
           "transcriptions, even when you copy them manually. Statistics start with this version "
           "of Quorvi.")));
    changes_ = environment_.store.onChange([this] { follow(); });
}

QWidget* InsightsPage::tile(Metric metric, const char* symbol, const QString& title) {
    auto* card = new Card;
    auto* value = new QLabel;
    value->setFont(textFont(TextStyle::figure));
    value->setTextFormat(Qt::PlainText);
    auto* caption = captionText(title);
    caption->setWordWrap(false);
    auto* heading = row({new SymbolLabel(symbol, 16, ColorRole::accent)});
    heading->addWidget(caption, 1);
    card->content().setSpacing(spacing::tiny);
    card->content().addLayout(heading);
    card->content().addWidget(value);
    card->setAccessibleName(title);
    // All tiles are equally wide.
    card->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    values_[metric] = value;
    tiles_[metric] = card;
    return card;
}

QWidget* InsightsPage::buildMetrics() {
    auto* metrics = new QWidget;
    auto* rows = new QVBoxLayout(metrics);
    rows->setContentsMargins({});
    rows->setSpacing(spacing::medium);
    for (const auto& tiles :
         {std::vector{tile(wordsDictated, "text.bubble", tr("Words dictated")),
                      tile(wordsPerMinute, "speedometer", tr("Words per minute")),
                      tile(dictations, "mic", tr("Dictations"))},
          std::vector{tile(speakingTime, "clock", tr("Speaking time")),
                      tile(appsUsed, "square.grid.2x2", tr("Apps used"))}}) {
        auto* line = new QHBoxLayout;
        line->setSpacing(spacing::medium);
        for (auto* each : tiles) line->addWidget(each, 1);
        rows->addLayout(line);
    }
    return metrics;
}

QWidget* InsightsPage::buildDailyWords() {
    auto* card = new Card(tr("Daily words"), "chart.bar.xaxis");
    bars_ = new DailyBars(tr("Daily words dictated in the last fourteen days"));
    card->content().addWidget(captionText(tr("Last 14 days")));
    card->content().addWidget(bars_);
    return card;
}

QWidget* InsightsPage::buildApps() {
    auto* card = new Card(tr("Usage by app"), "macwindow");
    appsPeriod_ = captionText();
    topApps_ = captionText();
    noApps_ = secondaryText(tr("Your writing apps will appear here after you dictate."));
    appsLayout_ = new QVBoxLayout;
    appsLayout_->setSpacing(spacing::medium);
    card->content().addWidget(appsPeriod_);
    card->content().addLayout(appsLayout_);
    card->content().addWidget(topApps_);
    card->content().addWidget(noApps_);
    topApps_->hide();
    noApps_->hide();
    return card;
}

QWidget* InsightsPage::buildActivity() {
    const auto heading = tr("Activity over the last 12 weeks");
    auto* card = new Card(heading, "calendar");
    streak_ = headingText({});
    best_ = captionText();
    grid_ = new ActivityGrid(heading);
    auto* streak = row({new SymbolLabel("flame", 20, ColorRole::accent)});
    streak->addWidget(streak_, 1);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(spacing::tiny);
    texts->addLayout(streak);
    texts->addWidget(best_);
    texts->addSpacing(spacing::medium);
    texts->addWidget(captionText(
        tr("A day counts toward your streak when you complete at least one dictation.")));
    texts->addStretch(1);
    auto* both = new QHBoxLayout;
    both->setSpacing(spacing::huge);
    both->addLayout(texts, 1);
    both->addWidget(grid_, 0, Qt::AlignTop);
    card->content().addLayout(both);
    return card;
}

void InsightsPage::showEvent(QShowEvent* event) {
    Page::showEvent(event);
    if (event->spontaneous()) return;
    seen_ = true;
    follow();
    newDay_ = environment_.calendar.onNewDay([this] { follow(); });  // new periods
}

void InsightsPage::hideEvent(QHideEvent* event) {
    Page::hideEvent(event);
    if (event->spontaneous()) return;
    seen_ = false;
    newDay_ = {};
}

void InsightsPage::follow() {
    if (!seen_) return;
    problem_->show(environment_.store.persistenceError());
    summing_ = true;
    sums_.cancel();
    sums_ = tasks_.start([this](std::stop_token stop) { return sum(std::move(stop)); });
}

Task<void> InsightsPage::sum(std::stop_token stop) {
    const auto calendar = environment_.calendar.get();
    auto summing = figures_.of(environment_.store.records(), period_, environment_.scheduler.date(),
                               calendar, stop);
    const auto sums = co_await summing;
    summing_ = false;
    display(sums, calendar);
}

void InsightsPage::display(const HistoryFigures::Sums& sums, const Calendar& calendar) {
    const LocaleFormats formats(calendar);
    showMetrics(sums.period.usage, formats);
    showDays(sums.allTime, calendar, formats);
    showApps(sums.period.usage.apps, formats);
    streak_->setText(texts::currentStreak(sums.allTime, formats));
    best_->setText(texts::longestStreak(sums.allTime, formats));
    cost_->show(sums.period.cost, formats);
}

void InsightsPage::showMetrics(const UsageSummary& usage, const LocaleFormats& formats) {
    const std::array<QString, metricCount> texts{
        texts::integer(usage.totalWords, formats), texts::wordsPerMinute(usage, formats),
        texts::integer(usage.dictationCount, formats),
        texts::speakingTime(usage.audioSeconds, formats),
        texts::integer(static_cast<std::int64_t>(usage.apps.size()), formats)};
    for (std::size_t metric = 0; metric < metricCount; ++metric) {
        values_[metric]->setText(texts[metric]);
        tiles_[metric]->setAccessibleDescription(texts[metric]);
    }
}

void InsightsPage::showApps(const std::vector<AppUsage>& apps, const LocaleFormats& formats) {
    while (auto* item = appsLayout_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const double most =
        apps.empty() ? 1 : static_cast<double>(std::max<std::int64_t>(apps[0].words, 1));
    for (std::size_t n = 0; n < std::min(apps.size(), texts::shownApps); ++n) {
        auto* line = new QWidget;
        auto* name = bodyText(qt(apps[n].name));
        auto* numbers = captionText(texts::words(apps[n].words, formats) + QStringLiteral(" · ") +
                                    texts::dictations(apps[n].dictations, formats));
        numbers->setWordWrap(false);
        auto* above = new QHBoxLayout;
        above->addWidget(name, 1);
        above->addWidget(numbers);
        auto* layout = new QVBoxLayout(line);
        layout->setContentsMargins({});
        layout->setSpacing(spacing::tiny);
        layout->addLayout(above);
        layout->addWidget(new ShareBar(static_cast<double>(apps[n].words) / most));
        appsLayout_->addWidget(line);
    }
    appsPeriod_->setText(periodLabel(period_));
    topApps_->setText(texts::topApps(apps.size(), formats));
    topApps_->setVisible(apps.size() > texts::shownApps);
    noApps_->setVisible(apps.empty());
}

void InsightsPage::showDays(const UsageSummary& usage, const Calendar& calendar,
                            const LocaleFormats& formats) {
    const Days days(calendar);
    std::vector<ChartDay> all;
    for (const auto& day : usage.days)
        all.push_back({static_cast<double>(day.words), day.dictations > 0,
                       days.number(days.day(day.date)), texts::integer(day.words, formats),
                       tr("%1: %2, %3")
                           .arg(qt(formats.longDate(day.date)), texts::words(day.words, formats),
                                texts::dictations(day.dictations, formats))});
    const auto last = std::min(all.size(), shownDays);
    bars_->show({all.end() - static_cast<std::ptrdiff_t>(last), all.end()});
    const int firstRow = all.empty() ? 0 : days.row(days.day(usage.days.front().date));
    grid_->show(std::move(all), firstRow, days.weekdays());
}

}  // namespace quorvi
