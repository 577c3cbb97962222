#include "Quorvi/history/HistoryWriter.h"

#include <exception>
#include <utility>

namespace quorvi {

HistoryWriter::HistoryWriter(HistoryFile file, Executor& executor, Outcome outcome)
    : executor_(executor), state_(std::make_shared<State>(std::move(file), std::move(outcome))) {}

void HistoryWriter::save(DictationRecords records, std::uint64_t revision) {
    std::optional<Pending> overtaken = Pending{std::move(records), revision};
    {
        std::lock_guard lock(state_->mutex);
        std::swap(state_->pending, overtaken);
    }
    // A job that finds nothing pending, since an earlier one has written it, does nothing. What was
    // overtaken is freed there too.
    executor_.run([state = state_, overtaken = std::move(overtaken)] { state->writePending(); });
}

void HistoryWriter::flush() {
    state_->writePending();
}

std::function<bool()> HistoryWriter::flusher() const {
    return [state = state_] { return state->writePending(); };
}

bool HistoryWriter::State::writePending() {
    std::lock_guard lock(writing);
    std::optional<Pending> taken;
    {
        std::lock_guard guard(mutex);
        taken = std::exchange(pending, std::nullopt);
    }
    if (!taken) return isKept;
    try {
        file.save(taken->records);
        isKept = true;
    } catch (const std::exception&) {
        isKept = false;
    }
    outcome(taken->revision, isKept);
    return isKept;
}

}  // namespace quorvi
