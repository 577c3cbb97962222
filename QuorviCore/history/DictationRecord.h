#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/base/SharedString.h"
#include "QuorviCore/history/DictationCostEstimate.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

// One completed dictation. Statistics count it even if its text has been dropped. Copies share
// their texts and are cheap.
struct DictationRecord {
    Uuid id = Uuid::random();
    Date date;                         // when the dictation ended
    std::optional<SharedString> text;  // after the correction rules; absent if not kept
    std::int64_t wordCount = 0;        // counted before the text is dropped
    double audioSeconds = 0;           // length of the recording
    SharedString appName;              // as displayed; may be empty
    SharedString language;             // raw value of the DictationLanguage used
    // Absent in records that are older than cost estimates.
    std::optional<DictationCostEstimate> costEstimate;

    // Makes a record of `text`, whose words are counted even if it is not kept. An invalid duration
    // becomes 0.
    static DictationRecord make(Uuid id, Date date, std::string_view text, double audioSeconds,
                                std::string_view appName, std::string_view language, bool keepText,
                                std::optional<DictationCostEstimate> costEstimate);

    // Number of words: runs of letters, numbers and apostrophes that hold a letter or a number.
    static std::int64_t countWords(std::string_view text);

    // Whether the text or the application's name contains the query, ignoring case and diacritics.
    // White space or combining marks alone match everything.
    bool matches(std::string_view query) const;

    // Returns the duration for sums: 0 if it is invalid.
    double countedSeconds() const;

    bool operator==(const DictationRecord&) const = default;
};

}  // namespace quorvi
