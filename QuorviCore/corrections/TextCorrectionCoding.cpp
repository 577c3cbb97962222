#include "QuorviCore/corrections/TextCorrectionCoding.h"

#include <algorithm>
#include <cmath>

#include "QuorviCore/Error.h"
#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/json/JsonWriting.h"

namespace quorvi {

namespace {

void append(std::string& out, const TextCorrection& rule) {
    const double date = rule.updatedAt.secondsSinceReferenceDate;
    if (!std::isfinite(date)) throw QuorviError::message(say::correctionDateInvalid());
    out += R"({"id":)";
    json::appendString(out, rule.id);
    out += R"(,"isEnabled":)";
    json::appendBoolean(out, rule.isEnabled);
    out += R"(,"learnedAutomatically":)";
    json::appendBoolean(out, rule.learnedAutomatically);
    out += R"(,"original":)";
    json::appendString(out, rule.original);
    out += R"(,"replacement":)";
    json::appendString(out, rule.replacement);
    out += R"(,"updatedAt":)";
    json::appendNumber(out, date);
    out += '}';
}

// Reads the members of an object. ok() is false if one was missing or of another type.
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
    // Returns the canonical, upper-case form.
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

}  // namespace

std::string encodeCorrection(const TextCorrection& rule) {
    std::string out;
    append(out, rule);
    return out;
}

std::string encodeCorrections(const std::vector<TextCorrection>& rules) {
    std::string out = "[";
    for (const auto& rule : rules) {
        if (out.size() > 1) out += ',';
        append(out, rule);
    }
    out += ']';
    return out;
}

std::optional<TextCorrection> decodeCorrection(std::string_view text) {
    rapidjson::Document document;
    if (!json::parse(document, text)) return std::nullopt;
    return read(document);
}

std::optional<std::vector<TextCorrection>> decodeCorrections(std::string_view text) {
    rapidjson::Document document;
    if (!json::parse(document, text) || !document.IsArray()) return std::nullopt;
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
