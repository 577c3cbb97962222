#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "QuorviCore/history/DictationCostEstimate.h"
#include "QuorviCore/history/Groups.h"
#include "QuorviCore/history/UsagePeriod.h"

namespace quorvi {

// The dictations at one price.
struct ModelCostUsage {
    struct ID {
        DictationCostEstimate estimate;
        bool assumedModel =
            false;  // the records have no price; that of the default model is assumed

        bool operator==(const ID&) const = default;
    };

    ID id;
    std::int64_t dictations = 0;
    double audioSeconds = 0;

    double usd() const { return id.estimate.usd(audioSeconds); }

    bool operator==(const ModelCostUsage&) const = default;
};

// The estimated cost of the dictations of a period. Records without words do not count.
struct UsageCostSummary {
    std::vector<ModelCostUsage> models;  // most expensive first

    static UsageCostSummary of(const DictationRecords& records, UsagePeriod period, Date now,
                               const Calendar& calendar);

    double totalUSD() const;
    std::int64_t dictations() const;
    std::int64_t assumedDictations() const;

    bool operator==(const UsageCostSummary&) const = default;
};

}  // namespace quorvi

template <>
struct std::hash<quorvi::ModelCostUsage::ID> {
    std::size_t operator()(const quorvi::ModelCostUsage::ID& id) const noexcept {
        return std::hash<quorvi::DictationCostEstimate>()(id.estimate) * 2 + id.assumedModel;
    }
};

namespace quorvi {

// Adds up records in their order, on which the rounding of the sums depends.
class UsageCostCounter {
public:
    void add(const DictationRecord& record);
    UsageCostSummary summary() const;

private:
    struct Totals {
        std::int64_t dictations = 0;
        double audioSeconds = 0;
    };
    Groups<ModelCostUsage::ID, Totals> models_;
    Totals assumed_;
};

}  // namespace quorvi
