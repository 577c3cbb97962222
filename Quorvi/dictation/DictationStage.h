#pragma once

#include "QuorviCore/messages/Message.h"

namespace quorvi {

// The stage of a dictation. In the last four and in `idle` the program waits for the user.
enum class DictationStage {
    idle,
    recording,
    transcribing,
    inserting,
    success,
    clipboard,
    failure,
    learned,
};

Message title(DictationStage stage);

// The program is working and the shortcut does nothing.
constexpr bool isBusy(DictationStage stage) {
    return stage == DictationStage::transcribing || stage == DictationStage::inserting;
}

// A dictation is under way.
constexpr bool isActive(DictationStage stage) {
    return stage == DictationStage::recording || isBusy(stage);
}

}  // namespace quorvi
