#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/locale/Calendar.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// How long the texts of dictations are kept.
enum class TranscriptRetention { thirtyDays, ninetyDays, forever };

inline constexpr std::array allTranscriptRetentions{
    TranscriptRetention::thirtyDays, TranscriptRetention::ninetyDays, TranscriptRetention::forever};

// The stored form: the number of days, 0 for ever.
std::int64_t rawValue(TranscriptRetention retention);
std::optional<TranscriptRetention> transcriptRetentionFromRawValue(std::int64_t raw);

Message title(TranscriptRetention retention);

// Returns the records without the text of those that are older than the retention allows. The
// records themselves stay, so that statistics and cost remain complete.
DictationRecords applyingRetention(const DictationRecords& records, TranscriptRetention retention,
                                   Date now, const Calendar& calendar);

}  // namespace quorvi
