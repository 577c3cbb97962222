#include "Quorvi/sync/StoreUpdater.h"

#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "QuorviCore/corrections/TextCorrectionCoding.h"

namespace quorvi {

StoreUpdater::StoreUpdater(const SyncedStores& stores, GuardedArchive& archive,
                           LocalCapture& capture, Scheduler& scheduler, TaskScope& tasks)
    : stores_(stores), archive_(archive), capture_(capture), tasks_(tasks), preparing_(scheduler) {}

void StoreUpdater::need() {
    isNeeded_ = true;
    ++generation_;
}

void StoreUpdater::noteMerged(const SharedString& id) {
    const bool isRule = id.view().starts_with(syncPrefix::correction);
    if (isRule) rulesMerged_ = true;
    if (isRule || archive_->ledger().differences().contains(id)) need();
}

bool StoreUpdater::canUpdate() const {
    return isNeeded_ && !isPaused_ && archive_.isUsable() &&
           archive_->state().initialFetchComplete && capture_.isReady() && stores_.areReady() &&
           !stores_.areInUse();
}

void StoreUpdater::updateIfPossible() {
    if (!preparing_.isActive() && canUpdate())
        tasks_.start([this](std::stop_token stop) { return update(stop); });
}

Task<void> StoreUpdater::update(std::stop_token stop) {
    auto ending = preparing_.ended(stop);
    co_await ending;
    const Activity::Running running(preparing_);
    while (canUpdate()) {
        auto trying = tryToUpdate(stop);
        co_await trying;
    }
}

Task<void> StoreUpdater::tryToUpdate(std::stop_token stop) {
    const auto generation = generation_;
    auto preparing = archive_->inBackground(
        [base = capture_.captured().records(), allRules = rulesMerged_](const SyncState& state) {
            return StoreUpdate::prepare(state, base, allRules);
        },
        stop);
    const auto prepared = co_await preparing;
    // The user goes on working: edits that were made meanwhile must not be lost.
    capture_.capture();
    if (generation == generation_ && canUpdate()) commit(prepared);
}

void StoreUpdater::commit(const StoreUpdate& update) {
    const Activity::Running writing(capture_.busy());
    if (update.settings) Settings(stores_.preferences).apply(*update.settings);
    if (update.recordsDiffer) stores_.history.replaceFromSync(update.records);
    if (update.rules) stores_.corrections.replaceFromSync(*update.rules);

    // The values just written must not read as local edits; values that a store altered must.
    archive_->rebaseline();
    auto now = stores_.snapshot();
    const auto& before = capture_.captured();
    const LocalSnapshot expected(update.recordsDiffer ? update.records : before.records(),
                                 before.rules(), before.settings());
    auto local = valuesNow(update, now);
    local.insert(local.end(), update.local.begin(), update.local.end());
    isNeeded_ = rulesMerged_ = false;
    ++generation_;
    capture_.continueFrom(std::move(now), expected, std::move(local));
    archive_.persist();
    onUpdated();
}

// Returns the rules and settings that were written, as the stores hold them now.
LocalChanges StoreUpdater::valuesNow(const StoreUpdate& update, const LocalSnapshot& now) {
    if (update.toCheck.empty()) return {};
    std::unordered_map<std::string_view, const TextCorrection*> rules;
    for (const auto& rule : now.rules().rules()) rules.emplace(rule.id, &rule);
    LocalChanges changes;
    for (const auto& id : update.toCheck) {
        std::optional<SharedString> payload;
        if (id.view().starts_with(syncPrefix::correction)) {
            const auto rule = rules.find(id.view().substr(syncPrefix::correction.size()));
            if (rule != rules.end()) payload = SharedString(encodeCorrection(*rule->second));
        } else {
            const auto& settings = now.settings();
            const auto setting = settings.find(id.view().substr(syncPrefix::setting.size()));
            if (setting != settings.end()) payload = LocalSnapshot::encode(setting->second);
        }
        changes.push_back(LocalChange::of(id, std::move(payload)));
    }
    return changes;
}

}  // namespace quorvi
