// Synchronisation end to end through a shared folder: a machine with 200,000 dictations joins, then
// an empty one. Measures the main thread's work, and the time of an edit from one machine to the
// other.

#include <time.h>

#include "Quorvi/platform/linux/folder/FolderCloudDatabase.h"
#include "Quorvi/platform/linux/posix/ColdFile.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "bench/Figure.h"
#include "tests/support/reference/GeneratedHistory.h"
#include "tests/sync/SyncMachine.h"

namespace quorvi::bench {
namespace {

using namespace std::chrono_literals;
using test::SyncMachine;

constexpr std::size_t dictations = 200'000;
constexpr int edits = 5;

// Processor time of this thread.
double busyMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

struct Side {
    Side(LoopScheduler& loop, const std::filesystem::path& folder)
        : cloud(loop, cloudExecutor, {folder, own.path() / "device"}),
          machine(loop, cloud, unused, &background) {}

    test::TestFolder own;
    test::VirtualScheduler unused;
    SerialExecutor cloudExecutor{"cloud"};
    SerialExecutor background{"background"};
    FolderCloudDatabase cloud;
    SyncMachine machine;
};

class Bench {
public:
    void run() {
        auto& first = first_.machine;
        first.files.files["history.json"] = document();
        first.preferences.setInteger("transcriptRetention", 0);
        first.start();
        until([&] { return isUpToDate(first) && !first.history->isLoading(); });
        // Its remaining writes must not count for the other machine.
        first.quit();
        first.start();
        until([&] { return isUpToDate(first) && !first.history->isLoading(); });

        auto& second = second_.machine;
        second.preferences.setInteger("transcriptRetention", 0);
        second.start();
        until([&] {
            return second.sync->archive() && second.sync->archive()->state().initialFetchComplete;
        });
        // From the last fetched item to the complete history.
        const auto start = millisecondsNow();
        until([&] { return second.history->records().size() == dictations; });
        figure("sync_apply", millisecondsNow() - start, "ms");
        figure("sync_apply_longest_turn", longestTurn_, "ms");
        until([&] { return isUpToDate(second); });

        std::vector<double> times;
        for (int i = 0; i < edits; ++i) {
            loop_.runFor(3s);
            first.dictate("edit number " + std::to_string(i));
            const auto made = millisecondsNow();
            until([&] {
                return second.history->records().size() ==
                       dictations + 1 + static_cast<std::size_t>(i);
            });
            times.push_back(millisecondsNow() - made);
        }
        figure("edit_to_second_device", median(times), "ms");
        first.quit();
        second.quit();
    }

private:
    static std::string document() {
        HistoryArchiveEncoder encoder(DictationRecords(test::GeneratedHistory(dictations).take()));
        std::string all;
        for (auto piece = encoder.next(); !piece.empty(); piece = encoder.next()) all += piece;
        return all;
    }
    static bool isUpToDate(const SyncMachine& machine) {
        return machine.sync->status() == say::syncUpToDate() && machine.sync->pendingCount() == 0;
    }
    void until(const std::function<bool()>& done) {
        longestTurn_ = 0;
        busy_ = busyMilliseconds();
        const bool ended = loop_.runUntil(
            [&] {
                const auto now = busyMilliseconds();
                longestTurn_ = std::max(longestTurn_, now - busy_);
                const bool is = done();
                busy_ = busyMilliseconds();
                return is;
            },
            5min);
        if (!ended)
            throw std::runtime_error("it never ended: " + first_.machine.sync->status().english());
    }

    LoopScheduler loop_;
    test::TestFolder shared_;
    Side first_{loop_, shared_.path() / "cloud"};
    Side second_{loop_, shared_.path() / "cloud"};
    double longestTurn_ = 0, busy_ = 0;
};

}  // namespace
}  // namespace quorvi::bench

int main() {
    const quorvi::test::TestFolder folder;
    quorvi::ColdMemory::use(*new quorvi::ColdFile(folder.path()));
    quorvi::bench::Bench().run();
}
