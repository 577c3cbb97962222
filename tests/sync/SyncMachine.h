#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "tests/fakes/FakeJournalFiles.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/TestFolder.h"
#include "tests/support/cloud/SyncedProgram.h"

namespace quorvi::test {

using namespace std::chrono_literals;

// A base class, so that it is constructed before the fakes that use it.
struct MachineTime {
    SkewedScheduler scheduler;
};

// One of the user's machines: stores, application model and synchronisation on fakes. Its files and
// preferences outlive the program.
class SyncMachine : private MachineTime, public FakeDesktop, public SyncedProgram {
public:
    SyncMachine(VirtualScheduler& time, CloudDatabase& database)
        : SyncMachine(time, database, time, nullptr) {}
    // In real time, with background work on an executor; `fakes` is for the fakes that are not
    // used.
    SyncMachine(Scheduler& time, CloudDatabase& database, VirtualScheduler& fakes,
                Executor* background)
        : MachineTime{SkewedScheduler(time)},
          FakeDesktop(MachineTime::scheduler, fakes),
          cloud(&database),
          executor(background ? *background : turns) {
        preferences.setBoolean("tarnelCorrectionsSeeded", true);
        preferences.setBytes("savedTextCorrections", bytesOf("[]"));
    }
    ~SyncMachine() { kill(); }

    void start() {
        SyncedProgram::start({*this, scheduler, preferences, files, journals, "history.json",
                              archiveFile, executor, executor, hasCloud ? cloud : nullptr,
                              wholeUpTo, chosen, address});
    }

    void dictate(const std::string& text, double daysAgo = 0) {
        history->record(text, 2, "Editor", "el",
                        DictationCostEstimate::of(TranscriptionModel::transcribe),
                        {scheduler.date().secondsSinceReferenceDate - daysAgo * 86400});
    }
    // The texts of the history, newest first; "-" for a dropped text.
    std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (const auto& record : history->records())
            all.push_back(record.text ? record.text->string() : "-");
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
    CloudDatabase* cloud;
    std::string address = "a cloud";
    bool hasCloud = true;  // false: the address of the cloud is invalid
    TurnExecutor turns{scheduler};
    Executor& executor;
    FakeJournalFiles journals;
    std::size_t wholeUpTo = 4 << 20;
    std::vector<std::string_view> chosen;  // settings that the launch sets
};

}  // namespace quorvi::test
