#include "Quorvi/ui/history/HistoryPage.h"

#include <QShortcut>
#include <QShowEvent>
#include <QTimerEvent>
#include <algorithm>
#include <chrono>
#include <utility>

#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Symbols.h"
#include "Quorvi/ui/history/HistoryTexts.h"
#include "Quorvi/ui/widgets/Confirmation.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr auto markedAsCopied = 2s;
// Items that one event-loop turn fills in. Most of the cost is their layout.
constexpr int itemsAtATime = 4;

QLabel* centred(QLabel* label) {
    label->setAlignment(Qt::AlignCenter);
    return label;
}

}  // namespace

HistoryPage::HistoryPage(HistoryEnvironment environment)
    : Page(tr("YOUR WORDS, KEPT CLOSE"), tr("History"), tr("Search and reuse your dictations.")),
      environment_(std::move(environment)),
      search_(environment_.executor, environment_.scheduler),
      actions_{[this](const auto& record) { copy(record); },
               [this](const auto& record) { confirmDeletion(record); },
               [this](const auto& record, bool expanded) { expand(record, expanded); },
               environment_.makeRememberButton},
      tasks_(environment_.scheduler) {
    buildHeader();
    list_ = new RowList;
    add(list_);

    empty_ = new QWidget;
    auto* emptyLayout = new QVBoxLayout(empty_);
    emptyLayout->setContentsMargins(0, spacing::huge, 0, spacing::huge);
    emptyLayout->setSpacing(spacing::small);
    emptyLayout->addWidget(new SymbolLabel("clock.arrow.circlepath", 40, ColorRole::secondary), 0,
                           Qt::AlignHCenter);
    emptyTitle_ = headingText({});
    emptyLayout->addWidget(centred(emptyTitle_));
    emptySubtitle_ = secondaryText();
    emptyLayout->addWidget(centred(emptySubtitle_));
    empty_->hide();
    add(empty_);

    more_ = button(tr("Load more"));
    more_->hide();
    column().addWidget(more_, 0, Qt::AlignHCenter);
    QObject::connect(more_, &QPushButton::clicked, this, [this] {
        visibleCount_ += pageSize;
        rebuild();
    });
    changes_ = environment_.store.onChange([this] { follow(); });
}

void HistoryPage::buildHeader() {
    problem_ = new ProblemNote;
    add(problem_);
    paused_ =
        secondaryText(tr("Saving new transcripts is off. Existing history is still available."));
    add(paused_);

    query_ = new SearchField(tr("Search dictation history"), tr("Search transcripts or apps"),
                             "magnifyingglass");
    clear_ = symbolButton(tr("Clear search"), "xmark.circle.fill");
    clear_->hide();
    auto* line = new QHBoxLayout;
    line->setSpacing(spacing::small);
    line->addWidget(query_, 1);
    line->addWidget(clear_);
    count_ = captionText();
    auto* searching = new QVBoxLayout;
    searching->setSpacing(spacing::small);
    searching->addLayout(line);
    searching->addWidget(count_);
    column().addLayout(searching);

    QObject::connect(query_, &QLineEdit::textChanged, this, [this] { queryChanged(); });
    QObject::connect(clear_, &QPushButton::clicked, this, [this] {
        query_->clear();
        query_->setFocus();
    });
    auto* find = new QShortcut(QKeySequence::Find, this);
    QObject::connect(find, &QShortcut::activated, query_, [this] {
        query_->setFocus(Qt::ShortcutFocusReason);
        query_->selectAll();
    });
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), query_);
    escape->setContext(Qt::WidgetShortcut);
    QObject::connect(escape, &QShortcut::activated, query_, &QLineEdit::clear);
}

void HistoryPage::showEvent(QShowEvent* event) {
    Page::showEvent(event);
    if (event->spontaneous()) return;
    seen_ = true;
    environment_.store.prune(environment_.scheduler.date());
    follow();
    newDay_ = environment_.calendar.onNewDay([this] { rebuild(); });  // new headings
}

void HistoryPage::hideEvent(QHideEvent* event) {
    Page::hideEvent(event);
    if (event->spontaneous()) return;
    seen_ = false;
    newDay_ = {};
    search_.forget();
}

void HistoryPage::follow() {
    if (!seen_) return;
    showNotes();
    if (shownGeneration_ != environment_.store.generation())
        search();
    else if (formats_)
        showCount();
}

void HistoryPage::showNotes() {
    const auto& store = environment_.store;
    problem_->show(store.persistenceError());
    paused_->setVisible(!store.keepTranscripts());
}

void HistoryPage::queryChanged() {
    clear_->setVisible(!query_->text().isEmpty());
    visibleCount_ = pageSize;
    search();
}

void HistoryPage::search() {
    const auto& store = environment_.store;
    const bool firstTime = !shownGeneration_;
    shownGeneration_ = store.generation();
    // Listing everything does not need the index, which is not built yet.
    if (firstTime && query_->text().isEmpty()) display(HistoryIndex::texts(store.records()));
    searching_ = true;
    finding_.cancel();
    finding_ = tasks_.start([this](std::stop_token stop) {
        return find(query_->text().toStdString(), std::move(stop));
    });
}

Task<void> HistoryPage::find(std::string query, std::stop_token stop) {
    auto finding = search_.find(environment_.store.records(), std::move(query), stop);
    auto found = co_await finding;
    throwIfStopped(stop);  // a newer search may have started since the result came
    searching_ = false;
    display(std::move(found));
}

void HistoryPage::display(HistoryMatches matches) {
    const bool same =
        matches.positions == matches_.positions && matches.records.isSharedWith(matches_.records);
    matches_ = std::move(matches);
    if (same && formats_ && placed_ == items_.size())
        showCount();
    else
        rebuild();
}

void HistoryPage::showCount() {
    const auto& store = environment_.store;
    const bool knows = !store.isLoading() || !matches_.positions.empty();
    count_->setText(knows ? texts::savedDictations(matches_.size(), *formats_) : QString());
    const bool isEmpty = knows && matches_.positions.empty();
    if (isEmpty) {
        const bool searches = !query_->text().isEmpty();
        emptyTitle_->setText(searches ? tr("No matching dictations")
                             : store.keepTranscripts()
                                 ? tr("Your next dictation starts your history")
                                 : tr("Transcript saving is paused"));
        emptySubtitle_->setText(searches
                                    ? tr("Try a word, phrase, or app name.")
                                    : tr("Manage transcript saving and retention in Settings."));
    }
    empty_->setVisible(isEmpty);
}

void HistoryPage::rebuild() {
    const auto calendar = environment_.calendar.get();
    formats_.emplace(calendar);
    const auto now = environment_.scheduler.date();
    items_.clear();
    for (const auto& day : historyDays(matches_, visibleCount_, calendar)) {
        items_.push_back({.heading = texts::dayHeading(day.date, now, calendar, *formats_)});
        for (const auto& entry : day.entries)
            items_.push_back(
                {.record = entry,
                 .place = {&entry == &day.entries.front(), &entry == &day.entries.back()}});
    }
    list_->clear();
    usedRows_ = 0;
    usedHeadings_ = 0;
    placed_ = 0;
    more_->hide();
    showCount();
    filling_.stop();
    fill();
}

void HistoryPage::timerEvent(QTimerEvent* event) {
    if (event->timerId() == filling_.timerId())
        fill();
    else
        Page::timerEvent(event);
}

void HistoryPage::fill() {
    for (int filled = 0; placed_ < items_.size(); ++filled) {
        if (filled == itemsAtATime) {
            // Lets the event loop handle keystrokes first.
            hideUnused();
            if (!filling_.isActive()) filling_.start(0, this);
            return;
        }
        place(items_[placed_++]);
    }
    filling_.stop();
    hideUnused();
    more_->setVisible(matches_.size() > visibleCount_);
}

void HistoryPage::place(const Item& item) {
    if (item.heading.isEmpty()) {
        auto* row = nextRow();
        row->show(item.record, *formats_, expanded_.contains(item.record.id));
        row->setPlace(item.place);
        row->setCopied(copiedID_ == item.record.id);
        list_->append(row);
        return;
    }
    if (usedHeadings_ == headings_.size()) {
        headings_.push_back(new HeadingLabel({}, TextStyle::eyebrow));
        headings_.back()->setForegroundRole(QPalette::PlaceholderText);
        headings_.back()->setContentsMargins(spacing::tiny, 0, 0, spacing::small);
    }
    auto* heading = headings_[usedHeadings_++];
    heading->setText(item.heading);
    list_->append(heading, placed_ > 1 ? spacing::large : 0);
}

HistoryRow* HistoryPage::nextRow() {
    if (usedRows_ == rows_.size()) {
        rows_.push_back(new HistoryRow(actions_));
        rows_.back()->setParent(list_);
        rows_.back()->setLastBefore(more_);
    }
    return rows_[usedRows_++];
}

void HistoryPage::hideUnused() {
    if (items_.empty()) list_->setFixedHeight(0);
    for (auto i = usedRows_; i < rows_.size(); ++i) rows_[i]->setVisible(false);
    for (auto i = usedHeadings_; i < headings_.size(); ++i) headings_[i]->setVisible(false);
}

HistoryRow* HistoryPage::visibleRow(const Uuid& id) {
    const auto end = rows_.begin() + static_cast<std::ptrdiff_t>(usedRows_);
    const auto found =
        std::find_if(rows_.begin(), end, [&](const auto* row) { return row->record().id == id; });
    return found == end ? nullptr : *found;
}

void HistoryPage::copy(const DictationRecord& record) {
    environment_.store.copy(record);
    if (copiedID_)
        if (auto* row = visibleRow(*copiedID_)) row->setCopied(false);
    copiedID_ = record.id;
    if (auto* row = visibleRow(record.id)) row->setCopied(true);
    copiedTimer_ = environment_.scheduler.after(markedAsCopied, [this] {
        if (auto* row = visibleRow(*copiedID_)) row->setCopied(false);
        copiedID_.reset();
    });
}

void HistoryPage::confirmDeletion(const DictationRecord& record) {
    deletionID_ = record.id;
    ask(this, {.title = tr("Delete this dictation?"),
               .message = tr("It will be removed from history and usage statistics, including your "
                             "other Macs when iCloud sync is enabled."),
               .destroy = tr("Delete"),
               .onDestroy = [this] {
                   if (const auto id = std::exchange(deletionID_, std::nullopt))
                       environment_.store.remove(*id);
               }});
}

void HistoryPage::expand(const DictationRecord& record, bool expanded) {
    if (expanded)
        expanded_.insert(record.id);
    else
        expanded_.erase(record.id);
    if (auto* row = visibleRow(record.id)) row->show(DictationRecord(record), *formats_, expanded);
}

}  // namespace quorvi
