#pragma once

#include <QBasicTimer>
#include <QCoreApplication>
#include <QLineEdit>
#include <optional>
#include <set>
#include <vector>

#include "Quorvi/history/HistoryDays.h"
#include "Quorvi/history/HistorySearch.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/history/HistoryEnvironment.h"
#include "Quorvi/ui/history/HistoryRow.h"
#include "Quorvi/ui/history/RowList.h"
#include "Quorvi/ui/widgets/Page.h"
#include "Quorvi/ui/widgets/ProblemNote.h"

namespace quorvi {

// The saved dictations by day, to search, copy and delete. Searches run in the background, and only
// the latest result is shown. Rows are filled a few per event-loop turn, so that typing stays
// responsive. Follows the store while the page is visible. Main thread.
class HistoryPage : public Page {
    Q_DECLARE_TR_FUNCTIONS(HistoryPage)

public:
    explicit HistoryPage(HistoryEnvironment environment);

    // Number of dictations that matched the last finished search.
    std::size_t matchCount() const { return matches_.size(); }
    // True if no search is running and every row is filled.
    bool isComplete() const { return !searching_ && !filling_.isActive(); }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    static constexpr std::size_t pageSize = 50;

    // An entry of the list: a heading, or a record if the heading is empty.
    struct Item {
        QString heading;
        DictationRecord record;
        HistoryRow::Place place;
    };

    void buildHeader();
    void follow();
    void showNotes();
    void queryChanged();
    void search();
    Task<void> find(std::string query, std::stop_token stop);
    void display(HistoryMatches matches);
    void showCount();
    void rebuild();
    void fill();
    void place(const Item& item);
    HistoryRow* nextRow();
    HistoryRow* visibleRow(const Uuid& id);
    void hideUnused();
    void copy(const DictationRecord& record);
    void confirmDeletion(const DictationRecord& record);
    void expand(const DictationRecord& record, bool expanded);

    HistoryEnvironment environment_;
    HistorySearch search_;
    HistoryRow::Actions actions_;

    std::size_t visibleCount_ = pageSize;
    std::optional<Uuid> deletionID_;  // awaits confirmation
    std::optional<Uuid> copiedID_;
    std::set<Uuid> expanded_;

    HistoryMatches matches_;
    std::optional<std::uint64_t> shownGeneration_;  // of the store's records
    bool seen_ = false;
    bool searching_ = false;

    std::vector<Item> items_;
    std::size_t placed_ = 0;                // how many of them are in the list
    std::optional<LocaleFormats> formats_;  // of what is shown
    // Pools of widgets, top to bottom (also the tab order). The first used… ones are shown.
    std::vector<HistoryRow*> rows_;
    std::size_t usedRows_ = 0;
    std::vector<QLabel*> headings_;
    std::size_t usedHeadings_ = 0;
    QBasicTimer filling_;

    ProblemNote* problem_;
    QLabel* paused_;
    QLineEdit* query_;
    QPushButton* clear_;
    QLabel* count_;
    RowList* list_;
    QWidget* empty_;
    QLabel* emptyTitle_;
    QLabel* emptySubtitle_;
    QPushButton* more_;

    Timer copiedTimer_;
    Subscription changes_;
    Subscription newDay_;
    TaskHandle finding_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
