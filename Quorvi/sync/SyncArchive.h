#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "Quorvi/platform/FileStore.h"
#include "Quorvi/platform/JournalFile.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/sync/LocalSnapshot.h"
#include "QuorviCore/sync/SyncDelta.h"
#include "QuorviCore/sync/SyncState.h"

namespace quorvi {

class SyncArchiveWriter;

// The state of synchronisation and its file, a JSON document. A small document is written as a
// whole by each persist. Changes of a large one are appended to a journal beside it, and the
// document is rewritten when the program is idle. The state of the last persist that reported
// success survives a crash of the process or the machine.
//
// Main thread; encoding and the disk belong to the executor, which has its own copy of the state.
// inBackground() gives work on the executor access to that copy.
class SyncArchive {
public:
    // Everything in it outlives the archive.
    struct Environment {
        FileStore& files;
        JournalFiles& journals;
        std::filesystem::path path;  // of the document; the journal is beside it
        Executor& executor;          // runs one job at a time
        Scheduler& scheduler;
        // The size in bytes up to which the document is written as a whole.
        std::size_t wholeUpTo = 4 << 20;
        // Writes the stores whose values the state refers to. Called before each write, on the
        // writing thread; if it returns false, nothing is written. May be called after its owner is
        // gone.
        std::function<bool()> flushStores = {};
    };

    // Reads the document and the journal on the executor; without a document the state is empty.
    // Throws a std::exception, and leaves the files alone, if they can't be read or parsed or if
    // another process has them open.
    static Task<std::unique_ptr<SyncArchive>> open(Environment environment,
                                                   std::stop_token stop = {});
    // Waits for the write under way and closes the files. Changes that were not persisted may be
    // lost.
    ~SyncArchive();
    SyncArchive(const SyncArchive&) = delete;
    SyncArchive& operator=(const SyncArchive&) = delete;

    const SyncState& state() const { return state_; }
    const SyncLedger& ledger() const { return state_.ledger; }

    // As in SyncLedger; `pending` is left alone. A thousand changes take about a millisecond, so
    // capture many in portions.
    std::vector<SharedString> capture(std::span<const LocalChange> changes, bool seed, Date now);
    const SyncItem& merge(const SyncItem& incoming);
    void adopt(const LocalChange& value);
    void rebaseline();

    void setOwner(SharedString owner);
    void setCloud(SharedString address);
    // Forgets what was exchanged with the cloud, but not the owner: all items are pending then, and
    // everything has to be fetched. `ids` are those of all items, see idsInBackground().
    void beginAnew(SharedStringSet ids);
    void setEngineState(std::optional<SharedString> state);
    void setRecord(const SharedString& id, SharedString record);
    void removeRecord(const SharedString& id);
    void addPending(const SharedString& id);
    void removePending(const SharedString& id);
    void setInitialFetchComplete(bool complete);
    void setLastSynced(Date date);
    // Whether anything but the time of the last pass is unsaved.
    bool hasChanges() const { return changed_ || !touched_.empty() || !gathered_.empty(); }
    void count(std::string_view event, std::int64_t times = 1);

    // Writes the present state. `done` is called on the main thread, in a later turn, when it is on
    // the disk or has failed; not after the archive is destroyed. Calls made during a write share
    // the next one. After a failure the next call writes everything again.
    void persist(std::function<void(bool saved)> done);
    // The same as a coroutine.
    Task<bool> persist(std::stop_token stop = {});
    // Writes the present state as a whole document, blocking. For the end of the program. Returns
    // false if that failed.
    bool flush();
    // Writes the present state and closes the files, on the executor: another archive that is
    // opened on it later reads them. Nothing else may be called after it.
    void closeInBackground();

    // Runs `work(const SyncState&)` on the executor with the state as of this call, and resumes
    // with its result. `work` must not keep a reference to the state.
    template <class F>
    Task<std::invoke_result_t<F, const SyncState&>> inBackground(F work,
                                                                 std::stop_token stop = {}) {
        using T = std::invoke_result_t<F, const SyncState&>;
        handOverAll();
        return quorvi::inBackground(
            environment_.executor, environment_.scheduler,
            [writer = writer_, work = std::move(work)]() mutable {
                std::optional<T> result;
                look(*writer, [&](const SyncState& state) { result.emplace(work(state)); });
                return *std::move(result);
            },
            std::move(stop));
    }

    // Returns the ids of all items.
    Task<SharedStringSet> idsInBackground(std::stop_token stop = {});

    // Computes on the executor what differs between the baseline and these local values.
    Task<LocalChanges> changesOf(LocalSnapshot now, std::stop_token stop = {});

private:
    SyncArchive(Environment environment, std::shared_ptr<SyncArchiveWriter> writer,
                SyncState state);

    void touch(const SharedString& id);
    void gather();
    void handOverAll();
    void renewDocument();
    static void look(SyncArchiveWriter& writer, const std::function<void(const SyncState&)>& work);

    Environment environment_;
    std::shared_ptr<SyncArchiveWriter> writer_;
    SyncState state_;

    // Changes since the last gather(), and gathered changes that the executor's copy lacks.
    SharedStringSet touched_;
    bool changed_ = false;
    bool timeChanged_ = false;  // of the last pass
    bool rebaselined_ = false;
    bool begunAnew_ = false;
    bool engineStateChanged_ = false;
    std::vector<SyncDelta> gathered_;
    Timer idle_;
    Lifetime lifetime_;
};

}  // namespace quorvi
