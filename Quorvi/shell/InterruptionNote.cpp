#include "Quorvi/shell/InterruptionNote.h"

#include <fcntl.h>
#include <unistd.h>

#include <exception>
#include <fstream>
#include <utility>

#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "Quorvi/platform/linux/posix/PrivateFolder.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view recordingNote = "recording";
constexpr std::string_view transcribingNote = "transcribing";
constexpr std::string_view insertingNote = "inserting ";  // and the record's id

// Best effort: errors are ignored. No fsync, since the note need not survive a power failure.
void write(const fs::path& file, const std::string& line) {
    try {
        makePrivateFolder(file.parent_path());
    } catch (const std::exception&) {
        return;
    }
    const Descriptor opened(
        ::open(file.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    // In this order the file holds a complete line at any moment.
    if (!opened || ::pwrite(opened.get(), line.data(), line.size(), 0) < 0) return;
    [[maybe_unused]] const auto cut = ::ftruncate(opened.get(), static_cast<off_t>(line.size()));
}

// Reads and removes the note. Returns an empty string if there is none.
std::string take(const fs::path& file) {
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    ::unlink(file.c_str());
    return line;
}

}  // namespace

InterruptionNote::InterruptionNote(AppModel& model, HistoryStore& history, Executor& disk,
                                   Scheduler& scheduler, fs::path file)
    : model_(model),
      history_(history),
      disk_(disk),
      scheduler_(scheduler),
      file_(std::move(file)),
      tasks_(scheduler) {
    tasks_.start([this](std::stop_token stop) { return lookBack(std::move(stop)); });
    changes_ = model_.onChange([this] { follow(); });
}

void InterruptionNote::follow() {
    const auto stage = isActive(model_.stage()) ? model_.stage() : DictationStage::idle;
    if (stage == std::exchange(noted_, stage)) return;
    std::string line;
    if (stage == DictationStage::recording) {
        recordBefore_ = newestRecord();
        line = recordingNote;
    } else if (stage == DictationStage::transcribing) {
        line = transcribingNote;
    } else if (stage == DictationStage::inserting) {
        const auto record = newestRecord();
        line = std::string(insertingNote) + (record == recordBefore_ ? "" : record);
    } else {
        disk_.run([file = file_] { ::unlink(file.c_str()); });
        return;
    }
    disk_.run([file = file_, line = line + '\n'] { write(file, line); });
}

std::string InterruptionNote::newestRecord() const {
    const auto& records = history_.records();
    return records.empty() ? std::string() : records[0].id.string();
}

Task<void> InterruptionNote::lookBack(std::stop_token stop) {
    auto reading =
        inBackground(disk_, scheduler_, [file = file_] { return take(file); }, std::move(stop));
    left_ = co_await reading;
    if (left_->empty()) co_return;
    historyChanges_ = history_.onChange([this] { tell(); });
    tell();
}

void InterruptionNote::tell() {
    if (!left_ || history_.isLoading()) return;
    const auto note = *std::exchange(left_, std::nullopt);
    historyChanges_ = {};
    if (note.starts_with(insertingNote))
        model_.reportInterruption(isInHistory(note.substr(insertingNote.size()))
                                      ? say::interruptedInsertion()
                                      : say::interruptedInsertionUnkept());
    else
        model_.reportInterruption(note == transcribingNote ? say::interruptedTranscription()
                                                           : say::interruptedRecording());
}

bool InterruptionNote::isInHistory(const std::string& id) const {
    for (const auto& record : history_.records())
        if (record.text && record.id.string() == id) return true;
    return false;
}

}  // namespace quorvi
