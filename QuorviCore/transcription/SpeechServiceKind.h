#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace quorvi {

// Who turns recordings into text. The raw value is stored.
enum class SpeechServiceKind {
    openAI,
    other,    // another service with the same interface
    offline,  // the recogniser on this machine
};

inline constexpr std::array allSpeechServiceKinds{
    SpeechServiceKind::openAI, SpeechServiceKind::other, SpeechServiceKind::offline};

std::string_view rawValue(SpeechServiceKind kind);
std::optional<SpeechServiceKind> speechServiceKindFromRawValue(std::string_view raw);

}  // namespace quorvi
