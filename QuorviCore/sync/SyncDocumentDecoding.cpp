#include <utility>
#include <vector>

#include "QuorviCore/json/Base64.h"
#include "QuorviCore/json/StrictReader.h"
#include "QuorviCore/sync/SyncDocument.h"

namespace quorvi {

namespace {

using json::Scalar;

// The functions return false for an invalid value.
struct Reader : json::StrictReader<Reader> {
    using StrictReader::StrictReader;

    // An id is in several places; they share its bytes.
    SharedString idOf(std::string_view text) const {
        const auto known = ledger.items.find(text);
        return known == ledger.items.end() ? SharedString(text) : known->first;
    }

    static bool take(bool& flag, const Scalar& value) {
        flag = value.isTrue;
        return true;
    }
    static bool take(std::int64_t& number, const Scalar& value) {
        const auto read = json::integerOf(value.text);
        number = read.value_or(0);
        return read.has_value();
    }
    static bool take(SharedString& text, const Scalar& value) {
        if (text != value.text) text = value.text;
        return true;
    }
    static bool take(std::optional<SharedString>& text, const Scalar& value) {
        text.reset();
        if (value.type != json::null) text = value.text;
        return true;
    }
    static bool takeBytes(std::optional<SharedString>& bytes, const Scalar& value) {
        bytes.reset();
        if (value.type == json::null) return true;
        bytes = json::bytesOfBase64(value.text);
        return bytes.has_value();
    }
    bool takeLastSynced(const Scalar& value) {
        state.lastSynced.reset();
        if (value.type == json::null) return true;
        const auto seconds = json::doubleOf(value.text);
        if (seconds) state.lastSynced = Date{*seconds};
        return seconds.has_value();
    }
    bool takeItemId(const Scalar& value) {
        if (itemId != value.text) itemId = ids.keep(value.text);
        return true;
    }
    bool takePayload(const Scalar& value) {
        itemBase64 = value.text;
        itemPayload.reset();
        if (value.type == json::null) return true;
        itemPayload = json::bytesOfBase64(value.text, &payloads);
        return itemPayload.has_value();
    }
    bool takeRecord(const Scalar& value) {
        auto bytes = json::bytesOfBase64(value.text, &records);
        if (bytes) state.records.insert_or_assign(idOf(key()), *std::move(bytes));
        return bytes.has_value();
    }
    bool takeBaselineEntry(const Scalar& value) {
        baseline.push_back({key(), value.text});
        return true;
    }
    bool takePending(const Scalar& value) {
        state.pending.insert(idOf(value.text));
        return true;
    }
    bool takeDiagnostic(const Scalar& value) {
        return take((*state.diagnostics)[std::string(key())], value);
    }
    bool dropDiagnostics() {
        state.diagnostics.reset();
        return true;
    }

    void beginDiagnostics() { state.diagnostics.emplace(); }
    void beginPending() { state.pending.clear(); }
    void beginRecords() { state.records.clear(); }
    void beginLedger() {
        ledger = {};
        beginBaseline();
    }
    void beginBaseline() {
        baseline.clear();
        nextInBaseline = 0;
    }
    void beginItems() {
        ledger.items.clear();
        ledger.differences.clear();
        nextInBaseline = 0;
        for (auto& entry : baseline) entry.isTheItems = false;
    }
    void beginItem() {
        itemKey = key();
        itemPayload.reset();
    }
    bool endItem();
    bool endLedger();

    SyncState state;
    SyncLedger::Parts ledger;
    // Where the state's strings go, apart from each other, since they are read at different times.
    ColdStrings ids, payloads, records;
    struct BaselineEntry {
        std::string_view id, base64;
        bool isTheItems = false;
    };
    std::vector<BaselineEntry> baseline;
    std::size_t nextInBaseline = 0;  // where the next item's is, if both are sorted

    // The item that is being read.
    std::string_view itemKey, itemBase64;
    SharedString itemId, itemDevice;
    std::optional<SharedString> itemPayload;
    std::int64_t itemRevision = 0;
    bool itemRedacted = false;
};

bool Reader::endItem() {
    if (itemId != itemKey) return false;
    ledger.items.insert_or_assign(
        itemId, SyncItem(itemId, itemPayload, itemRevision, itemDevice, itemRedacted));

    // The baseline is written before the items, in the same order, and is mostly the same: then it
    // needs no decoding. endLedger() handles entries that are not found here.
    while (nextInBaseline < baseline.size() && baseline[nextInBaseline].id < itemKey)
        ++nextInBaseline;
    auto* same = nextInBaseline < baseline.size() ? &baseline[nextInBaseline] : nullptr;
    if (same && same->id == itemKey && itemPayload && same->base64 == itemBase64)
        same->isTheItems = true;
    else if (itemPayload)
        ledger.differences.emplace(itemId, BaselineValue());
    return true;
}

// Keeps those entries of the baseline that differ from the items.
bool Reader::endLedger() {
    for (const auto& entry : baseline) {
        if (entry.isTheItems) continue;
        auto payload = json::bytesOfBase64(entry.base64);
        if (!payload) return false;
        const auto item = ledger.items.find(entry.id);
        if (item != ledger.items.end() && item->second.payload == payload)
            ledger.differences.erase(item->first);
        else
            ledger.differences.insert_or_assign(idOf(entry.id), BaselineValue{std::move(payload)});
    }
    return true;
}

using Member = json::Member<Reader>;
using Shape = json::Shape<Reader>;

constexpr Member itemMembers[]{
    {"device", json::text, [](auto& r, auto& v) { return r.take(r.itemDevice, v); }},
    {"id", json::text, [](auto& r, auto& v) { return r.takeItemId(v); }},
    {"payload", json::text | json::null, [](auto& r, auto& v) { return r.takePayload(v); }},
    {"redacted", json::boolean, [](auto& r, auto& v) { return r.take(r.itemRedacted, v); }},
    {"revision", json::number, [](auto& r, auto& v) { return r.take(r.itemRevision, v); }},
};
constexpr Shape itemShape{
    .members = itemMembers, .begin = &Reader::beginItem, .end = &Reader::endItem};
constexpr Member itemEntry{.types = json::object, .shape = &itemShape};
constexpr Shape itemMap{.entry = &itemEntry, .begin = &Reader::beginItems};

constexpr Member baselineEntry{"", json::text,
                               [](auto& r, auto& v) { return r.takeBaselineEntry(v); }};
constexpr Shape baselineMap{.entry = &baselineEntry, .begin = &Reader::beginBaseline};

constexpr Member ledgerMembers[]{
    {"baseline", json::object, nullptr, &baselineMap},
    {"clock", json::number, [](auto& r, auto& v) { return r.take(r.ledger.clock, v); }},
    {"device", json::text, [](auto& r, auto& v) { return r.take(r.ledger.device, v); }},
    {"items", json::object, nullptr, &itemMap},
};
constexpr Shape ledgerShape{
    .members = ledgerMembers, .begin = &Reader::beginLedger, .end = &Reader::endLedger};

constexpr Member diagnosticEntry{"", json::number,
                                 [](auto& r, auto& v) { return r.takeDiagnostic(v); }};
constexpr Shape diagnosticMap{.entry = &diagnosticEntry, .begin = &Reader::beginDiagnostics};

constexpr Member pendingEntry{"", json::text, [](auto& r, auto& v) { return r.takePending(v); }};
constexpr Shape pendingList{.entry = &pendingEntry, .begin = &Reader::beginPending};

constexpr Member recordEntry{"", json::text, [](auto& r, auto& v) { return r.takeRecord(v); }};
constexpr Shape recordMap{.entry = &recordEntry, .begin = &Reader::beginRecords};

constexpr Member documentMembers[]{
    {"cloud", json::text | json::null, [](auto& r, auto& v) { return r.take(r.state.cloud, v); }},
    {"diagnostics", json::object | json::null, [](auto& r, auto&) { return r.dropDiagnostics(); },
     &diagnosticMap},
    {"initialFetchComplete", json::boolean,
     [](auto& r, auto& v) { return r.take(r.state.initialFetchComplete, v); }},
    {"lastSynced", json::number | json::null, [](auto& r, auto& v) { return r.takeLastSynced(v); }},
    {"ledger", json::object, nullptr, &ledgerShape},
    {"owner", json::text | json::null, [](auto& r, auto& v) { return r.take(r.state.owner, v); }},
    {"pending", json::list, nullptr, &pendingList},
    {"records", json::object, nullptr, &recordMap},
    {"state", json::text | json::null,
     [](auto& r, auto& v) { return r.takeBytes(r.state.engineState, v); }},
};
constexpr Shape documentShape{.members = documentMembers};

}  // namespace

SyncState decodeSyncDocument(std::string document) {
    Reader reader(documentShape);
    reader.read<SyncFormatError>(document);
    reader.state.ledger = SyncLedger(std::move(reader.ledger));
    return std::move(reader.state);
}

}  // namespace quorvi
