#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "Quorvi/history/HistoryFile.h"
#include "QuorviCore/async/Executor.h"

namespace quorvi {

// Writes snapshots of the history in the background, one at a time. Skips a snapshot if a newer one
// arrives before its turn. save() and flush() are for the main thread. Scheduled writes still
// happen after the writer is destroyed.
class HistoryWriter {
public:
    // Called on the writing thread with the number of the snapshot.
    using Outcome = std::function<void(std::uint64_t revision, bool saved)>;

    HistoryWriter(HistoryFile file, Executor& executor, Outcome outcome);

    void save(DictationRecords records, std::uint64_t revision);

    // Blocks until the last snapshot is written or has failed. Writes it on the calling thread if
    // the executor has not started.
    void flush();
    // The same for any thread, also after the writer is destroyed; returns false on failure.
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
