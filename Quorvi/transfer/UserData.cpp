#include "Quorvi/transfer/UserData.h"

#include <algorithm>
#include <string>
#include <utility>

#include "Quorvi/settings/Settings.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/sync/LocalSnapshot.h"
#include "QuorviCore/sync/SyncDocument.h"

namespace quorvi {

namespace {

// An archive is only added to here, whatever its size.
constexpr std::size_t neverWhole = 0;

DictationRecords read(const HistoryFile& history) {
    try {
        return history.load();
    } catch (const std::exception& error) {
        throw QuorviError::message(say::historyNotRead(error.what()));
    }
}

void add(UserData::Counts& counts, const SyncItem& item) {
    const auto id = item.id.view();
    if (id.starts_with(syncPrefix::history))
        ++counts.dictations;
    else if (id.starts_with(syncPrefix::correction))
        ++counts.rules;
    else if (id.starts_with(syncPrefix::setting))
        ++counts.settings;
}

}  // namespace

UserData::UserData(const Places& places, Access access)
    : preferences_(places.preferences),
      history_(places.files, places.history),
      records_(read(history_)),
      corrections_(places.preferences, places.scheduler) {
    if (!preferences_.couldBeRead()) throw QuorviError::message(say::preferencesUnreadable());
    if (corrections_.persistenceError())
        throw QuorviError::message(*corrections_.persistenceError());
    try {
        openArchive(places, access);
    } catch (const std::exception& error) {
        throw QuorviError::message(say::syncStateNotRead(error.what()));
    }
    // As the program would at its next start: what the synchronisation has not seen yet is new.
    const LocalSnapshot now(records_, corrections_.rules(), Settings(preferences_).travelling());
    const bool isNew = state_.ledger.items().empty();
    changed_ =
        state_.ledger.capture(now.changesFrom(state_.ledger), isNew, places.scheduler.date());
}

void UserData::openArchive(const Places& places, Access access) {
    if (access == Access::reading) {
        // The journal belongs to the running program. Without its latest versions their values
        // count as new, which they are.
        if (auto document = places.files.read(places.archive))
            state_ = decodeSyncDocument(*std::move(document));
        return;
    }
    if (!places.files.read(places.archive)) return;
    writer_ = std::make_unique<SyncArchiveWriter>(places.files, places.journals, places.archive,
                                                  neverWhole);
    state_ = writer_->copy();
}

std::vector<SyncItem> UserData::items() const {
    std::vector<SyncItem> all;
    for (const auto& [id, item] : state_.ledger.items())
        if (!item.deleted()) all.push_back(item);
    std::ranges::sort(all, {}, [](const auto& item) { return item.id.view(); });
    sortNewestFirst(all);
    return all;
}

UserData::Counts UserData::count(const std::vector<SyncItem>& items) {
    Counts counts;
    for (const auto& item : items) add(counts, item);
    return counts;
}

UserData::Counts UserData::merge(const std::vector<SyncItem>& incoming) {
    Counts counts;
    for (const auto& item : incoming) {
        const auto* held = state_.ledger.item(item.id);
        const auto before = held ? std::optional(*held) : std::nullopt;
        const auto& merged = state_.ledger.merge(item);
        if (before == merged) continue;
        changed_.push_back(merged.id);
        if (!before || before->payload != merged.payload) add(counts, merged);
    }
    return counts;
}

void UserData::save() {
    const auto update = StoreUpdate::prepare(state_, records_, false);
    if (update.recordsDiffer) {
        try {
            history_.save(update.records);
        } catch (const std::exception& error) {
            throw QuorviError::message(say::historyNotWritten(error.what()));
        }
        records_ = update.records;
    }
    if (update.settings) Settings(preferences_).apply(*update.settings);
    if (update.rules) corrections_.replaceFromSync(*update.rules);
    preferences_.flush();
    if (const auto problem = preferences_.persistenceError()) throw QuorviError::message(*problem);
    saveArchive();
}

// Last of all: were it written and the values not, they would read as deleted here. Without it they
// read as changed here, which costs their stamps and nothing else.
void UserData::saveArchive() {
    if (!writer_ || changed_.empty()) return;
    (void)state_.ledger.rebaseline();
    SyncDelta delta{.rebaselined = true,
                    .clock = state_.ledger.clock(),
                    .owner = state_.owner,
                    .initialFetchComplete = state_.initialFetchComplete,
                    .lastSynced = state_.lastSynced,
                    .diagnostics = state_.diagnostics};
    for (const auto& id : changed_) {
        state_.pending.insert(id);
        delta.values.push_back(SyncDelta::valueOf(state_, id));
    }
    writer_->push({std::move(delta)});
    writer_->write();
}

}  // namespace quorvi
