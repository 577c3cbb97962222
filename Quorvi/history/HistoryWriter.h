#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "Quorvi/history/HistoryFile.h"
#include "QuorviCore/async/Executor.h"

namespace quorvi {

// Writes snapshots of the history in the background, each as a whole and one at a time. A snapshot
// that a newer one overtakes before its turn is not written. save() and flush() belong to the main
// thread. Jobs that are left when the writer is destroyed are still done.
class HistoryWriter {
public:
    // Called on the thread that wrote, with the number of the snapshot.
    using Outcome = std::function<void(std::uint64_t revision, bool saved)>;

    HistoryWriter(HistoryFile file, Executor& executor, Outcome outcome);

    void save(DictationRecords records, std::uint64_t revision);

    // Blocks until the last snapshot is on the disk, or has failed. Writes it here when the
    // executor has not come to it.
    void flush();
    // The same for any thread, also after the writer is gone; false when it has failed.
    std::function<bool()> flusher() const;

private:
    struct Pending {
        DictationRecords records;
        std::uint64_t revision;
    };
    struct State {
        State(HistoryFile f, Outcome o) : file(std::move(f)), outcome(std::move(o)) {}

        bool writePending();

        const HistoryFile file;
        const Outcome outcome;
        std::mutex writing;  // held while the file is written
        bool isKept = true;  // the last snapshot that was taken from `pending`
        std::mutex mutex;    // guards `pending` only
        std::optional<Pending> pending;
    };

    Executor& executor_;
    std::shared_ptr<State> state_;
};

}  // namespace quorvi
