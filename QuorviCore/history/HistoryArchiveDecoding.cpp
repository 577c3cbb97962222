#include <functional>
#include <optional>
#include <unordered_set>

#include "QuorviCore/base/ColdMemory.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/json/StrictReader.h"

namespace quorvi {

namespace {

// Keeps one copy of each text that many records have in common.
class SharedTexts {
public:
    // Replaces the old text, which is often the same.
    void replace(SharedString& text, std::string_view value) {
        if (text == value) return;
        const auto found = texts_.find(value);
        text = found != texts_.end() ? *found : *texts_.emplace(value).first;
    }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view s) const {
            return std::hash<std::string_view>()(s);
        }
    };
    std::unordered_set<SharedString, Hash, std::equal_to<>> texts_;
};

using json::Scalar;

// Reads a document or a single record, as its root shape says. The functions return false for an
// invalid value.
struct Reader : json::StrictReader<Reader> {
    using StrictReader::StrictReader;

    bool take(SharedString& text, const Scalar& value) {
        texts.replace(text, value.text);
        return true;
    }
    static bool take(double& number, const Scalar& value) {
        const auto read = json::doubleOf(value.text);
        number = read.value_or(0);
        return read.has_value();
    }
    static bool take(std::int64_t& number, const Scalar& value) {
        const auto read = json::integerOf(value.text);
        number = read.value_or(0);
        return read.has_value();
    }
    bool takeId(const Scalar& value) {
        const auto id = Uuid::parse(value.text);
        record.id = id.value_or(Uuid{});
        return id.has_value();
    }
    bool takeText(const Scalar& value) {
        if (value.type == json::null)
            record.text.reset();
        else if (coldTexts)
            record.text = coldTexts->keep(value.text);
        else
            record.text = value.text;
        return true;
    }
    bool dropEstimate() {
        record.costEstimate.reset();
        return true;
    }

    void beginRecords() { records = {}; }
    void beginRecord() {
        record.text.reset();
        record.costEstimate.reset();
    }
    bool endListedRecord() {
        records.add(record);
        return true;
    }
    bool endEstimate() {
        record.costEstimate = estimate;
        return true;
    }

    std::int64_t version = 0;
    DictationRecord record{.id = {}};  // keeps the texts of the last one, since many are the same
    DictationCostEstimate estimate;
    DictationRecords::Builder records;
    SharedTexts texts;
    std::optional<ColdStrings> coldTexts;  // where the records' texts go, if not into the heap
};

using Member = json::Member<Reader>;
using Shape = json::Shape<Reader>;

constexpr Member estimateMembers[]{
    {"modelID", json::text, [](auto& r, auto& v) { return r.take(r.estimate.modelID, v); }},
    {"pricingDate", json::text, [](auto& r, auto& v) { return r.take(r.estimate.pricingDate, v); }},
    {"usdPerMinute", json::number,
     [](auto& r, auto& v) { return r.take(r.estimate.usdPerMinute, v); }},
};
constexpr Shape estimateShape{.members = estimateMembers, .end = &Reader::endEstimate};

constexpr Member recordMembers[]{
    {"appName", json::text, [](auto& r, auto& v) { return r.take(r.record.appName, v); }},
    {"audioSeconds", json::number,
     [](auto& r, auto& v) { return r.take(r.record.audioSeconds, v); }},
    {"costEstimate", json::object | json::null, [](auto& r, auto&) { return r.dropEstimate(); },
     &estimateShape},
    {"date", json::number,
     [](auto& r, auto& v) { return r.take(r.record.date.secondsSinceReferenceDate, v); }},
    {"id", json::text, [](auto& r, auto& v) { return r.takeId(v); }},
    {"language", json::text, [](auto& r, auto& v) { return r.take(r.record.language, v); }},
    {"text", json::text | json::null, [](auto& r, auto& v) { return r.takeText(v); }},
    {"wordCount", json::number, [](auto& r, auto& v) { return r.take(r.record.wordCount, v); }},
};
constexpr Shape singleRecord{.members = recordMembers, .begin = &Reader::beginRecord};
constexpr Shape listedRecord{
    .members = recordMembers, .begin = &Reader::beginRecord, .end = &Reader::endListedRecord};

constexpr Member recordEntry{.types = json::object, .shape = &listedRecord};
constexpr Shape recordList{.entry = &recordEntry, .begin = &Reader::beginRecords};

constexpr Member documentMembers[]{
    {"records", json::list, nullptr, &recordList},
    {"version", json::number, [](auto& r, auto& v) { return r.take(r.version, v); }},
};
constexpr Shape documentShape{.members = documentMembers};

}  // namespace

HistoryArchive HistoryArchive::decode(std::string document) {
    Reader reader(documentShape);
    reader.coldTexts.emplace();
    reader.read<HistoryFormatError>(document);
    return {reader.version, reader.records.build()};
}

DictationRecord decodeRecord(std::string text) {
    Reader reader(singleRecord);
    reader.read<HistoryFormatError>(text);
    return std::move(reader.record);
}

struct DictationRecordDecoder::State {
    Reader reader{singleRecord};
    std::string text;  // parsed in place
};

DictationRecordDecoder::DictationRecordDecoder(std::size_t count)
    : state_(std::make_unique<State>()) {
    if (count > 1000) state_->reader.coldTexts.emplace();
}
DictationRecordDecoder::~DictationRecordDecoder() = default;

DictationRecord DictationRecordDecoder::decode(std::string_view json) {
    state_->text = json;
    state_->reader.read<HistoryFormatError>(state_->text);
    return state_->reader.record;
}

}  // namespace quorvi
