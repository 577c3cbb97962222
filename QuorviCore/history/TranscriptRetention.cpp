#include "QuorviCore/history/TranscriptRetention.h"

namespace quorvi {

std::int64_t rawValue(TranscriptRetention retention) {
    switch (retention) {
        case TranscriptRetention::thirtyDays:
            return 30;
        case TranscriptRetention::ninetyDays:
            return 90;
        case TranscriptRetention::forever:
            return 0;
    }
    return 0;
}

Message title(TranscriptRetention retention) {
    switch (retention) {
        case TranscriptRetention::thirtyDays:
            return say::thirtyDays();
        case TranscriptRetention::ninetyDays:
            return say::ninetyDays();
        case TranscriptRetention::forever:
            return say::untilDeleted();
    }
    return {};
}

std::optional<TranscriptRetention> transcriptRetentionFromRawValue(std::int64_t raw) {
    for (const auto retention : allTranscriptRetentions)
        if (rawValue(retention) == raw) return retention;
    return std::nullopt;
}

DictationRecords applyingRetention(const DictationRecords& records, TranscriptRetention retention,
                                   Date now, const Calendar& calendar) {
    if (retention == TranscriptRetention::forever || records.empty()) return records;
    const auto cutoff = calendar.addingDays(now, -static_cast<int>(rawValue(retention)));
    return cutoff ? records.withoutTextBefore(*cutoff) : records;
}

}  // namespace quorvi
