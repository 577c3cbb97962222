#include <algorithm>
#include <array>
#include <utility>
#include <variant>

#include "QuorviCore/json/JsonWriting.h"
#include "QuorviCore/sync/LocalSnapshot.h"
#include "QuorviCore/transfer/ExportDocument.h"

namespace quorvi {

namespace {

constexpr std::size_t pieceSize = 256 * 1024;

constexpr std::array prefixes{syncPrefix::history, syncPrefix::correction, syncPrefix::setting};
constexpr std::array<std::string_view, 3> names{"history", "corrections", "settings"};

std::size_t partOf(const SyncItem& item) {
    const auto found = std::ranges::find_if(
        prefixes, [&](const auto prefix) { return item.id.view().starts_with(prefix); });
    return static_cast<std::size_t>(found - prefixes.begin());
}

// Bytes are a JSON text; nothing else is kept as bytes.
void appendSetting(std::string& out, const SettingValue& value) {
    if (const auto* text = std::get_if<std::string>(&value))
        json::appendString(out, *text);
    else if (const auto* flag = std::get_if<bool>(&value))
        json::appendBoolean(out, *flag);
    else if (const auto* number = std::get_if<std::int64_t>(&value))
        json::appendNumber(out, *number);
    else
        out += textOf(std::get<Bytes>(value));
}

}  // namespace

ExportEncoder::ExportEncoder(std::vector<SyncItem> items) : items_(std::move(items)) {
    std::erase_if(items_, [](const auto& item) {
        return item.deleted() || partOf(item) == prefixes.size() ||
               (partOf(item) == 2 && !LocalSnapshot::decode(*item.payload));
    });
    std::ranges::stable_sort(items_, {}, partOf);
}

std::string_view ExportEncoder::next() {
    piece_.clear();
    if (part_ == Part::history && isFirst_ && position_ == 0)
        piece_ = "{\"format\":\"quorvi-export\",\"version\":1,\n\"history\":[";
    while (part_ != Part::end && piece_.size() < pieceSize) {
        const auto part = static_cast<std::size_t>(part_);
        if (position_ < items_.size() && partOf(items_[position_]) == part) {
            piece_ += isFirst_ ? "\n" : ",\n";
            isFirst_ = false;
            append(items_[position_++]);
            continue;
        }
        part_ = static_cast<Part>(part + 1);
        isFirst_ = true;
        if (part_ == Part::end)
            piece_ += "]}\n";
        else
            piece_.append("],\n\"").append(names[part + 1]).append("\":[");
    }
    return piece_;
}

void ExportEncoder::append(const SyncItem& item) {
    piece_ += R"({"device":)";
    json::appendString(piece_, item.device);
    if (part_ == Part::settings) {
        piece_ += R"(,"key":)";
        json::appendString(piece_, item.id.view().substr(syncPrefix::setting.size()));
    }
    piece_ += R"(,"redacted":)";
    json::appendBoolean(piece_, item.redacted);
    piece_ += R"(,"revision":)";
    json::appendNumber(piece_, item.revision);
    piece_ += R"(,"value":)";
    if (part_ == Part::settings)
        appendSetting(piece_, *LocalSnapshot::decode(*item.payload));
    else
        piece_ += item.payload->view();
    piece_ += '}';
}

}  // namespace quorvi
