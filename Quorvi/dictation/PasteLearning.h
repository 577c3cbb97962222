#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "Quorvi/corrections/CorrectionObserver.h"
#include "Quorvi/corrections/CorrectionStore.h"
#include "Quorvi/input/GlobalHotkey.h"
#include "Quorvi/insertion/TextInsertion.h"

namespace quorvi {

// Connects an insertion with the learning of corrections: what the insertion reports goes to the
// store, and a verified paste is watched for the user's edits. Main thread; owned by the
// controller. Everything that it is made with outlives it.
class PasteLearning {
public:
    PasteLearning(Scheduler& scheduler, Executor& queries, Accessibility& accessibility,
                  const Workspace& workspace, CorrectionStore& store, GlobalHotkey& hotkey);

    // Returns the request of an insertion into that target. A paste is watched only while
    // `isCurrent` returns true.
    TextInsertion::Request request(const InsertionTarget& target,
                                   std::vector<TextCorrection> appliedRules,
                                   std::function<bool()> isCurrent);

    // Ends the watch after a last look at the field.
    void finishWatch() { observer_.stop(true); }
    // Ends the watch; later edits teach nothing.
    void abandonWatch() { observer_.stop(false); }

    // Nothing is watched and no last look is under way.
    bool isIdle() const { return observer_.isIdle(); }

private:
    std::function<std::uint64_t()> inputAfterPaste(const InsertionTarget& target);

    Scheduler& scheduler_;
    CorrectionStore& store_;
    GlobalHotkey& hotkey_;
    CorrectionObserver observer_;
};

}  // namespace quorvi
