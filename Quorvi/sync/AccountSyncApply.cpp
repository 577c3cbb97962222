#include <unordered_map>
#include <utility>

#include "Quorvi/sync/AccountSync.h"
#include "QuorviCore/corrections/TextCorrectionCoding.h"

// Writing what the ledger holds into the stores. It is worked out in the background from what the
// ledger holds at one moment, and written at once if that is still so.
namespace quorvi {

bool AccountSync::mayApply() const {
    return archive_ && diskHealthy_ && !shutDown_ && archive_->state().initialFetchComplete &&
           !needsFetchCompletion_ && needsApply_ && !applying_ && captured_ &&
           !capturing_.isActive() && storesAreReady() && !isActive(environment_.model.stage()) &&
           !environment_.model.isChoosingShortcut();
}

void AccountSync::applyIfReady() {
    if (!preparing_.isActive() && mayApply())
        tasks_.start([this](std::stop_token stop) { return applyAll(stop); });
}

Task<void> AccountSync::applyAll(std::stop_token stop) {
    auto ending = preparing_.ended(stop);
    co_await ending;
    const Activity::Running running(preparing_);
    while (mayApply()) {
        auto trying = tryToApply(stop);
        co_await trying;
    }
}

Task<void> AccountSync::tryToApply(std::stop_token stop) {
    const auto generation = generation_;
    auto preparing = archive_->inBackground(
        [base = captured_->records(), allRules = rulesMerged_](const SyncState& state) {
            return StoreUpdate::prepare(state, base, allRules);
        },
        stop);
    const auto application = co_await preparing;
    // The user goes on working: what they have changed meanwhile must not be lost.
    capture();
    if (generation == generation_ && mayApply()) commit(application);
}

void AccountSync::commit(const StoreUpdate& application) {
    applying_ = true;
    auto& history = environment_.history;
    if (application.settings) environment_.model.applySyncSettings(*application.settings);
    if (application.recordsDiffer) history.replaceFromSync(application.records);
    if (application.rules) environment_.corrections.replaceFromSync(*application.rules);

    // What has just been written must not read as an edit. What was not taken over as it is, is
    // one.
    archive_->rebaseline();
    auto now = snapshot();
    const LocalSnapshot expected(
        application.recordsDiffer ? application.records : captured_->records(), captured_->rules(),
        captured_->settings());
    auto local = notTakenOver(application, now);
    local.insert(local.end(), application.local.begin(), application.local.end());
    if (now.distanceFrom(expected) <= valuesPerTurn) {
        const auto changes = now.changesSince(expected, archive_->ledger());
        local.insert(local.end(), changes.begin(), changes.end());
        captured_ = std::move(now);
    } else {
        captured_.reset();  // the next capture looks at everything, in the background
    }
    needsApply_ = rulesMerged_ = false;
    ++generation_;
    noteCaptured(archive_->capture(local, false, environment_.scheduler.date()));
    persist();
    schedulePending();
    applying_ = false;
}

// The rules and settings that were to be taken over, as they are now.
LocalChanges AccountSync::notTakenOver(const StoreUpdate& application,
                                       const LocalSnapshot& now) const {
    if (application.toCheck.empty()) return {};
    std::unordered_map<std::string_view, const TextCorrection*> rules;
    for (const auto& rule : now.rules().rules()) rules.emplace(rule.id, &rule);
    LocalChanges changes;
    for (const auto& id : application.toCheck) {
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
