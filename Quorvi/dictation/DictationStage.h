#pragma once

#include <string_view>

namespace quorvi {

// Where a dictation stands. The last four stages and `idle` wait for the user's next action.
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

std::string_view title(DictationStage stage);

// The program is working and the shortcut does nothing.
constexpr bool isBusy(DictationStage stage) {
    return stage == DictationStage::transcribing || stage == DictationStage::inserting;
}

// A dictation is under way.
constexpr bool isActive(DictationStage stage) {
    return stage == DictationStage::recording || isBusy(stage);
}

}  // namespace quorvi
