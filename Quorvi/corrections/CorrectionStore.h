#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/corrections/LearningEvent.h"
#include "Quorvi/settings/Settings.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/corrections/TextCorrections.h"

namespace quorvi {

// The user's correction rules and the state of automatic learning. Stores every change in the
// preferences before publishing it. If the stored rules cannot be read, the store stays empty and
// locked for the life of the process, so that they are never overwritten. Main thread; callbacks
// run within the change.
class CorrectionStore {
public:
    // Loads the rules. Preferences and clock outlive the store.
    CorrectionStore(Preferences& defaults, Scheduler& clock);
    CorrectionStore(const CorrectionStore&) = delete;
    CorrectionStore& operator=(const CorrectionStore&) = delete;

    // The rules in order of priority, newest first, prepared for use. Cheap to copy.
    const TextCorrections& rules() const { return rules_; }

    // Why nothing can be saved; nullopt if rules can be saved.
    const std::optional<Message>& persistenceError() const { return persistenceError_; }

    // The last outcome of automatic learning, or what it is doing.
    const Message& learningStatus() const { return learningStatus_; }
    void setLearningStatus(Message status);

    bool learnsAutomatically() const {
        return settings_.get(setting::learnCorrectionsAutomatically);
    }
    void setLearnsAutomatically(bool learns) {
        settings_.set(setting::learnCorrectionsAutomatically, learns);
    }

    // Each throws QuorviError with the sentence to show, and then changes nothing. save() adds the
    // rule at the front, or replaces the one with the same id in place.
    void save(TextCorrection rule);
    void setEnabled(const std::string& id, bool enabled);
    void remove(const std::string& id);

    // Stores what an edit teaches: a new rule, and new replacements for the applied rules that
    // wrote the text which the user changed. Returns the stored rules in list order; empty if there
    // was nothing to store, for which the status gives the reason.
    std::vector<TextCorrection> learn(const TextCorrection& suggestion,
                                      const std::vector<TextCorrection>& appliedRules);

    // Adds the built-in rules, once.
    void installTarnelCorrectionsIfNeeded();

    // Replaces the list with one that synchronisation has merged and validated.
    void replaceFromSync(std::vector<TextCorrection> rules);

    // Appends to the diagnostic log, which keeps the last 24 events.
    void recordLearningEvent(std::string_view code, std::string_view app,
                             const LearningEvent::Counts& counts = {});
    std::vector<LearningEvent> learningEvents() const;  // oldest first

    std::function<void(const TextCorrection&)> onLearned;
    std::function<void()> onLearningChanged;

    // Called after any change of the rules, the status or the setting; observers re-read them.
    [[nodiscard]] Subscription onChange(std::function<void()> observer) {
        return changes_.subscribe(std::move(observer));
    }

private:
    // Cached per rule, because it is expensive to compute.
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
    Settings settings_{defaults_};
    Scheduler& clock_;
    Observable changes_;
    TextCorrections rules_;
    std::vector<Derived> derived_;  // one for each rule
    std::optional<Message> persistenceError_;
    Message learningStatus_ = say::readyToLearn();
    Subscription learningObserver_;
};

}  // namespace quorvi
