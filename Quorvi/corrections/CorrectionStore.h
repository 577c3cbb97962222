#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "QuorviCore/corrections/TextCorrections.h"

namespace quorvi {

// The user's correction rules and whether more are learned. Main thread.
class CorrectionStore {
public:
    virtual ~CorrectionStore() = default;

    // The rules in priority order, prepared for use. Cheap to copy.
    virtual const TextCorrections& rules() const = 0;

    // Adds the rules that the product brings along, once.
    virtual void installTarnelCorrectionsIfNeeded() = 0;

    virtual bool learnsAutomatically() const = 0;
    virtual const std::string& learningStatus() const = 0;
    virtual void setLearningStatus(std::string status) = 0;

    // Adds to the short diagnostic log: what happened, never what was said.
    virtual void recordLearningEvent(const std::string& code, const std::string& app,
                                     const std::map<std::string, std::int64_t>& counts) = 0;

    std::function<void(const TextCorrection&)> onLearned;
    std::function<void()> onLearningChanged;
};

// Rules that last for the life of the process.
class MemoryCorrectionStore final : public CorrectionStore {
public:
    struct LearningEvent {
        std::string code;
        std::string app;
        std::map<std::string, std::int64_t> counts;
    };

    explicit MemoryCorrectionStore(std::vector<TextCorrection> rules = {},
                                   bool learnsAutomatically = true);

    const TextCorrections& rules() const override { return rules_; }
    void installTarnelCorrectionsIfNeeded() override {}
    bool learnsAutomatically() const override { return learnsAutomatically_; }
    void setLearnsAutomatically(bool learns);
    const std::string& learningStatus() const override { return learningStatus_; }
    void setLearningStatus(std::string status) override { learningStatus_ = std::move(status); }
    void recordLearningEvent(const std::string& code, const std::string& app,
                             const std::map<std::string, std::int64_t>& counts) override;

    // The last 24 events, oldest first.
    const std::vector<LearningEvent>& learningEvents() const { return events_; }

private:
    TextCorrections rules_;
    bool learnsAutomatically_;
    std::string learningStatus_ = "Ready to learn from your next dictation.";
    std::vector<LearningEvent> events_;
};

}  // namespace quorvi
