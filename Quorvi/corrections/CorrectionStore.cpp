#include "Quorvi/corrections/CorrectionStore.h"

#include <utility>

namespace quorvi {

namespace {
constexpr std::size_t keptEvents = 24;
}

MemoryCorrectionStore::MemoryCorrectionStore(std::vector<TextCorrection> rules,
                                             bool learnsAutomatically)
    : rules_(std::move(rules)), learnsAutomatically_(learnsAutomatically) {}

void MemoryCorrectionStore::setLearnsAutomatically(bool learns) {
    learnsAutomatically_ = learns;
    if (onLearningChanged) onLearningChanged();
}

void MemoryCorrectionStore::recordLearningEvent(const std::string& code, const std::string& app,
                                                const std::map<std::string, std::int64_t>& counts) {
    if (events_.size() == keptEvents) events_.erase(events_.begin());
    events_.push_back({code, app, counts});
}

}  // namespace quorvi
