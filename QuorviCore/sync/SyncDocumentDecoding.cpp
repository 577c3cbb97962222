#ifdef __SSE2__
#define RAPIDJSON_SSE2  // strings are passed over sixteen bytes at a time
#endif
#include <rapidjson/reader.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "QuorviCore/json/Base64.h"
#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/sync/SyncDocument.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

// Deeper nesting, which only an unknown key's value can have, is refused.
constexpr int greatestDepth = 64;

enum class Place {
    root,
    document,
    diagnostics,
    ledger,
    baseline,
    items,
    item,
    records,
    pending,
};

// What a key of the document, the ledger or an item stands for. In the other objects a key is data.
enum class Member {
    unknown,
    // of the document
    diagnostics,
    initialFetchComplete,
    lastSynced,
    ledger,
    owner,
    pending,
    records,
    state,
    // of the ledger
    baseline,
    clock,
    items,
    // of an item, and of the ledger
    device,
    // of an item
    id,
    payload,
    redacted,
    revision,
    // of what has data for keys
    entry,
};

constexpr unsigned bit(Member member) {
    return 1U << static_cast<unsigned>(member);
}

constexpr unsigned requiredInDocument = bit(Member::ledger) | bit(Member::records) |
                                        bit(Member::pending) | bit(Member::initialFetchComplete);
constexpr unsigned requiredInLedger =
    bit(Member::items) | bit(Member::device) | bit(Member::clock) | bit(Member::baseline);
constexpr unsigned requiredInItem =
    bit(Member::id) | bit(Member::revision) | bit(Member::device) | bit(Member::redacted);

Member memberIn(Place place, std::string_view name) {
    struct Entry {
        Place place;
        std::string_view name;
        Member member;
    };
    static constexpr std::array entries{
        Entry{Place::item, "device", Member::device},
        Entry{Place::item, "id", Member::id},
        Entry{Place::item, "payload", Member::payload},
        Entry{Place::item, "redacted", Member::redacted},
        Entry{Place::item, "revision", Member::revision},
        Entry{Place::ledger, "baseline", Member::baseline},
        Entry{Place::ledger, "clock", Member::clock},
        Entry{Place::ledger, "device", Member::device},
        Entry{Place::ledger, "items", Member::items},
        Entry{Place::document, "diagnostics", Member::diagnostics},
        Entry{Place::document, "initialFetchComplete", Member::initialFetchComplete},
        Entry{Place::document, "lastSynced", Member::lastSynced},
        Entry{Place::document, "ledger", Member::ledger},
        Entry{Place::document, "owner", Member::owner},
        Entry{Place::document, "pending", Member::pending},
        Entry{Place::document, "records", Member::records},
        Entry{Place::document, "state", Member::state},
    };
    for (const auto& entry : entries)
        if (entry.place == place && entry.name == name) return entry.member;
    return Member::unknown;
}

// Takes the parser's events. Returning false ends the parsing. Texts that come stay where they are
// until the parser's buffer goes.
class Receiver {
public:
    bool isComplete() const { return complete_; }
    SyncState take() {
        state_.ledger = SyncLedger(std::move(ledger_));
        return std::move(state_);
    }

    bool Key(const char* s, rapidjson::SizeType size, bool) {
        if (skipping()) return true;
        key_ = {s, size};
        const bool hasNames =
            place_ == Place::document || place_ == Place::ledger || place_ == Place::item;
        member_ = hasNames ? memberIn(place_, key_) : Member::entry;
        return json::isFreeOfSurrogates(key_);
    }
    bool String(const char* s, rapidjson::SizeType size, bool) {
        return ignored() || (json::isFreeOfSurrogates({s, size}) && takeText({s, size}));
    }
    bool Null() {
        return ignored() || member_ == Member::owner || member_ == Member::state ||
               member_ == Member::lastSynced || member_ == Member::diagnostics ||
               member_ == Member::payload;
    }
    bool Bool(bool value) {
        if (ignored()) return true;
        if (member_ == Member::redacted)
            item_.redacted = value;
        else if (member_ == Member::initialFetchComplete)
            state_.initialFetchComplete = value;
        else
            return false;
        return found();
    }
    bool Int(int value) { return takeInteger(value); }
    bool Uint(unsigned value) { return takeInteger(value); }
    bool Int64(std::int64_t value) { return takeInteger(value); }
    bool Uint64(std::uint64_t value) {
        if (member_ == Member::lastSynced) return Double(static_cast<double>(value));
        return ignored() || (value <= std::uint64_t{std::numeric_limits<std::int64_t>::max()} &&
                             takeInteger(static_cast<std::int64_t>(value)));
    }
    bool Double(double value) {
        if (ignored()) return true;
        if (member_ == Member::lastSynced) {
            state_.lastSynced = Date{value};
            return true;
        }
        constexpr double limit = 9007199254740992.0;  // up to here every whole number is a double
        return value == std::trunc(value) && std::abs(value) <= limit &&
               takeInteger(static_cast<std::int64_t>(value));
    }
    bool RawNumber(const char*, rapidjson::SizeType, bool) { return false; }  // never comes

    bool StartObject() { return ++depth_ <= greatestDepth && (skip() || enterObject()); }
    bool StartArray() { return ++depth_ <= greatestDepth && (skip() || enterArray()); }
    bool EndObject(rapidjson::SizeType) { return leave(); }
    bool EndArray(rapidjson::SizeType) { return leave(); }

private:
    struct Item {
        SharedString id, device;
        std::optional<SharedString> payload;
        std::int64_t revision = 0;
        bool redacted = false;
    };

    bool skipping() const { return skipDepth_ != 0; }
    bool ignored() const { return skipping() || member_ == Member::unknown; }
    bool skip() {
        if (place_ == Place::root || !ignored()) return false;
        if (!skipping()) skipDepth_ = depth_;
        return true;
    }
    bool found() {
        (place_ == Place::item     ? inItem_
         : place_ == Place::ledger ? inLedger_
                                   : inDocument_) |= bit(member_);
        return true;
    }
    void enter(Place place, Member member = Member::entry) {
        place_ = place;
        member_ = member;
    }
    // Ids stand in several places, and are held once.
    SharedString idOf(std::string_view text) const {
        const auto known = ledger_.items.find(text);
        return known == ledger_.items.end() ? SharedString(text) : known->first;
    }

    bool takeText(std::string_view text);
    bool takeBytes(std::string_view base64, std::optional<SharedString>& value);
    bool takeInteger(std::int64_t value);
    bool enterObject();
    bool enterArray();
    bool leave();
    bool finishItem();
    bool finishLedger();

    Place place_ = Place::root;
    Member member_ = Member::entry;
    std::string_view key_;
    int depth_ = 0;
    int skipDepth_ = 0;  // where the unknown value began; none is skipped at 0
    unsigned inDocument_ = 0, inLedger_ = 0, inItem_ = 0;  // members that were there
    bool complete_ = false;

    SyncState state_;
    SyncLedger::Parts ledger_;
    struct BaselineEntry {
        std::string_view id, base64;
        bool isTheItems = false;
    };
    std::vector<BaselineEntry> baseline_;
    std::size_t nextInBaseline_ = 0;  // where the next item's is, if both are sorted
    Item item_;
    std::string_view itemKey_, itemBase64_;
};

bool Receiver::takeBytes(std::string_view base64, std::optional<SharedString>& value) {
    value = json::bytesOfBase64(base64);
    return value.has_value();
}

bool Receiver::takeText(std::string_view text) {
    if (place_ == Place::baseline) {
        baseline_.push_back({key_, text});
        return true;
    }
    if (place_ == Place::records) {
        auto bytes = json::bytesOfBase64(text);
        if (!bytes) return false;
        state_.records.insert_or_assign(idOf(key_), *std::move(bytes));
        return true;
    }
    if (place_ == Place::pending) {
        state_.pending.insert(idOf(text));
        return true;
    }
    switch (member_) {
        case Member::owner:
            state_.owner = text;
            return found();
        case Member::state:
            return takeBytes(text, state_.state) && found();
        case Member::device: {
            auto& device = place_ == Place::item ? item_.device : ledger_.device;
            if (device != text) device = text;
            return found();
        }
        case Member::id:
            item_.id = text;
            return found();
        case Member::payload:
            itemBase64_ = text;
            return takeBytes(text, item_.payload) && found();
        default:
            return false;
    }
}

bool Receiver::takeInteger(std::int64_t value) {
    if (ignored()) return true;
    if (place_ == Place::diagnostics) {
        state_.diagnostics->insert_or_assign(std::string(key_), value);
        return true;
    }
    if (member_ == Member::lastSynced) {
        state_.lastSynced = Date{static_cast<double>(value)};
        return true;
    }
    if (member_ != Member::clock && member_ != Member::revision) return false;
    (member_ == Member::clock ? ledger_.clock : item_.revision) = value;
    return found();
}

bool Receiver::enterObject() {
    if (place_ == Place::root) {
        enter(Place::document);
    } else if (place_ == Place::items) {
        itemKey_ = key_;
        item_.payload.reset();
        inItem_ = 0;
        enter(Place::item);
    } else if (place_ == Place::document && member_ == Member::diagnostics) {
        state_.diagnostics.emplace();
        enter(Place::diagnostics);
    } else if (place_ == Place::document && member_ == Member::ledger) {
        ledger_ = {};
        baseline_.clear();
        nextInBaseline_ = 0;
        inLedger_ = 0;
        enter(Place::ledger);
    } else if (place_ == Place::document && member_ == Member::records) {
        state_.records.clear();
        enter(Place::records);
    } else if (place_ == Place::ledger && member_ == Member::baseline) {
        baseline_.clear();
        nextInBaseline_ = 0;
        enter(Place::baseline);
    } else if (place_ == Place::ledger && member_ == Member::items) {
        ledger_.items.clear();
        ledger_.differences.clear();
        nextInBaseline_ = 0;
        for (auto& entry : baseline_) entry.isTheItems = false;
        enter(Place::items);
    } else {
        return false;
    }
    return true;
}

bool Receiver::enterArray() {
    if (place_ != Place::document || member_ != Member::pending) return false;
    state_.pending.clear();
    enter(Place::pending);
    return true;
}

bool Receiver::finishItem() {
    if ((inItem_ & requiredInItem) != requiredInItem || item_.id != itemKey_) return false;
    ledger_.items.insert_or_assign(
        item_.id, SyncItem(item_.id, item_.payload, item_.revision, item_.device, item_.redacted));

    // The baseline is written before the items, in the same order, and is mostly the same: then it
    // needs no decoding. What is not found here is looked at in the end.
    while (nextInBaseline_ < baseline_.size() && baseline_[nextInBaseline_].id < itemKey_)
        ++nextInBaseline_;
    auto* same = nextInBaseline_ < baseline_.size() ? &baseline_[nextInBaseline_] : nullptr;
    if (same && same->id == itemKey_ && item_.payload && same->base64 == itemBase64_)
        same->isTheItems = true;
    else if (item_.payload)
        ledger_.differences.emplace(item_.id, std::nullopt);
    return true;
}

// Keeps of the baseline what is not the items'.
bool Receiver::finishLedger() {
    if ((inLedger_ & requiredInLedger) != requiredInLedger) return false;
    for (const auto& entry : baseline_) {
        if (entry.isTheItems) continue;
        auto payload = json::bytesOfBase64(entry.base64);
        if (!payload) return false;
        const auto item = ledger_.items.find(entry.id);
        if (item != ledger_.items.end() && item->second.payload == payload)
            ledger_.differences.erase(item->first);
        else
            ledger_.differences.insert_or_assign(idOf(entry.id), std::move(payload));
    }
    return true;
}

bool Receiver::leave() {
    --depth_;
    if (skipping()) {
        if (depth_ < skipDepth_) skipDepth_ = 0;
        return true;
    }
    switch (place_) {
        case Place::root:
            return false;
        case Place::item:
            if (!finishItem()) return false;
            enter(Place::items);
            return true;
        case Place::items:
        case Place::baseline:
            enter(Place::ledger, place_ == Place::items ? Member::items : Member::baseline);
            return found();
        case Place::ledger:
            if (!finishLedger()) return false;
            enter(Place::document, Member::ledger);
            return found();
        case Place::records:
        case Place::pending:
            enter(Place::document, place_ == Place::records ? Member::records : Member::pending);
            return found();
        case Place::diagnostics:
            enter(Place::document);
            return true;
        case Place::document:
            break;
    }
    if ((inDocument_ & requiredInDocument) != requiredInDocument) return false;
    complete_ = true;
    enter(Place::root);
    return true;
}

}  // namespace

SyncState decodeSyncDocument(std::string document) {
    if (!text::isValidUtf8(document)) throw SyncFormatError("not well-formed UTF-8");
    // Recursion is bounded, since the receiver refuses too great a depth. The parser may look at
    // fifteen bytes behind the end.
    constexpr unsigned flags = rapidjson::kParseInsituFlag | rapidjson::kParseFullPrecisionFlag;
    const std::size_t size = document.size();
    document.append(16, '\0');
    Receiver receiver;
    rapidjson::Reader reader;
    rapidjson::InsituStringStream stream(document.data());
    const auto result = reader.Parse<flags>(stream, receiver);
    // The parser takes a zero byte for the end.
    if (result.IsError() || stream.Tell() != size || !receiver.isComplete())
        throw SyncFormatError("not well-formed, or of another shape, at byte " +
                              std::to_string(result.Offset()));
    return receiver.take();
}

}  // namespace quorvi
