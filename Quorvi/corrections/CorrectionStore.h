#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/corrections/LearningEvent.h"
#include "Quorvi/platform/Preferences.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/corrections/TextCorrections.h"

namespace quorvi {

// The user's correction rules, and what automatic learning has to say. Keeps both in the
// preferences: every change is stored before it is published. When the stored rules can't be read,
// the store is empty and locked for the life of the process, so that they are never overwritten.
// Main thread; callbacks are called within the change.
class CorrectionStore {
public:
    // Loads the rules. Both outlive the store.
    CorrectionStore(Preferences& defaults, Scheduler& clock);
    CorrectionStore(const CorrectionStore&) = delete;
    CorrectionStore& operator=(const CorrectionStore&) = delete;

    // The rules in priority order, newest first, prepared for use. Cheap to copy.
    const TextCorrections& rules() const { return rules_; }

    // Why nothing can be saved, as a sentence for the user.
    const std::optional<std::string>& persistenceError() const { return persistenceError_; }

    // One line about automatic learning.
    const std::string& learningStatus() const { return learningStatus_; }
    void setLearningStatus(std::string status);

    bool learnsAutomatically() const { return learnsAutomatically_; }
    void setLearnsAutomatically(bool learns);

    // Each throws QuorviError with the sentence to show, and has then changed nothing. save() adds
    // the rule in front, or replaces the one with its id where it stands.
    void save(TextCorrection rule);
    void setEnabled(const std::string& id, bool enabled);
    void remove(const std::string& id);

    // Stores what an edit has taught: a rule of its own, and other replacements for those of the
    // applied rules that wrote what the user changed. Yields the rules as stored, in list order;
    // none when there was nothing to store, which the status then explains.
    std::vector<TextCorrection> learn(const TextCorrection& suggestion,
                                      const std::vector<TextCorrection>& appliedRules);

    // Adds the rules that the product brings along, once.
    void installTarnelCorrectionsIfNeeded();

    // Takes over a list that synchronisation has merged and checked.
    void replaceFromSync(std::vector<TextCorrection> rules);

    // Adds to the diagnostic log, which keeps the last 24 events.
    void recordLearningEvent(std::string_view code, std::string_view app,
                             const LearningEvent::Counts& counts = {});
    std::vector<LearningEvent> learningEvents() const;  // oldest first

    std::function<void(const TextCorrection&)> onLearned;
    std::function<void()> onLearningChanged;

    // Told after any change of the rules, the status or the switch; observers re-read them.
    [[nodiscard]] Subscription onChange(std::function<void()> observer) {
        return changes_.subscribe(std::move(observer));
    }

private:
    // What a rule costs to work out, kept beside it.
    struct Derived {
        std::string matchKey;
        std::string json;
    };

    void load();
    void refuseWhenLocked() const;
    void persist(std::vector<TextCorrection> rules);
    static Derived derive(const TextCorrection& rule);
    Bytes encoded() const;
    const TextCorrection* find(const std::string& id) const;
    const TextCorrection* findPhrase(std::string_view matchKey,
                                     std::string_view exceptId = {}) const;
    void explainNothingLearned(const TextCorrection& suggestion);

    Preferences& defaults_;
    Scheduler& clock_;
    Observable changes_;
    TextCorrections rules_;
    std::vector<Derived> derived_;  // one for each rule
    std::optional<std::string> persistenceError_;
    std::string learningStatus_ = "Ready to learn from your next dictation.";
    bool learnsAutomatically_ = true;
};

}  // namespace quorvi
