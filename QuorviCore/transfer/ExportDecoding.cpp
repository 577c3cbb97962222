#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/sync/LocalSnapshot.h"
#include "QuorviCore/transfer/ExportDocument.h"

namespace quorvi {

namespace {

constexpr std::size_t valuesPerReport = 1000;

[[noreturn]] void refuse(const std::string& what) {
    throw QuorviError::message(say::exportInvalid(what));
}

const rapidjson::Value& member(const rapidjson::Value& object, const char* key) {
    const auto found = object.FindMember(key);
    if (found == object.MemberEnd()) refuse(std::string("\"") + key + "\" is missing");
    return found->value;
}

std::string_view textIn(const rapidjson::Value& value) {
    return {value.GetString(), value.GetStringLength()};
}

// A text that is not empty.
std::string_view name(const rapidjson::Value& object, const char* key) {
    const auto& value = member(object, key);
    if (!value.IsString() || value.GetStringLength() == 0)
        refuse(std::string("\"") + key + "\" is no text");
    return textIn(value);
}

class Reader {
public:
    explicit Reader(const std::function<void(std::size_t, std::size_t)>& progress)
        : progress_(progress) {}

    std::vector<SyncItem> read(const rapidjson::Document& document) {
        const auto& history = list(document, "history");
        const auto& corrections = list(document, "corrections");
        const auto& settings = list(document, "settings");
        total_ = history.Size() + corrections.Size() + settings.Size();
        items_.reserve(total_);
        for (const auto& entry : history.GetArray()) add(entry, &Reader::dictation);
        for (const auto& entry : corrections.GetArray()) add(entry, &Reader::rule);
        for (const auto& entry : settings.GetArray()) add(entry, &Reader::setting);
        progress_(total_, total_);
        return std::move(items_);
    }

private:
    struct Value {
        SharedString id, payload;
    };

    static const rapidjson::Value& list(const rapidjson::Value& document, const char* key) {
        const auto& value = member(document, key);
        if (!value.IsArray()) refuse(std::string("\"") + key + "\" is no list");
        return value;
    }

    void add(const rapidjson::Value& entry, Value (Reader::*valueOf)(const rapidjson::Value&)) {
        if (!entry.IsObject()) refuse("an entry is no object");
        const auto& revision = member(entry, "revision");
        const auto& redacted = member(entry, "redacted");
        if (!revision.IsInt64() || revision.GetInt64() < 1 ||
            revision.GetInt64() > SyncItem::latestRevision)
            refuse("a revision is out of range");
        if (!redacted.IsBool()) refuse("\"redacted\" is neither true nor false");
        auto [id, payload] = (this->*valueOf)(entry);
        items_.emplace_back(std::move(id), std::move(payload), revision.GetInt64(),
                            SharedString(name(entry, "device")), redacted.GetBool());
        if (items_.size() % valuesPerReport == 0) progress_(items_.size(), total_);
    }

    Value dictation(const rapidjson::Value& entry) {
        try {
            const auto record = decoder_.decode(written(member(entry, "value")));
            return {LocalSnapshot::historyId(record.id), encodeRecord(record)};
        } catch (const HistoryFormatError& error) {
            refuse(std::string("a dictation is not readable (") + error.what() + ")");
        }
    }
    Value rule(const rapidjson::Value& entry) {
        const auto rule = decodeCorrection(written(member(entry, "value")));
        if (!rule) refuse("a rule is not readable");
        return {std::string(syncPrefix::correction) + rule->id, encodeCorrection(*rule)};
    }
    Value setting(const rapidjson::Value& entry) {
        const auto& value = member(entry, "value");
        SettingValue setting;
        if (value.IsString())
            setting = std::string(textIn(value));
        else if (value.IsBool())
            setting = value.GetBool();
        else if (value.IsInt64())
            setting = value.GetInt64();
        else if (value.IsObject())
            setting = bytesOf(written(value));
        else
            refuse("a setting is of no known type");
        return {std::string(syncPrefix::setting).append(name(entry, "key")),
                LocalSnapshot::encode(setting)};
    }
    // The value as JSON again, valid until the next call.
    std::string_view written(const rapidjson::Value& value) {
        buffer_.Clear();
        rapidjson::Writer<rapidjson::StringBuffer> out(buffer_);
        if (!value.Accept(out)) refuse("a value is not readable");
        return {buffer_.GetString(), buffer_.GetSize()};
    }

    const std::function<void(std::size_t, std::size_t)>& progress_;
    std::size_t total_ = 0;
    std::vector<SyncItem> items_;
    DictationRecordDecoder decoder_;
    rapidjson::StringBuffer buffer_;
};

}  // namespace

std::vector<SyncItem> decodeExport(std::string document,
                                   const std::function<void(std::size_t, std::size_t)>& progress) {
    rapidjson::Document parsed;
    if (!json::parse(parsed, document))
        refuse("it is not well-formed JSON in UTF-8, or nested too deeply");
    document = {};
    if (!parsed.IsObject()) refuse("it holds no object");
    if (name(parsed, "format") != "quorvi-export") refuse("\"format\" is another one");
    const auto& version = member(parsed, "version");
    if (!version.IsInt64() || version.GetInt64() < 1) refuse("\"version\" is no number");
    if (version.GetInt64() > 1) throw QuorviError::message(say::exportFromNewerVersion());
    return Reader(progress).read(parsed);
}

}  // namespace quorvi
