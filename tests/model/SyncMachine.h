#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Quorvi/sync/AccountSync.h"
#include "tests/fakes/FakeDesktop.h"
#include "tests/fakes/FakeJournalFiles.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/TestFolder.h"

namespace quorvi::test {

using namespace std::chrono_literals;

// Time as one machine sees it, whose own clock may be wrong.
class SkewedScheduler : public Scheduler {
public:
    explicit SkewedScheduler(Scheduler& right) : right_(right) {}
    TimePoint now() const override { return right_.now(); }
    Date date() const override { return {right_.date().secondsSinceReferenceDate + skew}; }
    void post(std::function<void()> work) override { right_.post(std::move(work)); }
    Timer after(Duration delay, std::function<void()> work) override {
        return right_.after(delay, std::move(work));
    }
    Timer every(Duration period, std::function<void()> work) override {
        return right_.every(period, std::move(work));
    }

    double skew = 0;  // seconds

private:
    Scheduler& right_;
};

// Made before the fakes that look at it.
struct MachineTime {
    SkewedScheduler scheduler;
};

// One of the user's machines: the stores, the controller and the synchronisation on fakes, with
// files and preferences that outlive the program.
class SyncMachine : private MachineTime, public FakeDesktop {
public:
    SyncMachine(VirtualScheduler& time, CloudDatabase& database)
        : SyncMachine(time, database, time, nullptr) {}
    // In real time, with background work on an executor; `fakes` is for what is not looked at.
    SyncMachine(Scheduler& time, CloudDatabase& database, VirtualScheduler& fakes,
                Executor* background)
        : MachineTime{SkewedScheduler(time)},
          FakeDesktop(MachineTime::scheduler, fakes),
          cloud(database),
          executor(background ? *background : turns) {
        preferences.setBoolean("tarnelCorrectionsSeeded", true);
        preferences.setBytes("savedTextCorrections", bytesOf("[]"));
    }
    ~SyncMachine() { kill(); }

    void start() {
        history = std::make_unique<HistoryStore>(HistoryStore::Environment{
            preferences, files, "history.json", executor, scheduler, pasteboard,
            [this] { return calendar; }});
        corrections = std::make_unique<CorrectionStore>(preferences, scheduler);
        model = std::make_unique<AppModel>(environment(
            scheduler, executor, *history, *corrections,
            [this]() -> AccountSyncing& { return *sync; }, folder.path()));
        sync = std::make_unique<AccountSync>(AccountSync::Environment{
            *model, *history, *corrections, preferences, scheduler, cloud,
            {files, journals, archiveFile, executor, scheduler, wholeUpTo}, chosen});
        preferences.setBoolean("hasLaunchedQuorvi", true);
    }
    void quit() {
        model->shutdown();
        kill();
    }
    // As the process does: nothing is finished.
    void kill() {
        sync.reset();
        model.reset();
        corrections.reset();
        history.reset();
    }
    bool isRunning() const { return sync != nullptr; }

    void dictate(const std::string& text, double daysAgo = 0) {
        history->record(text, 2, "Editor", "el", TranscriptionModel::transcribe,
                        {scheduler.date().secondsSinceReferenceDate - daysAgo * 86400});
    }
    // Texts of the history, newest first; "-" where it is gone.
    std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (const auto& record : history->records())
            all.push_back(record.text ? record.text->string() : "-");
        return all;
    }
    // Rules in order, as "phrase>replacement".
    std::vector<std::string> rules() const {
        std::vector<std::string> all;
        for (const auto& rule : corrections->rules().rules())
            all.push_back(rule.original + ">" + rule.replacement);
        return all;
    }
    // All values by id, in the bytes in which they travel.
    std::map<std::string, std::string> values() const {
        std::map<std::string, std::string> all;
        const LocalSnapshot now(history->records(), corrections->rules(), model->syncSettings());
        for (const auto& [id, payload] : now.payloads())
            all.emplace(id.string(), payload.string());
        return all;
    }
    std::int64_t diagnostic(const std::string& key) const {
        const auto& all = sync->archive()->state().diagnostics;
        if (!all) return 0;
        const auto found = all->find(key);
        return found == all->end() ? 0 : found->second;
    }

    static constexpr auto archiveFile = "account-sync.json";

    using MachineTime::scheduler;
    const TestFolder folder;
    CloudDatabase& cloud;
    TurnExecutor turns{scheduler};
    Executor& executor;
    FakeJournalFiles journals;
    std::size_t wholeUpTo = 4 << 20;
    std::vector<std::string_view> chosen;  // settings that the launch sets
    std::unique_ptr<HistoryStore> history;
    std::unique_ptr<CorrectionStore> corrections;
    std::unique_ptr<AppModel> model;
    std::unique_ptr<AccountSync> sync;
};

}  // namespace quorvi::test
