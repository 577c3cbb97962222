#include "Quorvi/sync/CloudRecordFields.h"

#include <array>
#include <charconv>
#include <utility>

// Four texts, each preceded by its length: "10:QuorviItem…".
namespace quorvi {

namespace {

void append(std::string& out, std::string_view text) {
    out += std::to_string(text.size());
    out += ':';
    out += text;
}

std::optional<std::string_view> take(std::string_view& in) {
    std::size_t size = 0;
    const auto [end, error] = std::from_chars(in.data(), in.data() + in.size(), size);
    const auto digits = static_cast<std::size_t>(end - in.data());
    if (error != std::errc() || digits == in.size() || *end != ':') return std::nullopt;
    in.remove_prefix(digits + 1);
    if (size > in.size()) return std::nullopt;
    const auto text = in.substr(0, size);
    in.remove_prefix(size);
    return text;
}

}  // namespace

std::string encodeRecordFields(const CloudRecord& record) {
    std::string out;
    out.reserve(record.type.size() + record.id.zone.size() + record.id.name.size() +
                record.changeTag.size() + 12);
    append(out, record.type);
    append(out, record.id.zone);
    append(out, record.id.name);
    append(out, record.changeTag);
    return out;
}

std::optional<CloudRecord> decodeRecordFields(std::string_view fields) {
    std::array<std::string_view, 4> texts;
    for (auto& text : texts) {
        const auto taken = take(fields);
        if (!taken) return std::nullopt;
        text = *taken;
    }
    if (!fields.empty()) return std::nullopt;
    CloudRecord record;
    record.type = texts[0];
    record.id = {std::string(texts[1]), std::string(texts[2])};
    record.changeTag = texts[3];
    return record;
}

}  // namespace quorvi
