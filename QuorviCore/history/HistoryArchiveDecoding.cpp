#ifdef __SSE2__
#define RAPIDJSON_SSE2  // strings are passed over sixteen bytes at a time
#endif
#include <rapidjson/reader.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <optional>
#include <unordered_set>

#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

using namespace std::string_view_literals;

// Deeper nesting, which only an unknown key's value can have, is refused.
constexpr int greatestDepth = 64;

// Texts that many records have in common are held once.
class SharedTexts {
public:
    const SharedString& get(std::string_view text, const SharedString& likely) {
        if (likely == text) return likely;
        const auto found = texts_.find(text);
        return found != texts_.end() ? *found : *texts_.emplace(text).first;
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

enum class Member {
    none,
    unknown,
    version,
    records,
    id,
    date,
    text,
    wordCount,
    audioSeconds,
    appName,
    language,
    costEstimate,
    modelID,
    usdPerMinute,
    pricingDate,
};

constexpr unsigned bit(Member member) {
    return 1U << static_cast<unsigned>(member);
}

// What an object must have.
constexpr unsigned requiredInDocument = bit(Member::version) | bit(Member::records);
constexpr unsigned requiredInRecord = bit(Member::id) | bit(Member::date) | bit(Member::wordCount) |
                                      bit(Member::audioSeconds) | bit(Member::appName) |
                                      bit(Member::language);
constexpr unsigned requiredInEstimate =
    bit(Member::modelID) | bit(Member::usdPerMinute) | bit(Member::pricingDate);

enum class Place { root, document, records, record, estimate };

Member memberIn(Place place, std::string_view name) {
    struct Entry {
        Place place;
        std::string_view name;
        Member member;
    };
    static constexpr std::array entries{
        Entry{Place::record, "appName"sv, Member::appName},
        Entry{Place::record, "audioSeconds"sv, Member::audioSeconds},
        Entry{Place::record, "costEstimate"sv, Member::costEstimate},
        Entry{Place::record, "date"sv, Member::date},
        Entry{Place::record, "id"sv, Member::id},
        Entry{Place::record, "language"sv, Member::language},
        Entry{Place::record, "text"sv, Member::text},
        Entry{Place::record, "wordCount"sv, Member::wordCount},
        Entry{Place::estimate, "modelID"sv, Member::modelID},
        Entry{Place::estimate, "pricingDate"sv, Member::pricingDate},
        Entry{Place::estimate, "usdPerMinute"sv, Member::usdPerMinute},
        Entry{Place::document, "version"sv, Member::version},
        Entry{Place::document, "records"sv, Member::records},
    };
    for (const auto& entry : entries)
        if (entry.place == place && entry.name == name) return entry.member;
    return Member::unknown;
}

// Every number of the document is finite; one that is too great for a double is refused.
std::optional<double> numberIn(std::string_view digits) {
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error == std::errc::result_out_of_range) {
        // Too small is not too great: it is zero, or as near as a double comes.
        value = std::strtod(std::string(digits).c_str(), nullptr);
        return std::isfinite(value) ? std::optional(value) : std::nullopt;
    }
    return error == std::errc() && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

// A whole number, however it is written.
std::optional<std::int64_t> integerIn(std::string_view digits) {
    std::int64_t value = 0;
    const char* last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, value);
    if (end == last) return error == std::errc() ? std::optional(value) : std::nullopt;
    const auto number = numberIn(digits);
    constexpr double limit = 9223372036854775808.0;  // 2 to the power of 63
    if (!number || *number != std::trunc(*number) || *number < -limit || *number >= limit)
        return std::nullopt;
    return static_cast<std::int64_t>(*number);
}

// Takes the parser's events. Returning false ends the parsing.
class Receiver {
public:
    // `first` is what the outermost object is.
    explicit Receiver(Place first) : first_(first) {}

    // Another document or record may come; the texts stay to be shared with it.
    void restart() {
        enter(Place::root);
        depth_ = skipDepth_ = 0;
        complete_ = false;
        beginRecord();
    }
    bool isComplete() const { return complete_; }
    const DictationRecord& record() const { return record_; }
    DictationRecord takeRecord() { return std::move(record_); }
    HistoryArchive takeArchive() { return {version_, records_.build()}; }

    bool Key(const char* s, rapidjson::SizeType size, bool) {
        if (!skipping()) member_ = memberIn(place_, {s, size});
        return json::isFreeOfSurrogates({s, size});
    }
    bool String(const char* s, rapidjson::SizeType size, bool) {
        return json::isFreeOfSurrogates({s, size}) && (ignored() || takeText({s, size}));
    }
    bool RawNumber(const char* s, rapidjson::SizeType size, bool) {
        return ignored() || takeNumber({s, size});
    }
    bool Null() {
        if (member_ == Member::text) record_.text.reset();
        if (member_ == Member::costEstimate) record_.costEstimate.reset();
        return ignored() || member_ == Member::text || member_ == Member::costEstimate;
    }
    bool Bool(bool) { return ignored(); }
    bool StartObject() { return ++depth_ <= greatestDepth && (skip() || enterObject()); }
    bool StartArray() { return ++depth_ <= greatestDepth && (skip() || enterArray()); }
    bool EndObject(rapidjson::SizeType) { return leave(); }
    bool EndArray(rapidjson::SizeType) { return leave(); }

    // Numbers come as they are written, never like this.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

private:
    bool skipping() const { return skipDepth_ != 0; }
    bool inObject() const { return place_ != Place::root && place_ != Place::records; }
    // Whether the value that comes now belongs to an unknown key.
    bool ignored() const { return skipping() || (inObject() && member_ == Member::unknown); }
    bool skip() {
        if (!ignored()) return false;
        if (!skipping()) skipDepth_ = depth_;
        return true;
    }
    void enter(Place place) {
        place_ = place;
        member_ = Member::none;
    }

    bool takeText(std::string_view value);
    bool takeNumber(std::string_view digits);
    bool enterObject();
    bool enterArray();
    bool leave();
    void beginRecord() {
        record_.text.reset();
        record_.costEstimate.reset();
        inRecord_ = 0;
    }

    const Place first_;
    Place place_ = Place::root;
    Member member_ = Member::none;
    int depth_ = 0;
    int skipDepth_ = 0;  // where the unknown value began; none is skipped at 0
    unsigned inDocument_ = 0, inRecord_ = 0, inEstimate_ = 0;  // members that were there
    bool complete_ = false;

    std::int64_t version_ = 0;
    DictationRecord record_{.id = {}};  // keeps the last one's texts, since many are the same
    DictationCostEstimate estimate_;
    DictationRecords::Builder records_;
    SharedTexts texts_;
};

bool Receiver::takeText(std::string_view value) {
    switch (member_) {
        case Member::id: {
            const auto id = Uuid::parse(value);
            record_.id = id.value_or(Uuid{});
            inRecord_ |= id ? bit(member_) : 0;
            return id.has_value();
        }
        case Member::text:
            record_.text = value;
            return true;
        case Member::appName:
            record_.appName = texts_.get(value, record_.appName);
            break;
        case Member::language:
            record_.language = texts_.get(value, record_.language);
            break;
        case Member::modelID:
            estimate_.modelID = texts_.get(value, estimate_.modelID);
            break;
        case Member::pricingDate:
            estimate_.pricingDate = texts_.get(value, estimate_.pricingDate);
            break;
        default:
            return false;
    }
    (place_ == Place::record ? inRecord_ : inEstimate_) |= bit(member_);
    return true;
}

bool Receiver::takeNumber(std::string_view digits) {
    if (member_ == Member::version || member_ == Member::wordCount) {
        const auto value = integerIn(digits);
        if (!value) return false;
        (member_ == Member::version ? version_ : record_.wordCount) = *value;
        (member_ == Member::version ? inDocument_ : inRecord_) |= bit(member_);
        return true;
    }
    const auto value = numberIn(digits);
    if (!value) return false;
    switch (member_) {
        case Member::date:
            record_.date = {*value};
            break;
        case Member::audioSeconds:
            record_.audioSeconds = *value;
            break;
        case Member::usdPerMinute:
            estimate_.usdPerMinute = *value;
            break;
        default:
            return false;
    }
    (place_ == Place::record ? inRecord_ : inEstimate_) |= bit(member_);
    return true;
}

bool Receiver::enterObject() {
    if (place_ == Place::root) {
        enter(first_);
    } else if (place_ == Place::records) {
        beginRecord();
        enter(Place::record);
    } else if (place_ == Place::record && member_ == Member::costEstimate) {
        inEstimate_ = 0;
        enter(Place::estimate);
    } else {
        return false;
    }
    return true;
}

bool Receiver::enterArray() {
    if (place_ != Place::document || member_ != Member::records) return false;
    records_ = {};
    enter(Place::records);
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
        case Place::estimate:
            if (inEstimate_ != requiredInEstimate) return false;
            record_.costEstimate = estimate_;
            enter(Place::record);
            return true;
        case Place::record:
            if (inRecord_ != requiredInRecord) return false;
            if (first_ == Place::record) break;
            records_.add(record_);
            enter(Place::records);
            return true;
        case Place::records:
            inDocument_ |= bit(Member::records);
            enter(Place::document);
            return true;
        case Place::document:
            if (inDocument_ != requiredInDocument) return false;
            break;
    }
    complete_ = true;
    enter(Place::root);
    return true;
}

void parse(std::string& document, Receiver& receiver) {
    // Looked for beforehand, malformed text costs the parser nothing: it can pass over strings in
    // blocks.
    if (!text::isValidUtf8(document)) throw HistoryFormatError("not well-formed UTF-8");
    // Recursion is bounded, since the receiver refuses too great a depth. The parser may look at
    // fifteen bytes behind the end.
    constexpr unsigned flags = rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag;
    const std::size_t size = document.size();
    document.append(16, '\0');
    rapidjson::Reader reader;
    rapidjson::InsituStringStream stream(document.data());
    const auto result = reader.Parse<flags>(stream, receiver);
    // The parser takes a zero byte for the end.
    if (result.IsError() || stream.Tell() != size || !receiver.isComplete())
        throw HistoryFormatError("not well-formed, or of another shape, at byte " +
                                 std::to_string(result.Offset()));
}

}  // namespace

HistoryArchive HistoryArchive::decode(std::string document) {
    Receiver receiver(Place::document);
    parse(document, receiver);
    return receiver.takeArchive();
}

DictationRecord decodeRecord(std::string text) {
    Receiver receiver(Place::record);
    parse(text, receiver);
    return receiver.takeRecord();
}

struct DictationRecordDecoder::State {
    Receiver receiver{Place::record};
    std::string text;  // is parsed in place
};

DictationRecordDecoder::DictationRecordDecoder() : state_(std::make_unique<State>()) {}
DictationRecordDecoder::~DictationRecordDecoder() = default;

DictationRecord DictationRecordDecoder::decode(std::string_view json) {
    state_->text = json;
    state_->receiver.restart();
    parse(state_->text, state_->receiver);
    return state_->receiver.record();
}

}  // namespace quorvi
