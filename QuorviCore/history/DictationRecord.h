#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/base/SharedString.h"
#include "QuorviCore/history/DictationCostEstimate.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

// One completed dictation as it is kept. A record whose text is gone still counts in every
// statistic. Copies share their texts, so a record is cheap to copy.
struct DictationRecord {
    Uuid id = Uuid::random();
    Date date;                         // when the dictation was complete
    std::optional<SharedString> text;  // after the correction rules; absent when it is not kept
    std::int64_t wordCount = 0;        // of the text, counted once
    double audioSeconds = 0;           // length of the recording
    SharedString appName;              // as displayed; may be empty
    SharedString language;             // raw value of the DictationLanguage used
    // What the dictation cost; absent in records that are older than the estimates.
    std::optional<DictationCostEstimate> costEstimate;

    // A record of `text`, which counts even when it is not kept. A duration that is no time span is
    // taken for none.
    static DictationRecord make(Uuid id, Date date, std::string_view text, double audioSeconds,
                                std::string_view appName, std::string_view language, bool keepText,
                                std::optional<DictationCostEstimate> costEstimate);

    // Number of words: runs of letters, numbers and apostrophes that hold a letter or a number.
    static std::int64_t countWords(std::string_view text);

    // Whether the text or the application's name holds the query, without regard to case and
    // diacritics. White space alone is found everywhere, and so are combining marks alone.
    bool matches(std::string_view query) const;

    // The duration as it is summed: what is no time span counts as none.
    double countedSeconds() const;

    bool operator==(const DictationRecord&) const = default;
};

}  // namespace quorvi
