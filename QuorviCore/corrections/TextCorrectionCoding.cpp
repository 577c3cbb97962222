#include "QuorviCore/corrections/TextCorrectionCoding.h"

#include <rapidjson/document.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "QuorviCore/text/Text.h"
#include "QuorviCore/transcription/QuorviError.h"

namespace quorvi {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void writeString(Writer& writer, std::string_view key, const std::string& value) {
    writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
    const std::string text = text::wellFormed(value);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

// The shortest digits that read back as the same double.
void writeNumber(Writer& writer, std::string_view key, double value) {
    if (!std::isfinite(value))
        throw QuorviError::message("A correction has no valid date and could not be saved.");
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
    writer.RawValue(digits.data(), static_cast<std::size_t>(end - digits.data()),
                    rapidjson::kNumberType);
}

void write(Writer& writer, const TextCorrection& rule) {
    writer.StartObject();
    writeString(writer, "id", rule.id);
    writer.Key("isEnabled");
    writer.Bool(rule.isEnabled);
    writer.Key("learnedAutomatically");
    writer.Bool(rule.learnedAutomatically);
    writeString(writer, "original", rule.original);
    writeString(writer, "replacement", rule.replacement);
    writeNumber(writer, "updatedAt", rule.updatedAt.secondsSinceReferenceDate);
    writer.EndObject();
}

// Reads the members of one object; a member that is missing or of another type makes it fail.
class Reader {
public:
    explicit Reader(const rapidjson::Value& object) : object_(object), ok_(object.IsObject()) {}

    std::string string(const char* key) {
        const auto* value = member(key);
        if (!require(value && value->IsString())) return {};
        return {value->GetString(), value->GetStringLength()};
    }
    bool boolean(const char* key) {
        const auto* value = member(key);
        return require(value && value->IsBool()) && value->GetBool();
    }
    double number(const char* key) {
        const auto* value = member(key);
        return require(value && value->IsNumber()) ? value->GetDouble() : 0;
    }
    // Upper-cased, which is the canonical form.
    std::string uuid(const char* key) {
        std::string id = string(key);
        std::ranges::transform(id, id.begin(), [](char c) {
            return c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
        });
        require(isUuid(id));
        return id;
    }
    bool ok() const { return ok_; }

private:
    const rapidjson::Value* member(const char* key) const {
        if (!object_.IsObject()) return nullptr;
        const auto found = object_.FindMember(key);
        return found == object_.MemberEnd() ? nullptr : &found->value;
    }
    bool require(bool condition) {
        ok_ = ok_ && condition;
        return condition;
    }

    const rapidjson::Value& object_;
    bool ok_;
};

std::optional<TextCorrection> read(const rapidjson::Value& value) {
    Reader reader(value);
    TextCorrection rule{.id = reader.uuid("id"),
                        .original = reader.string("original"),
                        .replacement = reader.string("replacement"),
                        .isEnabled = reader.boolean("isEnabled"),
                        .learnedAutomatically = reader.boolean("learnedAutomatically"),
                        .updatedAt = {reader.number("updatedAt")}};
    if (!reader.ok()) return std::nullopt;
    return rule;
}

// Hostile nesting costs memory of its own length and no stack. The encoding is checked beforehand,
// which takes a fraction of the time that the parser's own check does.
bool parse(rapidjson::Document& document, std::string_view json) {
    if (!text::isValidUtf8(json)) return false;
    constexpr unsigned flags = rapidjson::kParseFullPrecisionFlag | rapidjson::kParseIterativeFlag;
    rapidjson::MemoryStream stream(json.data(), json.size());
    document.ParseStream<flags>(stream);
    return !document.HasParseError();
}

}  // namespace

std::string encodeCorrection(const TextCorrection& rule) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    write(writer, rule);
    return {buffer.GetString(), buffer.GetSize()};
}

std::string encodeCorrections(const std::vector<TextCorrection>& rules) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartArray();
    for (const auto& rule : rules) write(writer, rule);
    writer.EndArray();
    return {buffer.GetString(), buffer.GetSize()};
}

std::optional<TextCorrection> decodeCorrection(std::string_view json) {
    rapidjson::Document document;
    if (!parse(document, json)) return std::nullopt;
    return read(document);
}

std::optional<std::vector<TextCorrection>> decodeCorrections(std::string_view json) {
    rapidjson::Document document;
    if (!parse(document, json) || !document.IsArray()) return std::nullopt;
    std::vector<TextCorrection> rules;
    rules.reserve(document.Size());
    for (const auto& element : document.GetArray()) {
        auto rule = read(element);
        if (!rule) return std::nullopt;
        rules.push_back(*std::move(rule));
    }
    return rules;
}

}  // namespace quorvi
