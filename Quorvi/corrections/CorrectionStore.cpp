#include "Quorvi/corrections/CorrectionStore.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "Quorvi/corrections/TarnelCorrections.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

const auto rulesKey = setting::savedTextCorrections.key();
const auto eventsKey = setting::correctionLearningDiagnostics.key();
constexpr std::size_t keptEvents = 24;

bool haveDistinctIds(const std::vector<TextCorrection>& rules) {
    std::unordered_set<std::string_view> ids;
    ids.reserve(rules.size());
    return std::ranges::all_of(rules,
                               [&ids](const auto& rule) { return ids.insert(rule.id).second; });
}

// Stricter than ==: the stored form is equal, too.
bool isIdentical(const TextCorrection& a, const TextCorrection& b) {
    return a == b && a.original == b.original && a.replacement == b.replacement;
}

}  // namespace

CorrectionStore::CorrectionStore(Preferences& defaults, Scheduler& clock)
    : defaults_(defaults), clock_(clock) {
    learningObserver_ = settings_.onChange({&setting::learnCorrectionsAutomatically}, [this] {
        changes_.notify();
        if (onLearningChanged) onLearningChanged();
    });
    load();
}

void CorrectionStore::load() {
    if (defaults_.couldBeRead() && !defaults_.contains(rulesKey)) {
        persist({{.original = "Russet Miner",
                  .replacement = "russetmanor",
                  .updatedAt = clock_.date()}});
        return;
    }
    const auto stored = defaults_.bytes(rulesKey);
    auto rules = stored ? decodeCorrections(textOf(*stored)) : std::nullopt;
    const auto isValid = [](const auto& rule) { return !rule.validationMessage(); };
    if (!rules || !haveDistinctIds(*rules) || !std::ranges::all_of(*rules, isValid)) {
        persistenceError_ = say::correctionsUnreadable();
        return;
    }
    for (const auto& rule : *rules) derived_.push_back(derive(rule));
    rules_ = TextCorrections(*std::move(rules));
}

CorrectionStore::Derived CorrectionStore::derive(const TextCorrection& rule) {
    return {.matchKey = TextCorrection::matchKey(rule.original), .json = encodeCorrection(rule)};
}

void CorrectionStore::refuseWhenLocked() const {
    if (persistenceError_) throw QuorviError::message(*persistenceError_);
}

// Most changes concern one rule, and only that one is encoded.
void CorrectionStore::persist(std::vector<TextCorrection> rules) {
    refuseWhenLocked();
    const auto& old = rules_.rules();
    const auto [oldBegin, newBegin] = std::ranges::mismatch(old, rules, isIdentical);
    auto oldEnd = old.end();
    auto newEnd = rules.end();
    while (oldEnd != oldBegin && newEnd != newBegin && isIdentical(oldEnd[-1], newEnd[-1])) {
        --oldEnd;
        --newEnd;
    }
    std::vector<Derived> changed;
    for (auto rule = newBegin; rule != newEnd; ++rule) changed.push_back(derive(*rule));

    auto derived = std::move(derived_);
    const auto at = derived.erase(derived.begin() + (oldBegin - old.begin()),
                                  derived.begin() + (oldEnd - old.begin()));
    derived.insert(at, std::move_iterator(changed.begin()), std::move_iterator(changed.end()));
    derived_ = std::move(derived);
    defaults_.setBytes(rulesKey, encoded());
    rules_ = TextCorrections(std::move(rules));
    changes_.notify();
}

Bytes CorrectionStore::encoded() const {
    std::size_t size = 2;
    for (const auto& rule : derived_) size += rule.json.size() + 1;
    Bytes result;
    result.reserve(size);
    result.push_back('[');
    for (const auto& rule : derived_) {
        if (result.size() > 1) result.push_back(',');
        const auto* json = reinterpret_cast<const std::uint8_t*>(rule.json.data());
        result.insert(result.end(), json, json + rule.json.size());
    }
    result.push_back(']');
    return result;
}

const TextCorrection* CorrectionStore::find(const std::string& id) const {
    const auto& rules = rules_.rules();
    const auto found = std::ranges::find(rules, id, &TextCorrection::id);
    return found == rules.end() ? nullptr : &*found;
}

const TextCorrection* CorrectionStore::findPhrase(std::string_view matchKey,
                                                  std::string_view exceptId) const {
    for (std::size_t i = 0; i < derived_.size(); ++i)
        if (derived_[i].matchKey == matchKey && rules_.rules()[i].id != exceptId)
            return &rules_.rules()[i];
    return nullptr;
}

void CorrectionStore::save(TextCorrection rule) {
    refuseWhenLocked();
    rule.original = text::trimmed(rule.original);
    rule.replacement = text::trimmed(rule.replacement);
    if (const auto problem = rule.validationMessage()) throw QuorviError::message(*problem);
    if (findPhrase(TextCorrection::matchKey(rule.original), rule.id))
        throw QuorviError::message(say::correctionExists());
    rule.updatedAt = clock_.date();
    auto rules = rules_.rules();
    const auto existing = std::ranges::find(rules, rule.id, &TextCorrection::id);
    if (existing != rules.end())
        *existing = std::move(rule);
    else
        rules.insert(rules.begin(), std::move(rule));
    persist(std::move(rules));
}

void CorrectionStore::setEnabled(const std::string& id, bool enabled) {
    const auto* rule = find(id);
    if (!rule) return;
    auto copy = *rule;
    copy.isEnabled = enabled;
    save(std::move(copy));
}

void CorrectionStore::remove(const std::string& id) {
    auto rules = rules_.rules();
    std::erase_if(rules, [&id](const auto& rule) { return rule.id == id; });
    persist(std::move(rules));
}

std::vector<TextCorrection> CorrectionStore::learn(
    const TextCorrection& suggestion, const std::vector<TextCorrection>& appliedRules) {
    if (!learnsAutomatically() || persistenceError_) return {};
    std::vector<std::string> saved;
    const auto trySave = [&](TextCorrection rule) {
        const auto id = rule.id;
        try {
            save(std::move(rule));
            saved.push_back(id);
        } catch (const std::exception& error) {
            setLearningStatus(messageOf(error));
        }
    };
    for (const auto& applied : appliedRules) {
        if (!applied.isEnabled || !text::equal(applied.replacement, suggestion.original)) continue;
        const auto* rule = find(applied.id);
        if (!rule || *rule != applied) continue;
        auto retargeted = *rule;
        retargeted.replacement = suggestion.replacement;
        retargeted.learnedAutomatically = true;
        trySave(std::move(retargeted));
    }
    if (!findPhrase(TextCorrection::matchKey(suggestion.original))) trySave(suggestion);

    if (saved.empty()) {
        explainNothingLearned(suggestion);
        return {};
    }
    setLearningStatus(say::remembered(suggestion.original + " → " + suggestion.replacement));
    std::vector<TextCorrection> learned;
    std::ranges::copy_if(rules_.rules(), std::back_inserter(learned), [&saved](const auto& rule) {
        return std::ranges::find(saved, rule.id) != saved.end();
    });
    if (onLearned) onLearned(suggestion);
    return learned;
}

void CorrectionStore::explainNothingLearned(const TextCorrection& suggestion) {
    const auto* rule = findPhrase(TextCorrection::matchKey(suggestion.original));
    if (!rule) return;
    const bool isSame = rule->isEnabled && text::equal(rule->replacement, suggestion.replacement);
    setLearningStatus(isSame ? say::correctionAlreadySaved() : say::correctionControlledByRule());
}

void CorrectionStore::installTarnelCorrectionsIfNeeded() {
    if (persistenceError_ || settings_.get(setting::tarnelCorrectionsSeeded)) return;
    auto rules = tarnelCorrections(clock_.date());
    std::erase_if(rules, [this](const auto& rule) {
        return findPhrase(TextCorrection::matchKey(rule.original)) != nullptr;
    });
    if (!rules.empty()) {
        rules.insert(rules.end(), rules_.rules().begin(), rules_.rules().end());
        try {
            persist(std::move(rules));
        } catch (const std::exception&) {
        }
    }
    settings_.set(setting::tarnelCorrectionsSeeded, true);
}

// Replaces rules that are equivalent but differ in bytes, too; otherwise machines would keep
// sending each other their own form.
void CorrectionStore::replaceFromSync(std::vector<TextCorrection> rules) {
    if (persistenceError_ || std::ranges::equal(rules, rules_.rules(), isIdentical)) return;
    try {
        persist(std::move(rules));
    } catch (const std::exception&) {
    }
}

void CorrectionStore::setLearningStatus(Message status) {
    if (status == learningStatus_) return;
    learningStatus_ = std::move(status);
    changes_.notify();
}

void CorrectionStore::recordLearningEvent(std::string_view code, std::string_view app,
                                          const LearningEvent::Counts& counts) {
    auto events = learningEvents();
    events.push_back({clock_.date(), std::string(app), std::string(code), counts});
    if (events.size() > keptEvents) events.erase(events.begin(), events.end() - keptEvents);
    defaults_.setBytes(eventsKey, bytesOf(encodeLearningEvents(events)));
}

std::vector<LearningEvent> CorrectionStore::learningEvents() const {
    const auto stored = defaults_.bytes(eventsKey);
    if (!stored) return {};
    return decodeLearningEvents(textOf(*stored)).value_or(std::vector<LearningEvent>{});
}

}  // namespace quorvi
