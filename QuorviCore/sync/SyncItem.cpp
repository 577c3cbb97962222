#include "QuorviCore/sync/SyncItem.h"

#include <algorithm>
#include <charconv>
#include <tuple>
#include <utility>

#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/json/Base64.h"
#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/json/JsonWriting.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

// Removes the text from a dictation's payload. Other payloads stay as they are.
void takeOutText(SharedString& payload) {
    try {
        auto record = decodeRecord(payload.string());
        record.text.reset();
        auto bare = encodeRecord(record);
        if (payload != bare) payload = SharedString(bare);
    } catch (const HistoryFormatError&) {
        return;
    }
}

// Reads the canonical form.
class CanonicalReader {
public:
    explicit CanonicalReader(std::string_view json) : rest_(json) {}

    bool pass(std::string_view literal) {
        if (!rest_.starts_with(literal)) return false;
        rest_.remove_prefix(literal.size());
        return true;
    }
    // Reads up to and including the quotation mark. Returns false if anything is escaped.
    bool text(std::string_view& value) {
        const auto end = rest_.find('"');
        if (end == rest_.npos) return false;
        value = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        return std::ranges::all_of(
            value, [](char c) { return static_cast<unsigned char>(c) >= 0x20 && c != '\\'; });
    }
    // Does not check the digits.
    bool base64(std::string_view& value) {
        const auto end = rest_.find('"');
        if (end == rest_.npos) return false;
        value = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        return true;
    }
    bool boolean(bool& value) {
        value = rest_.starts_with('t');
        return pass(value ? "true" : "false");
    }
    bool integer(std::int64_t& value) {
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        if (error != std::errc()) return false;
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return true;
    }
    bool isAtEnd() const { return rest_.empty(); }

private:
    std::string_view rest_;
};

// A fast path for the form that every device writes. Returns nullopt for any other, valid or not.
std::optional<SyncItem> decodeCanonical(std::string_view json) {
    CanonicalReader reader(json);
    std::string_view device, id, base64;
    bool redacted = false;
    std::int64_t revision = 0;
    std::optional<SharedString> payload;
    if (!reader.pass(R"({"device":")") || !reader.text(device) || !reader.pass(R"(,"id":")") ||
        !reader.text(id))
        return std::nullopt;
    if (reader.pass(R"(,"payload":")")) {
        if (!reader.base64(base64)) return std::nullopt;
        payload = json::bytesOfBase64(base64);
        if (!payload) return std::nullopt;
    }
    if (!reader.pass(R"(,"redacted":)") || !reader.boolean(redacted) ||
        !reader.pass(R"(,"revision":)") || !reader.integer(revision) || !reader.pass("}") ||
        !reader.isAtEnd() || !text::isValidUtf8(device) || !text::isValidUtf8(id))
        return std::nullopt;
    return SyncItem(id, std::move(payload), revision, device, redacted);
}

// Returns a whole number, which may be written as a decimal fraction.
std::optional<std::int64_t> integerOf(const rapidjson::Value& value) {
    if (value.IsInt64()) return value.GetInt64();
    if (!value.IsDouble()) return std::nullopt;
    const double number = value.GetDouble();
    constexpr double limit = 9007199254740992.0;  // up to here every whole number is a double
    if (!(number >= -limit && number <= limit)) return std::nullopt;
    const auto whole = static_cast<std::int64_t>(number);
    return static_cast<double>(whole) == number ? std::optional(whole) : std::nullopt;
}

std::optional<std::string_view> textIn(const rapidjson::Value& object, const char* key) {
    const auto found = object.FindMember(key);
    if (found == object.MemberEnd() || !found->value.IsString()) return std::nullopt;
    const std::string_view value(found->value.GetString(), found->value.GetStringLength());
    return json::isFreeOfSurrogates(value) ? std::optional(value) : std::nullopt;
}

}  // namespace

SyncItem::SyncItem(SharedString itemId, std::optional<SharedString> bytes, std::int64_t version,
                   SharedString writer, bool isRedacted)
    : id(std::move(itemId)),
      payload(std::move(bytes)),
      revision(version),
      device(std::move(writer)),
      redacted(isRedacted) {}

SyncItem SyncItem::merging(const SyncItem& other) const {
    const bool otherWins = deleted() != other.deleted() ? other.deleted()
                                                        : std::tie(other.revision, other.device) >
                                                              std::tie(revision, device);
    SyncItem result = otherWins ? other : *this;
    result.redacted = redacted || other.redacted;
    if (result.redacted && result.payload) takeOutText(*result.payload);
    return result;
}

void SyncItem::appendEncoded(std::string& out) const {
    out += R"({"device":)";
    json::appendString(out, device);
    out += R"(,"id":)";
    json::appendString(out, id);
    if (payload) {
        out += R"(,"payload":")";
        json::appendBase64(out, *payload);
        out += '"';
    }
    out += R"(,"redacted":)";
    json::appendBoolean(out, redacted);
    out += R"(,"revision":)";
    json::appendNumber(out, revision);
    out += '}';
}

std::string SyncItem::encoded() const {
    std::string out;
    out.reserve(128 + id.size() + device.size() +
                (payload ? json::base64Size(payload->size()) : 0));
    appendEncoded(out);
    return out;
}

std::optional<SyncItem> SyncItem::decode(std::string_view json) {
    if (auto item = decodeCanonical(json)) return item;
    rapidjson::Document document;
    if (!json::parse(document, json) || !document.IsObject()) return std::nullopt;
    const auto id = textIn(document, "id");
    const auto device = textIn(document, "device");
    const auto revision = document.FindMember("revision");
    const auto redacted = document.FindMember("redacted");
    const auto payload = document.FindMember("payload");
    const auto end = document.MemberEnd();
    if (!id || !device || revision == end || redacted == end || !redacted->value.IsBool())
        return std::nullopt;
    const auto version = integerOf(revision->value);
    if (!version) return std::nullopt;
    std::optional<SharedString> bytes;
    if (payload != end && !payload->value.IsNull()) {
        const auto base64 = textIn(document, "payload");
        if (base64) bytes = json::bytesOfBase64(*base64);
        if (!bytes) return std::nullopt;
    }
    return SyncItem(*id, std::move(bytes), *version, *device, redacted->value.GetBool());
}

void sortNewestFirst(std::vector<SyncItem>& items) {
    std::ranges::stable_sort(items, [](const SyncItem& a, const SyncItem& b) {
        return std::tie(a.revision, a.device) > std::tie(b.revision, b.device);
    });
}

}  // namespace quorvi
