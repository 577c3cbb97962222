#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "Quorvi/dictation/AppModel.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

// Keeps a note on disk during a dictation, so that the start after a crash can say what was
// interrupted and where its text is. The note holds the stage and the id of the history record,
// never the text. Main thread; file access on the executor.
class InterruptionNote {
public:
    // Reads the note of a crashed run and reports it through the model. All arguments outlive it.
    InterruptionNote(AppModel& model, HistoryStore& history, Executor& disk, Scheduler& scheduler,
                     std::filesystem::path file);

private:
    void follow();
    Task<void> lookBack(std::stop_token stop);
    void tell();
    bool isInHistory(const std::string& id) const;
    std::string newestRecord() const;

    AppModel& model_;
    HistoryStore& history_;
    Executor& disk_;
    Scheduler& scheduler_;
    const std::filesystem::path file_;
    DictationStage noted_ = DictationStage::idle;
    std::string recordBefore_;         // the newest record when the dictation began
    std::optional<std::string> left_;  // the note of the crashed run
    Subscription changes_;
    Subscription historyChanges_;
    TaskScope tasks_;
};

}  // namespace quorvi
