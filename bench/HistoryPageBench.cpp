// The history's pages with ten years of dictations, in a window of the default size: opening them,
// and the interface's work for a keystroke in the search field. The references make all rows at
// once, and search all records at each keystroke.

#include <time.h>

#include <QApplication>
#include <QLineEdit>
#include <cstdio>

#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/shell/QtScheduler.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "Quorvi/ui/design/DesignStyle.h"
#include "Quorvi/ui/history/HistoryPage.h"
#include "Quorvi/ui/insights/InsightsPage.h"
#include "bench/Figure.h"
#include "tests/fakes/FakeClockChanges.h"
#include "tests/fakes/FakePasteboard.h"
#include "tests/support/TestFolder.h"
#include "tests/support/reference/GeneratedHistory.h"

namespace quorvi::bench {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t count = 200'000;
const QSize pageSize(720, 760);

// Processor time of the calling thread, since the machine may be busy.
double threadMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// The work of the interface's thread until a condition is true.
struct Turns {
    double longest = 0;  // one turn of the loop, the longest wait of a keystroke
    double all = 0;

    template <class Work>
    void measure(Work work) {
        const double start = threadMilliseconds();
        work();
        const double took = threadMilliseconds() - start;
        longest = std::max(longest, took);
        all += took;
    }
    template <class Condition>
    void runUntil(Condition holds) {
        while (!holds()) measure([] { QCoreApplication::processEvents(QEventLoop::AllEvents, 0); });
    }
};

class Pages {
public:
    Pages() {
        preferences_.setInteger("transcriptRetention", 0);
        HistoryFile(files_, path_)
            .save(DictationRecords(test::GeneratedHistory(count, scheduler_.date()).take()));
        store_ = std::make_unique<HistoryStore>(
            HistoryStore::Environment{preferences_, files_, path_, executor_, scheduler_,
                                      pasteboard_, [this] { return calendar_.get(); }});
        while (store_->isLoading()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    ~Pages() { store_->flush(); }

    HistoryEnvironment environment() { return {*store_, searches_, scheduler_, calendar_, {}}; }
    const HistoryStore& store() const { return *store_; }

private:
    const test::TestFolder folder_;
    const std::filesystem::path path_ = folder_.path() / "history.json";
    QtScheduler scheduler_;
    SerialExecutor executor_{"history"};
    SerialExecutor searches_{"searches"};
    PosixFileStore files_;
    MemoryPreferences preferences_;
    test::FakePasteboard pasteboard_{scheduler_};
    test::FakeClockChanges clock_;
    SystemCalendar calendar_{clock_, executor_, scheduler_};
    std::unique_ptr<HistoryStore> store_;
};

// Real time to the painted page; further rows follow.
template <class Page>
double open(Pages& pages, Turns& turns) {
    const double start = millisecondsNow();
    double painted = 0;
    std::unique_ptr<Page> page;
    turns.measure([&] {
        page = std::make_unique<Page>(pages.environment());
        page->resize(pageSize);
        page->show();
        page->repaint();
        painted = millisecondsNow() - start;
    });
    turns.runUntil([&] { return page->isComplete(); });
    return painted;
}

void benchOpening(Pages& pages) {
    std::vector<double> history, insights, turns, insightsTurns;
    for (int run = 0; run < 9; ++run) {
        Turns one, other;
        history.push_back(open<HistoryPage>(pages, one));
        insights.push_back(open<InsightsPage>(pages, other));
        turns.push_back(one.longest);
        insightsTurns.push_back(other.longest);
    }
    figure("history_page_open", median(history), "ms");
    figure("history_page_open_longest_turn", median(turns), "ms");
    figure("insights_page_open", median(insights), "ms");
    figure("insights_page_open_longest_turn", median(insightsTurns), "ms");
}

double lookThroughAll(const DictationRecords& records, const std::string& query) {
    const double start = threadMilliseconds();
    std::size_t found = 0;
    for (const auto& record : records) found += record.text && record.matches(query);
    if (found == count + 1) std::puts("");
    return threadMilliseconds() - start;
}

void benchFiltering(Pages& pages) {
    HistoryPage page(pages.environment());
    page.resize(pageSize);
    page.show();
    Turns settling;
    settling.runUntil([&] { return page.isComplete(); });
    auto* query = page.findChild<QLineEdit*>();
    std::vector<double> longest, all, shown, reference;
    for (const char* word : {"quarterly meeting", "συνάντηση", "mail", "zzz", "cafe"}) {
        const auto text = QString::fromUtf8(word);
        for (int length = 1; length <= text.size(); ++length) {
            Turns turns;
            const double start = millisecondsNow();
            turns.measure([&] { query->setText(text.left(length)); });
            turns.runUntil([&] { return page.isComplete(); });
            shown.push_back(millisecondsNow() - start);
            longest.push_back(turns.longest);
            all.push_back(turns.all);
        }
        reference.push_back(lookThroughAll(pages.store().records(), word));
    }
    figure("history_page_filter", percentile(longest, 0.99), "ms", median(reference));
    figure("history_page_filter_median", median(longest), "ms", median(reference));
    figure("history_page_filter_all_turns", median(all), "ms");
    figure("history_page_filter_complete", median(shown), "ms");
}

}  // namespace
}  // namespace quorvi::bench

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    quorvi::installDesign(application);
    quorvi::bench::Pages pages;
    quorvi::bench::benchOpening(pages);
    quorvi::bench::benchFiltering(pages);
    return 0;
}
