#include "QuorviCore/history/UsageCost.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <tuple>

namespace quorvi {

UsageCostSummary UsageCostSummary::of(const DictationRecords& records, UsagePeriod period, Date now,
                                      const Calendar& calendar) {
    UsageCostCounter counter;
    for (const auto& record : filter(period, records, now, calendar))
        if (record.wordCount != 0) counter.add(record);
    return counter.summary();
}

double UsageCostSummary::totalUSD() const {
    double sum = 0;
    for (const auto& model : models) sum += model.usd();
    return sum;
}

std::int64_t UsageCostSummary::dictations() const {
    std::int64_t sum = 0;
    for (const auto& model : models) sum += model.dictations;
    return sum;
}

std::int64_t UsageCostSummary::assumedDictations() const {
    std::int64_t sum = 0;
    for (const auto& model : models) sum += model.id.assumedModel ? model.dictations : 0;
    return sum;
}

void UsageCostCounter::add(const DictationRecord& record) {
    auto* totals = &assumed_;
    if (const auto& estimate = record.costEstimate)
        totals = &models_.of({*estimate, false}, [](const auto& a, const auto& b) {
            return a.estimate.modelID.isSharedWith(b.estimate.modelID) &&
                   a.estimate.pricingDate.isSharedWith(b.estimate.pricingDate) &&
                   a.estimate.usdPerMinute == b.estimate.usdPerMinute;
        });
    ++totals->dictations;
    totals->audioSeconds += record.countedSeconds();
}

UsageCostSummary UsageCostCounter::summary() const {
    UsageCostSummary result;
    for (const auto& [id, totals] : models_.all())
        result.models.push_back({id, totals.dictations, totals.audioSeconds});
    if (assumed_.dictations > 0)
        result.models.push_back({{DictationCostEstimate::of(TranscriptionModel::transcribe), true},
                                 assumed_.dictations,
                                 assumed_.audioSeconds});
    const auto order = [](const ModelCostUsage& a) {
        const auto& estimate = a.id.estimate;
        return std::tuple(-a.usd(), estimate.modelID.view(), a.id.assumedModel,
                          estimate.pricingDate.view(), estimate.usdPerMinute);
    };
    std::ranges::stable_sort(result.models,
                             [&](const auto& a, const auto& b) { return order(a) < order(b); });
    return result;
}

}  // namespace quorvi
