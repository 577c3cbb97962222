#pragma once

#include "QuorviCore/base/SharedString.h"
#include "QuorviCore/transcription/TranscriptionOptions.h"

namespace quorvi {

// The price basis of a dictation, kept with it so that a later price list doesn't rewrite the past.
struct DictationCostEstimate {
    SharedString modelID;      // raw value of the TranscriptionModel used
    double usdPerMinute = 0;   // of audio
    SharedString pricingDate;  // of the price list: year-month-day

    // The present price of a model.
    static DictationCostEstimate of(TranscriptionModel model);

    // The cost of a duration: none unless duration and rate make sense. Not rounded.
    double usd(double seconds) const;

    bool operator==(const DictationCostEstimate&) const = default;
};

}  // namespace quorvi

template <>
struct std::hash<quorvi::DictationCostEstimate> {
    std::size_t operator()(const quorvi::DictationCostEstimate& estimate) const noexcept;
};
