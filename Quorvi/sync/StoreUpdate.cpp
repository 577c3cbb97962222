#include "Quorvi/sync/StoreUpdate.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/history/HistoryArchive.h"

namespace quorvi {

namespace {

struct UuidHash {
    // The bytes are random already.
    std::size_t operator()(const Uuid& id) const noexcept {
        std::size_t hash;
        std::memcpy(&hash, id.bytes.data(), sizeof hash);
        return hash;
    }
};
using UuidSet = std::unordered_set<Uuid, UuidHash>;

std::optional<DictationRecord> recordOf(const SyncItem& item, DictationRecordDecoder& decoder) {
    try {
        return decoder.decode(item.payload->view());
    } catch (const HistoryFormatError&) {
        return std::nullopt;
    }
}

// Latest first, stable. Only pointers are moved.
std::vector<DictationRecord*> latestFirst(std::vector<DictationRecord>& records) {
    std::vector<DictationRecord*> order;
    order.reserve(records.size());
    for (auto& record : records) order.push_back(&record);
    std::ranges::stable_sort(order, std::ranges::greater(),
                             [](const auto* record) { return record->date; });
    return order;
}

// Returns the list without the records in `replaced` and with those of `records`, moved.
DictationRecords rebuilt(const DictationRecords& base, const UuidSet& replaced,
                         std::vector<DictationRecord> records) {
    DictationRecords::Builder builder;
    const auto fresh = latestFirst(records);
    auto next = fresh.begin();
    const auto addFreshLaterThan = [&](Date date) {
        for (; next != fresh.end() && (*next)->date > date; ++next) builder.add(std::move(**next));
    };
    for (const auto& part : base.parts()) {
        const auto& chunk = *part.chunk;
        addFreshLaterThan(chunk.latest);
        const bool isReplaced =
            !replaced.empty() && std::ranges::any_of(chunk.records, [&](const auto& record) {
                return replaced.contains(record.id);
            });
        const bool isMixed = next != fresh.end() && (*next)->date > chunk.earliest;
        // Small chunks are joined with their neighbours, or there would be many.
        const bool isSmall = chunk.records.size() < DictationRecords::chunkSize / 2;
        if (!isReplaced && !isMixed && !isSmall) {
            builder.add(part.chunk);
            continue;
        }
        for (const auto& record : chunk.records) {
            if (replaced.contains(record.id)) continue;
            addFreshLaterThan(record.date);
            builder.add(record);
        }
    }
    for (; next != fresh.end(); ++next) builder.add(std::move(**next));
    return builder.build().newestFirst();
}

void prepareHistory(StoreUpdate& update, const SyncState& state, std::vector<SyncItem> items,
                    const DictationRecords& base) {
    UuidSet replaced;
    replaced.reserve(state.ledger.differences().size());
    std::vector<DictationRecord> fresh;
    fresh.reserve(items.size());
    DictationRecordDecoder decoder(items.size());
    std::string encoded;
    for (const auto& [id, baseline] : state.ledger.differences()) {
        if (!id.view().starts_with(syncPrefix::history)) continue;
        const auto uuid = Uuid::parse(id.view().substr(syncPrefix::history.size()));
        if (uuid) replaced.insert(*uuid);
    }
    sortNewestFirst(items);
    for (const auto& item : items) {
        auto record = recordOf(item, decoder);
        if (!record) {
            update.local.push_back(LocalChange::of(item.id, std::nullopt));
            continue;
        }
        encoded.clear();
        appendEncodedRecord(encoded, *record);
        auto id = LocalSnapshot::historyId(record->id);
        if (id != item.id) update.local.push_back(LocalChange::of(item.id, std::nullopt));
        if (id != item.id || encoded != item.payload->view())
            update.local.push_back(LocalChange::of(std::move(id), SharedString(encoded)));
        replaced.insert(record->id);
        fresh.push_back(*std::move(record));
    }
    update.recordsDiffer = !replaced.empty();
    if (!update.recordsDiffer) return;
    update.records = rebuilt(base, replaced, std::move(fresh));
}

std::vector<TextCorrection> validRules(std::vector<SyncItem> items) {
    // By id first, so that rules with equal stamps, such as those of a first launch, are in the
    // same order on all machines.
    std::ranges::sort(items, {}, &SyncItem::id);
    sortNewestFirst(items);
    std::vector<TextCorrection> rules;
    std::unordered_set<std::string> phrases;
    for (const auto& item : items) {
        auto rule = decodeCorrection(item.payload->view());
        if (rule && !rule->validationMessage() &&
            phrases.insert(TextCorrection::matchKey(rule->original)).second)
            rules.push_back(*std::move(rule));
    }
    return rules;
}

SettingValues settingsOf(const std::vector<SyncItem>& items) {
    SettingValues settings;
    for (const auto& item : items) {
        auto value = LocalSnapshot::decode(item.payload->view());
        if (value)
            settings.insert_or_assign(
                std::string(item.id.view().substr(syncPrefix::setting.size())), *std::move(value));
    }
    return settings;
}

}  // namespace

StoreUpdate StoreUpdate::prepare(const SyncState& state, const DictationRecords& base,
                                 bool allRules) {
    StoreUpdate update;
    update.records = base;
    std::vector<SyncItem> history;
    bool rulesDiffer = allRules;
    bool settingsDiffer = false;
    for (const auto& [id, baseline] : state.ledger.differences()) {
        const auto name = id.view();
        if (name.starts_with(syncPrefix::history)) {
            const auto* item = state.ledger.item(name);
            if (item != nullptr && !item->deleted()) history.push_back(*item);
        } else if (name.starts_with(syncPrefix::correction)) {
            rulesDiffer = true;
            update.toCheck.push_back(id);
        } else if (name.starts_with(syncPrefix::setting)) {
            settingsDiffer = true;
            update.toCheck.push_back(id);
        }
    }
    prepareHistory(update, state, std::move(history), base);
    if (!rulesDiffer && !settingsDiffer) return update;

    std::vector<SyncItem> rules, settings;
    for (const auto& [id, item] : state.ledger.items()) {
        if (item.deleted()) continue;
        if (id.view().starts_with(syncPrefix::correction))
            rules.push_back(item);
        else if (id.view().starts_with(syncPrefix::setting))
            settings.push_back(item);
    }
    if (rulesDiffer) update.rules = validRules(std::move(rules));
    if (settingsDiffer) update.settings = settingsOf(settings);
    return update;
}

}  // namespace quorvi
