#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "QuorviCore/messages/Message.h"

namespace quorvi {

// How the recording sounds are voiced. Stored by its raw value, for the start and for the stop cue.
enum class RecordingSoundStyle { classic, soft, chime, click, silent };

inline constexpr std::array allRecordingSoundStyles{
    RecordingSoundStyle::classic, RecordingSoundStyle::soft, RecordingSoundStyle::chime,
    RecordingSoundStyle::click, RecordingSoundStyle::silent};

std::string_view rawValue(RecordingSoundStyle style);
Message title(RecordingSoundStyle style);
std::optional<RecordingSoundStyle> recordingSoundStyleFromRawValue(std::string_view raw);

}  // namespace quorvi
