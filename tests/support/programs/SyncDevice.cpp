// One of a user's machines as a process: the real stores, synchronisation and cloud on real files,
// with fast time. A test sends it commands and kills it.
//
// Commands are lines: "start FOLDER CLOUD SKEW SEED", "edit SEED", "away", "back", "switch",
// "settle", "round", "values", "stop". So are answers: "tried …" before an edit, "kept …" once it
// is on the disk, "round" when a pass has ended and nothing is pending, "value …" for each value
// and "values" after them, "stopped".

#include <unistd.h>

#include <cstdio>
#include <functional>
#include <iostream>
#include <sstream>
#include <thread>

#include "Quorvi/platform/linux/folder/FolderCloudDatabase.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/PosixJournalFiles.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/postgres/PostgresCloudDatabase.h"
#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"
#include "tests/support/cloud/SyncEdits.h"
#include "tests/support/cloud/UnreliableCloud.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

// One second of the program's time takes 20 ms.
constexpr int speed = 50;

// Files on a disk that is slow at times, so that simultaneous writes end in any order.
class SlowFiles : public FileStore {
public:
    explicit SlowFiles(std::uint64_t seed) : random_(seed) {}
    std::optional<std::string> read(const std::filesystem::path& file) override {
        return files_.read(file);
    }
    void replace(const std::filesystem::path& file, std::span<const std::string_view> parts,
                 const std::filesystem::path& previous = {}) override {
        std::this_thread::sleep_for(std::chrono::microseconds(pause()));
        files_.replace(file, parts, previous);
    }

private:
    std::uint64_t pause() {
        std::lock_guard lock(mutex_);
        return random_() % 4 ? 0 : random_() % 8000;
    }

    PosixFileStore files_;
    std::mutex mutex_;
    std::mt19937_64 random_;
};

std::unique_ptr<CloudDatabase> openCloud(const std::string& address, LoopScheduler& loop,
                                         Executor& executor, const std::filesystem::path& folder) {
    if (!address.starts_with("folder:"))
        return std::make_unique<PostgresCloudDatabase>(
            loop, address, [](std::stop_token) { return Secret(std::string_view("pass word")); });
    return std::make_unique<FolderCloudDatabase>(
        loop, executor,
        FolderCloudDatabase::Place{address.substr(address.find(':') + 1), folder / "cloud-device"});
}

// One run of the program with everything it uses.
struct Run {
    Run(LoopScheduler& loop, const std::filesystem::path& folder, const std::string& address,
        double skew, std::uint64_t seed)
        : clock(loop, skew, speed),
          desktop(clock, unused),
          files(seed),
          preferences(files, folder / "preferences.plist", preferencesDisk, clock),
          real(openCloud(address, loop, cloudDisk, folder)),
          cloud(*real, seed) {
        program.start({desktop,
                       clock,
                       preferences,
                       files,
                       journals,
                       folder / "history.json",
                       folder / "account-sync.json",
                       historyDisk,
                       syncDisk,
                       &cloud,
                       seed % 2 ? 4 << 20 : std::size_t{2000},
                       {}});
    }
    ~Run() {
        program.quit();
        preferences.flush();
    }

    SkewedScheduler clock;
    VirtualScheduler unused;
    FakeDesktop desktop;
    SlowFiles files;
    PosixJournalFiles journals;
    // Destroyed in the order in which tellWhenKept() uses them.
    SerialExecutor cloudDisk{"cloud"}, syncDisk{"sync"}, preferencesDisk{"preferences"},
        historyDisk{"history"};
    PropertyListPreferences preferences;
    std::unique_ptr<CloudDatabase> real;
    UnreliableCloud cloud;
    SyncedProgram program;
};

void say(const std::string& line) {
    const auto all = line + "\n";
    if (::write(STDOUT_FILENO, all.data(), all.size()) < 0) _exit(1);
}

void say(const char* what, const SyncEdit& edit) {
    std::ostringstream line;
    line << what << ' ' << static_cast<int>(edit.kind) << ' ' << asWord(edit.id) << ' '
         << asWord(edit.value) << ' ' << edit.revision << ' ' << asWord(edit.device);
    say(line.str());
}

class Device {
public:
    void obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        if (command == "start") {
            std::string folder, address;
            double skew = 0;
            std::uint64_t seed = 0;
            words >> folder >> address >> skew >> seed;
            run_ = std::make_unique<Run>(loop, folder, address, skew, seed);
        } else if (command == "edit") {
            std::uint64_t seed = 0;
            words >> seed;
            edit(seed);
        } else if (command == "away" || command == "back") {
            run_->cloud.isAway = command == "away";
        } else if (command == "switch") {
            sync().setEnabled(!sync().enabled());
        } else if (command == "settle") {
            run_->cloud.isAway = run_->cloud.isBad = false;
            sync().setEnabled(true);
        } else if (command == "round") {
            lastSynced_ = sync().lastSynced();
            inRound_ = true;
            tries_ = 0;
            sync().syncNow();
        } else if (command == "values") {
            for (const auto& [id, payload] : run_->program.values())
                say("value " + asWord(id) + ' ' + asWord(payload));
            for (const auto& rule : run_->program.rules()) say("rule " + asWord(rule));
            say("values");
        } else if (command == "stop") {
            waiting_.clear();
            inRound_ = false;
            run_.reset();
            say("stopped");
        }
    }

    // Called after each turn.
    void look() {
        if (!run_) return;
        for (const auto& edit : waiting_.takenIn(run_->program)) tellWhenKept(edit);
        if (!inRound_ || sync().working()) return;
        // A pass may end while the stores are still being read or written.
        const bool isApplied = !run_->program.history->isLoading() && sync().archive() &&
                               sync().archive()->ledger().differences().empty();
        if (isApplied && sync().lastSynced() != lastSynced_ && sync().pendingCount() == 0 &&
            sync().status() == say::syncUpToDate()) {
            inRound_ = false;
            say("round");
        }
    }
    // Called now and then, since the last request may have come at a bad moment.
    void tryAgain() {
        if (!run_ || !inRound_) return;
        sync().syncNow();
        if (++tries_ == 400)
            say("stuck " + std::to_string(sync().pendingCount()) + " pending, " +
                std::to_string(sync().archive() ? sync().archive()->ledger().differences().size()
                                                : 0) +
                " not applied: " + sync().status().english());
    }

    LoopScheduler loop;

private:
    AccountSync& sync() { return *run_->program.sync; }

    void edit(std::uint64_t seed) {
        SyncEditor editor(run_->program, run_->clock, seed,
                          [](const SyncEdit& edit) { say("tried", edit); });
        for (auto& one : editor.edit()) waiting_.add(std::move(one), run_->program);
    }

    // Reports an edit in the ledger once all writes requested so far are on the disk.
    void tellWhenKept(const SyncEdit& edit) {
        auto& run = *run_;
        if (run.program.history->persistenceError() || run.preferences.persistenceError()) return;
        run.historyDisk.run([&run, edit] {
            run.preferencesDisk.run(
                [&run, edit] { run.syncDisk.run([edit] { say("kept", edit); }); });
        });
    }

    std::unique_ptr<Run> run_;
    WaitingEdits waiting_;
    bool inRound_ = false;
    int tries_ = 0;
    std::optional<Date> lastSynced_;
};

}  // namespace
}  // namespace quorvi::test

int main() {
    quorvi::test::Device device;
    std::thread reader([&device] {
        for (std::string line; std::getline(std::cin, line);)
            device.loop.post([&device, line] { device.obey(line); });
        _exit(0);
    });
    const auto again = device.loop.every(std::chrono::milliseconds(50), [&] { device.tryAgain(); });
    for (;;)
        device.loop.runUntil(
            [&] {
                device.look();
                return false;
            },
            std::chrono::hours(1));
}
