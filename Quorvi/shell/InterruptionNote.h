#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "Quorvi/dictation/AppModel.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

// Keeps a note on the disk of the dictation that is under way, so that the start after a crash can
// say what was interrupted and where its text is: the stage, and the record that holds the text
// once there is one. Never the text. There is no note between dictations. Main thread; the disk is
// touched on the executor only.
class InterruptionNote {
public:
    // Reads what a run before has left, and has the model tell it. All of it outlives the note.
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
    std::string recordBefore_;         // the newest one when the dictation began
    std::optional<std::string> left_;  // what was found
    Subscription changes_;
    Subscription historyChanges_;
    TaskScope tasks_;
};

}  // namespace quorvi
