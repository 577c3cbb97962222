#include "tests/support/reference/LiteralSync.h"

#include <algorithm>

#include "QuorviCore/history/HistoryArchive.h"

namespace quorvi::test {

LiteralItem LiteralItem::of(const SyncItem& item) {
    return {item.id.string(), item.payload ? std::optional(item.payload->string()) : std::nullopt,
            item.revision, item.device.string(), item.redacted};
}

LiteralItem LiteralItem::merging(const LiteralItem& incoming) const {
    bool incomingWins = false;
    if (payload.has_value() != incoming.payload.has_value())
        incomingWins = !incoming.payload;
    else
        incomingWins = incoming.revision > revision ||
                       (incoming.revision == revision && device < incoming.device);
    LiteralItem result = incomingWins ? incoming : *this;
    result.redacted = redacted || incoming.redacted;
    if (result.redacted && result.payload) {
        try {
            auto record = decodeRecord(*result.payload);
            record.text.reset();
            result.payload = encodeRecord(record);
        } catch (const HistoryFormatError&) {
        }
    }
    return result;
}

void LiteralLedger::merge(const LiteralItem& item) {
    clock = std::max(clock, item.revision);
    const auto held = items.find(item.id);
    if (held == items.end())
        items[item.id] = item;
    else
        held->second = held->second.merging(item);
}

std::set<std::string> LiteralLedger::capture(const LiteralPayloads& current, bool seed,
                                             std::int64_t milliseconds,
                                             const std::vector<SharedString>& order) {
    std::vector<std::string> walk;
    for (const auto& id : order) walk.push_back(id.string());
    for (const auto& [id, payload] : baseline) walk.push_back(id);
    for (const auto& [id, payload] : current) walk.push_back(id);
    std::set<std::string> seen, changed;
    for (const auto& id : walk) {
        if (!seen.insert(id).second) continue;
        const auto old = baseline.find(id);
        const auto now = current.find(id);
        const bool isThere = now != current.end();
        if ((old != baseline.end()) == isThere && (!isThere || old->second == now->second))
            continue;
        const auto held = items.find(id);
        if (isThere && held != items.end() && !held->second.payload) continue;
        std::int64_t revision = 1;
        if (!seed) clock = revision = std::max(clock + 1, milliseconds);
        LiteralItem built{.id = id, .revision = revision, .device = device};
        if (isThere) built.payload = now->second;
        if (id.starts_with("history:")) built.redacted = !isThere || !hasText(now->second);
        if (held != items.end())
            held->second = held->second.merging(built);
        else
            items[id] = built;
        changed.insert(id);
    }
    baseline = current;
    return changed;
}

bool LiteralLedger::hasText(const std::string& payload) {
    try {
        return decodeRecord(payload).text.has_value();
    } catch (const HistoryFormatError&) {
        return false;
    }
}

LiteralPayloads plain(const SyncLedger::Payloads& payloads) {
    LiteralPayloads all;
    for (const auto& [id, payload] : payloads) all.emplace(id.string(), payload.string());
    return all;
}

}  // namespace quorvi::test
