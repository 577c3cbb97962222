#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "QuorviCore/messages/Message.h"

namespace quorvi {

// How the shortcut is used. Stored by its raw value.
enum class DictationMode { hold, toggle };

inline constexpr std::array allDictationModes{DictationMode::hold, DictationMode::toggle};

std::string_view rawValue(DictationMode mode);
Message title(DictationMode mode);
std::optional<DictationMode> dictationModeFromRawValue(std::string_view raw);

enum class DictationAction { none, start, finish };

// What a shortcut press (`down`) or release means for the session. `recording` says that a
// dictation is being recorded, `busy` that one is being transcribed or inserted.
DictationAction dictationAction(DictationMode mode, bool down, bool recording, bool busy);

}  // namespace quorvi
