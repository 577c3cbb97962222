#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/sync/AccountSync.h"
#include "tests/fakes/FakeDesktop.h"

namespace quorvi::test {

// The time of one machine, whose clock may be wrong and run faster.
class SkewedScheduler : public Scheduler {
public:
    explicit SkewedScheduler(Scheduler& right, double skewSeconds = 0, int speedUp = 1)
        : skew(skewSeconds), right_(right), speed_(speedUp) {}
    TimePoint now() const override { return TimePoint(right_.now().time_since_epoch() * speed_); }
    Date date() const override { return {right_.date().secondsSinceReferenceDate + skew}; }
    void post(std::function<void()> work) override { right_.post(std::move(work)); }
    Timer after(Duration delay, std::function<void()> work) override {
        return right_.after(delay / speed_, std::move(work));
    }
    Timer every(Duration period, std::function<void()> work) override {
        return right_.every(period / speed_, std::move(work));
    }

    double skew;  // seconds

private:
    Scheduler& right_;
    const int speed_;
};

// One run of the parts of the program that take part in synchronisation, on the files, clock and
// cloud of a test.
class SyncedProgram {
public:
    struct Environment {
        FakeDesktop& desktop;  // its state is not used
        Scheduler& scheduler;
        Preferences& preferences;
        FileStore& files;
        JournalFiles& journals;
        std::filesystem::path historyFile, archiveFile;
        Executor& historyDisk;
        Executor& syncDisk;
        CloudDatabase* cloud;  // null: its address is invalid
        std::size_t wholeUpTo;
        std::vector<std::string_view> chosen;  // settings that the launch sets
        std::string address = "a cloud";
    };

    void start(const Environment& e) {
        history = std::make_unique<HistoryStore>(HistoryStore::Environment{
            e.preferences, e.files, e.historyFile, e.historyDisk, e.scheduler, e.desktop.pasteboard,
            [calendar = e.desktop.calendar] { return calendar; }});
        corrections = std::make_unique<CorrectionStore>(e.preferences, e.scheduler);
        model = std::make_unique<AppModel>(e.desktop.environment(
            e.scheduler, e.historyDisk, *history, *corrections,
            [this]() -> SyncControl& { return *sync; }, &e.preferences));
        sync = std::make_unique<AccountSync>(AccountSync::Environment{
            {*history, *corrections, e.preferences,
             [this] { return isActive(model->stage()) || model->isChoosingShortcut(); }},
            e.scheduler,
            e.cloud,
            e.address,
            {e.files, e.journals, e.archiveFile, e.syncDisk, e.scheduler, e.wholeUpTo},
            e.chosen});
        e.preferences.setBoolean("hasLaunchedQuorvi", true);
    }
    void quit() {
        model->shutdown();
        kill();
    }
    // As if the process was killed: nothing is finished.
    void kill() {
        sync.reset();
        model.reset();
        corrections.reset();
        history.reset();
    }
    bool isRunning() const { return sync != nullptr; }

    // Rules in order, as "phrase>replacement".
    std::vector<std::string> rules() const {
        std::vector<std::string> all;
        for (const auto& rule : corrections->rules().rules())
            all.push_back(rule.original + ">" + rule.replacement);
        return all;
    }
    // All values by id, encoded.
    std::map<std::string, std::string> values() const {
        std::map<std::string, std::string> all;
        const LocalSnapshot now(history->records(), corrections->rules(),
                                model->settings().travelling());
        for (const auto& change : now.changesFrom(SyncLedger()))
            all.emplace(change.id.string(), change.payload->string());
        return all;
    }

    std::unique_ptr<HistoryStore> history;
    std::unique_ptr<CorrectionStore> corrections;
    std::unique_ptr<AppModel> model;
    std::unique_ptr<AccountSync> sync;
};

}  // namespace quorvi::test
