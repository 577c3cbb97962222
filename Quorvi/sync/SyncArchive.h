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
#include "QuorviCore/sync/LocalSnapshot.h"
#include "QuorviCore/sync/SyncDelta.h"
#include "QuorviCore/sync/SyncState.h"

namespace quorvi {

class SyncArchiveWriter;

// The synchronisation's state and its file, a JSON document. While the document is small a persist
// writes it as a whole; later a persist appends what changed to a journal beside it, and the
// document is written again when nothing else goes on. Whatever happens to the process or the
// machine, the state of the last persist that was reported as done is there at the next open.
//
// Main thread. Only what changed since the last persist is gathered there; encoding and the disk
// are the executor's. What another thread may look at is a copy of the state that the executor
// keeps (inBackground).
class SyncArchive {
public:
    // All of it outlives the archive.
    struct Environment {
        FileStore& files;
        JournalFiles& journals;
        std::filesystem::path path;  // of the document; the journal is beside it
        Executor& executor;          // runs one job at a time
        Scheduler& scheduler;
        // The size in bytes up to which the document is written as a whole.
        std::size_t wholeUpTo = 4 << 20;
        // Called on the thread that is about to write: brings the values that the state speaks of
        // to the disk first. When it can't, nothing is written. Outlives its owner.
        std::function<bool()> flushStores = {};
    };

    // Reads the document and the journal on the executor; without a document the state is a new
    // one. Throws a std::exception when they can't be read, are not understood, or belong to
    // another running process: they are then left as they are, and there is nothing to persist.
    static Task<std::unique_ptr<SyncArchive>> open(Environment environment,
                                                   std::stop_token stop = {});
    // Waits for what is being written, and lets go of the files; what was not persisted may be
    // lost.
    ~SyncArchive();
    SyncArchive(const SyncArchive&) = delete;
    SyncArchive& operator=(const SyncArchive&) = delete;

    const SyncState& state() const { return state_; }
    const SyncLedger& ledger() const { return state_.ledger; }

    // As in SyncLedger, and none touches `pending`. Many changes are captured in portions, since a
    // thousand take about a millisecond.
    std::vector<SharedString> capture(std::span<const LocalChange> changes, bool seed, Date now);
    const SyncItem& merge(const SyncItem& incoming);
    void adopt(const LocalChange& value);
    void rebaseline();

    void setOwner(SharedString owner);
    void setEngineState(std::optional<SharedString> state);
    void setRecord(const SharedString& id, SharedString record);
    void removeRecord(const SharedString& id);
    void addPending(const SharedString& id);
    void removePending(const SharedString& id);
    void setInitialFetchComplete(bool complete);
    void setLastSynced(Date date);
    // Whether there is more to persist than the time of the last pass.
    bool hasChanges() const { return changed_ || !touched_.empty() || !gathered_.empty(); }
    void count(std::string_view event, std::int64_t times = 1);

    // Has the present state kept. `done` is called on the main thread, in a later turn, once that
    // is on the disk, or has failed; calls that are made meanwhile share one write. After a
    // failure a later call writes everything again. `done` is not called any more once the archive
    // is gone.
    void persist(std::function<void(bool saved)> done);
    // The same to be awaited.
    Task<bool> persist(std::stop_token stop = {});
    // Blocks until the present state is on the disk, the document as a whole. For the end of the
    // program. False when that failed.
    bool flush();

    // Runs `work(const SyncState&)` on the executor, where it sees the present state as of this
    // call, and resumes with its result. `work` must not keep a reference to the state.
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

    // Off the main thread: what differs between the baseline and these local values…
    Task<LocalChanges> changesOf(LocalSnapshot now, std::stop_token stop = {});
    // …and the items that are not deleted, newest first; by id where the stamps are the same.
    Task<std::vector<SyncItem>> liveItemsNewestFirst(std::stop_token stop = {});

private:
    SyncArchive(Environment environment, std::shared_ptr<SyncArchiveWriter> writer,
                SyncState state);

    void touch(const SharedString& id);
    void gather();
    void handOverAll();
    void renewDocument();
    static void look(SyncArchiveWriter& writer, const std::function<void(const SyncState&)>& work);

    struct Alive {};

    Environment environment_;
    std::shared_ptr<SyncArchiveWriter> writer_;
    SyncState state_;

    // What changed since it was gathered last, and what was gathered since the executor's copy got
    // it last.
    SharedStringSet touched_;
    bool changed_ = false;
    bool timeChanged_ = false;  // of the last pass
    bool rebaselined_ = false;
    bool engineStateChanged_ = false;
    std::vector<SyncDelta> gathered_;
    Timer idle_;
    std::shared_ptr<Alive> alive_ = std::make_shared<Alive>();
};

}  // namespace quorvi
