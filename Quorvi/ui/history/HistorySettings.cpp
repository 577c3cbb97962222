#include "Quorvi/ui/history/HistorySettings.h"

#include <QShowEvent>
#include <utility>

#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/Confirmation.h"

namespace quorvi {

HistorySettings::HistorySettings(HistoryEnvironment environment)
    : Card(tr("History & statistics"), "clock.arrow.circlepath"),
      environment_(std::move(environment)),
      figures_(environment_.executor, environment_.scheduler),
      keep_(new Switch(tr("Save transcript history"))),
      retention_(new Picker(tr("Keep transcript text"))),
      cost_(new UsageCostSection(costPeriod_,
                                 [this](UsagePeriod period) {
                                     costPeriod_ = period;
                                     sum();
                                 })),
      tasks_(environment_.scheduler) {
    for (const auto retention : allTranscriptRetentions)
        retention_->addItem(shown(title(retention)));
    auto* label = bodyText(tr("Keep transcript text"));
    label->setWordWrap(false);
    label->setBuddy(retention_);
    auto* clear =
        button(tr("Delete all history and statistics…"), ButtonKind::destructive, "trash");

    content().addWidget(keep_);
    content().addWidget(captionText(
        tr("Turning this off stops saving new text. Existing history remains, and usage statistics "
           "continue without transcript text.")));
    content().addWidget(divider());
    content().addLayout(row({label, nullptr, retention_}));
    content().addWidget(captionText(
        tr("Older text is removed automatically. Word counts, speaking time, cost estimates, dates "
           "and app names remain for Insights. Recordings are not kept.")));
    content().addWidget(divider());
    content().addWidget(cost_);
    content().addWidget(divider());
    content().addWidget(clear, 0, Qt::AlignLeft);

    auto& store = environment_.store;
    QObject::connect(keep_, &QCheckBox::toggled, this,
                     [&store](bool on) { store.setKeepTranscripts(on); });
    QObject::connect(retention_, &QComboBox::currentIndexChanged, this, [&store](int index) {
        if (index >= 0)
            store.setRetention(allTranscriptRetentions.at(static_cast<std::size_t>(index)));
    });
    QObject::connect(clear, &QPushButton::clicked, this, [this] { confirmClearing(); });
    changes_ = store.onChange([this] { follow(); });
    follow();
}

void HistorySettings::follow() {
    keep_->show(environment_.store.keepTranscripts());
    retention_->show(static_cast<int>(environment_.store.retention()));
    sum();
}

void HistorySettings::showEvent(QShowEvent* event) {
    Card::showEvent(event);
    if (event->spontaneous()) return;
    seen_ = true;
    sum();
    newDay_ = environment_.calendar.onNewDay([this] { sum(); });
}

void HistorySettings::hideEvent(QHideEvent* event) {
    Card::hideEvent(event);
    if (event->spontaneous()) return;
    seen_ = false;
    newDay_ = {};
}

void HistorySettings::sum() {
    if (!seen_) return;
    summing_.cancel();
    summing_ = tasks_.start([this](std::stop_token stop) { return showCost(std::move(stop)); });
}

Task<void> HistorySettings::showCost(std::stop_token stop) {
    const auto calendar = environment_.calendar.get();
    auto summing = figures_.of(environment_.store.records(), costPeriod_,
                               environment_.scheduler.date(), calendar, stop);
    const auto sums = co_await summing;
    cost_->show(sums.period.cost, LocaleFormats(calendar));
}

void HistorySettings::confirmClearing() {
    ask(this, {.title = tr("Delete all history and statistics?"),
               .message =
                   tr("This permanently removes every saved Quorvi dictation and resets your usage "
                      "totals, including your other Macs when iCloud sync is enabled."),
               .destroy = tr("Delete all"),
               .onDestroy = [this] { environment_.store.clear(); }});
}

}  // namespace quorvi
