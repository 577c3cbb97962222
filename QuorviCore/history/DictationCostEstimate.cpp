#include "QuorviCore/history/DictationCostEstimate.h"

#include <cmath>

namespace quorvi {

namespace {

constexpr auto priceListDate = "2026-09-11";

double usdPerMinuteOf(TranscriptionModel model) {
    switch (model) {
        case TranscriptionModel::transcribe:
            return 0.0045;
        case TranscriptionModel::fourO:
            return 0.006;
        case TranscriptionModel::mini:
            return 0.003;
    }
    return 0;
}

DictationCostEstimate makeEstimate(TranscriptionModel model) {
    return {rawValue(model), usdPerMinuteOf(model), priceListDate};
}

}  // namespace

DictationCostEstimate DictationCostEstimate::of(TranscriptionModel model) {
    // Static, so that all records of a model share its strings.
    static const DictationCostEstimate transcribe = makeEstimate(TranscriptionModel::transcribe);
    static const DictationCostEstimate fourO = makeEstimate(TranscriptionModel::fourO);
    static const DictationCostEstimate mini = makeEstimate(TranscriptionModel::mini);
    switch (model) {
        case TranscriptionModel::transcribe:
            return transcribe;
        case TranscriptionModel::fourO:
            return fourO;
        case TranscriptionModel::mini:
            return mini;
    }
    return transcribe;
}

DictationCostEstimate DictationCostEstimate::none(std::string_view model) {
    return {model, 0, priceListDate};
}

double DictationCostEstimate::usd(double seconds) const {
    if (!std::isfinite(seconds) || seconds <= 0) return 0;
    if (!std::isfinite(usdPerMinute) || usdPerMinute < 0) return 0;
    return seconds / 60 * usdPerMinute;
}

}  // namespace quorvi

std::size_t std::hash<quorvi::DictationCostEstimate>::operator()(
    const quorvi::DictationCostEstimate& estimate) const noexcept {
    const std::hash<quorvi::SharedString> ofText;
    // 0 and -0 are equal, so they must hash alike.
    const auto ofRate = std::hash<double>()(estimate.usdPerMinute + 0.0);
    return (ofText(estimate.modelID) * 31 + ofRate) * 31 + ofText(estimate.pricingDate);
}
