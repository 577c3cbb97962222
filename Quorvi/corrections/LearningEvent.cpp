#include "Quorvi/corrections/LearningEvent.h"

#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/json/JsonWriting.h"

namespace quorvi {

namespace {

void append(std::string& out, const LearningEvent& event) {
    out += R"({"app":)";
    json::appendString(out, event.app);
    out += R"(,"code":)";
    json::appendString(out, event.code);
    out += R"(,"counts":{)";
    for (const auto& [name, count] : event.counts) {
        if (out.back() != '{') out += ',';
        json::appendString(out, name);
        out += ':';
        json::appendNumber(out, count);
    }
    out += R"(},"date":)";
    json::appendNumber(out, event.date.secondsSinceReferenceDate);
    out += '}';
}

std::string stringOf(const rapidjson::Value& value) {
    return {value.GetString(), value.GetStringLength()};
}

std::optional<LearningEvent> read(const rapidjson::Value& value) {
    if (!value.IsObject()) return std::nullopt;
    const auto member = [&value](const char* key) {
        const auto found = value.FindMember(key);
        return found == value.MemberEnd() ? nullptr : &found->value;
    };
    const auto* app = member("app");
    const auto* code = member("code");
    const auto* counts = member("counts");
    const auto* date = member("date");
    if (!app || !app->IsString() || !code || !code->IsString()) return std::nullopt;
    if (!counts || !counts->IsObject() || !date || !date->IsNumber()) return std::nullopt;
    LearningEvent event{
        .date = {date->GetDouble()}, .app = stringOf(*app), .code = stringOf(*code), .counts = {}};
    for (const auto& count : counts->GetObject()) {
        if (!count.value.IsInt64()) return std::nullopt;
        event.counts.emplace(stringOf(count.name), count.value.GetInt64());
    }
    return event;
}

}  // namespace

std::string encodeLearningEvents(const std::vector<LearningEvent>& events) {
    std::string out = "[";
    for (const auto& event : events) {
        if (out.size() > 1) out += ',';
        append(out, event);
    }
    out += ']';
    return out;
}

std::optional<std::vector<LearningEvent>> decodeLearningEvents(std::string_view text) {
    rapidjson::Document document;
    if (!json::parse(document, text) || !document.IsArray()) return std::nullopt;
    std::vector<LearningEvent> events;
    for (const auto& element : document.GetArray()) {
        auto event = read(element);
        if (!event) return std::nullopt;
        events.push_back(*std::move(event));
    }
    return events;
}

}  // namespace quorvi
