#include "Quorvi/corrections/LearningEvent.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void writeText(Writer& writer, const std::string& text) {
    const std::string written = text::wellFormed(text);
    writer.String(written.data(), static_cast<rapidjson::SizeType>(written.size()));
}

void write(Writer& writer, const LearningEvent& event) {
    writer.StartObject();
    writer.Key("app");
    writeText(writer, event.app);
    writer.Key("code");
    writeText(writer, event.code);
    writer.Key("counts");
    writer.StartObject();
    for (const auto& [name, count] : event.counts) {
        writeText(writer, name);
        writer.Int64(count);
    }
    writer.EndObject();
    writer.Key("date");
    writer.Double(event.date.secondsSinceReferenceDate);
    writer.EndObject();
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
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartArray();
    for (const auto& event : events) write(writer, event);
    writer.EndArray();
    return {buffer.GetString(), buffer.GetSize()};
}

std::optional<std::vector<LearningEvent>> decodeLearningEvents(std::string_view json) {
    constexpr unsigned flags = rapidjson::kParseValidateEncodingFlag |
                               rapidjson::kParseFullPrecisionFlag | rapidjson::kParseIterativeFlag;
    rapidjson::Document document;
    document.Parse<flags>(json.data(), json.size());
    if (document.HasParseError() || !document.IsArray()) return std::nullopt;
    std::vector<LearningEvent> events;
    for (const auto& element : document.GetArray()) {
        auto event = read(element);
        if (!event) return std::nullopt;
        events.push_back(*std::move(event));
    }
    return events;
}

}  // namespace quorvi
