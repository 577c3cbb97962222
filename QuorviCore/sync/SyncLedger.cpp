#include "QuorviCore/sync/SyncLedger.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/identity/Uuid.h"
#include "QuorviCore/sync/LocalSnapshot.h"

namespace quorvi {

namespace {

bool holdsText(std::string_view payload) {
    try {
        return decodeRecord(std::string(payload)).text.has_value();
    } catch (const HistoryFormatError&) {
        return false;
    }
}

// Milliseconds since 1970, truncated. A date that is not a number maps to the oldest revision.
std::int64_t millisecondsOf(Date date) {
    const double milliseconds = date.unixSeconds() * 1000;
    constexpr double limit = 9'000'000'000'000'000'000.0;
    if (!(milliseconds > -limit)) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(std::min(milliseconds, limit));
}

}  // namespace

LocalChange LocalChange::of(SharedString id, std::optional<SharedString> payload) {
    const bool redacted =
        id.view().starts_with(syncPrefix::history) && !(payload && holdsText(*payload));
    return {std::move(id), std::move(payload), redacted};
}

SyncLedger::SyncLedger() : device_(newUuid()) {}

SyncLedger::SyncLedger(Parts parts)
    : items_(std::move(parts.items)),
      device_(std::move(parts.device)),
      clock_(parts.clock),
      differences_(std::move(parts.differences)) {}

const SyncItem* SyncLedger::item(std::string_view id) const {
    const auto found = items_.find(id);
    return found == items_.end() ? nullptr : &found->second;
}

const SharedString* SyncLedger::baseline(std::string_view id) const {
    if (const auto* known = item(id)) return baseline(*known);
    const auto different = differences_.find(id);
    return different != differences_.end() && different->second.payload
               ? &*different->second.payload
               : nullptr;
}

const SharedString* SyncLedger::baseline(const SyncItem& known) const {
    if (!differences_.empty()) {
        const auto different = differences_.find(known.id);
        if (different != differences_.end())
            return different->second.payload ? &*different->second.payload : nullptr;
    }
    return known.payload ? &*known.payload : nullptr;
}

SyncLedger::Payloads SyncLedger::baseline() const {
    Payloads all;
    all.reserve(items_.size());
    for (const auto& [id, known] : items_)
        if (const auto* payload = baseline(known)) all.emplace(id, *payload);
    for (const auto& [id, held] : differences_)
        if (held.payload) all.emplace(id, *held.payload);
    return all;
}

bool SyncLedger::hasBaseline() const {
    return std::ranges::any_of(differences_,
                               [](const auto& one) { return one.second.payload.has_value(); }) ||
           std::ranges::any_of(items_,
                               [this](const auto& one) { return baseline(one.second) != nullptr; });
}

void SyncLedger::setBaseline(const SharedString& id, const std::optional<SharedString>& payload) {
    const auto* known = item(id);
    const bool isTheItems = known ? known->payload == payload : !payload;
    if (isTheItems)
        differences_.erase(id);
    else
        differences_.insert_or_assign(known ? known->id : id, BaselineValue{payload});
}

bool SyncLedger::captureOne(const LocalChange& change, bool seed, std::int64_t milliseconds) {
    const auto* before = baseline(change.id);
    if (before ? change.payload && *before == *change.payload : !change.payload) return false;

    const auto held = items_.find(change.id);
    if (held != items_.end() && held->second.deleted() && change.payload) {
        setBaseline(change.id, change.payload);
        return false;
    }
    auto device = device_;
    std::int64_t revision = 1;
    if (!seed) {
        // Others refuse later ones. Only a hostile device, or a wrong date, leads there; then the
        // device decides, and this one's change counts.
        constexpr auto last = SyncItem::latestRevision;
        revision = std::min(last, std::max(std::min(clock_, last) + 1, milliseconds));
        clock_ = std::max(clock_, revision);
        if (revision == last && held != items_.end() && held->second.revision >= last) {
            revision = held->second.revision;
            if (held->second.device >= device)
                device = SharedString(held->second.device.string() + device_.string());
        }
    }
    SyncItem built(change.id, change.payload, revision, std::move(device), change.redacted);
    if (held != items_.end()) {
        built.id = held->second.id;
        held->second = held->second.merging(built);
    } else {
        items_.emplace(change.id, std::move(built));
    }
    setBaseline(change.id, change.payload);
    return true;
}

std::vector<SharedString> SyncLedger::capture(std::span<const LocalChange> changes, bool seed,
                                              Date now) {
    const auto milliseconds = millisecondsOf(now);
    std::vector<SharedString> changed;
    for (const auto& change : changes)
        if (captureOne(change, seed, milliseconds)) changed.push_back(change.id);
    return changed;
}

std::vector<SharedString> SyncLedger::capture(const Payloads& current, bool seed, Date now) {
    LocalChanges changes;
    for (const auto& [id, payload] : baseline())
        if (!current.contains(id)) changes.push_back(LocalChange::of(id, std::nullopt));
    for (const auto& [id, payload] : current) {
        const auto* before = baseline(id);
        if (!before || *before != payload) changes.push_back(LocalChange::of(id, payload));
    }
    return capture(changes, seed, now);
}

const SyncItem& SyncLedger::merge(const SyncItem& incoming) {
    clock_ = std::max(clock_, incoming.revision);
    const auto held = items_.find(incoming.id);
    if (held == items_.end()) {
        const auto& added = items_.emplace(incoming.id, incoming).first->second;
        // The baseline lacks it, unless an earlier capture has put it there.
        if (added.payload && !differences_.contains(added.id))
            differences_.emplace(added.id, BaselineValue());
        return added;
    }
    auto& item = held->second;
    auto merged = item.merging(incoming);
    merged.id = item.id;
    if (merged.payload && item.payload && *merged.payload == *item.payload)
        merged.payload = item.payload;  // share the bytes
    if (merged.payload != item.payload) {
        const auto* before = baseline(item.id);
        auto kept = before ? std::optional(*before) : std::nullopt;
        item = std::move(merged);
        setBaseline(item.id, kept);
    } else {
        item = std::move(merged);
    }
    return item;
}

SyncLedger::Differences SyncLedger::rebaseline() {
    return std::exchange(differences_, {});
}

void SyncLedger::restore(const SyncItem& item, std::optional<BaselineValue> difference) {
    items_.insert_or_assign(item.id, item);
    if (difference)
        differences_.insert_or_assign(item.id, *std::move(difference));
    else
        differences_.erase(item.id);
}

}  // namespace quorvi
