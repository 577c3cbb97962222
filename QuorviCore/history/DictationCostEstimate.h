#pragma once

#include "QuorviCore/base/SharedString.h"
#include "QuorviCore/transcription/TranscriptionOptions.h"

namespace quorvi {

// The price of a dictation, stored with it so that a later price list does not change past costs.
struct DictationCostEstimate {
    SharedString modelID;      // raw value of the TranscriptionModel used
    double usdPerMinute = 0;   // of audio
    SharedString pricingDate;  // of the price list: year-month-day

    // Returns the current price of a model.
    static DictationCostEstimate of(TranscriptionModel model);
    // Of a service whose price is not known. `model` is its model, or offlineModel.
    static DictationCostEstimate none(std::string_view model);
    static constexpr std::string_view offlineModel = "offline";

    bool isKnown() const { return usdPerMinute > 0; }

    // Returns the unrounded cost of a duration; 0 if the duration or the rate is invalid.
    double usd(double seconds) const;

    bool operator==(const DictationCostEstimate&) const = default;
};

}  // namespace quorvi

template <>
struct std::hash<quorvi::DictationCostEstimate> {
    std::size_t operator()(const quorvi::DictationCostEstimate& estimate) const noexcept;
};
