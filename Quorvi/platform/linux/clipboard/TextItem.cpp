#include "Quorvi/platform/linux/clipboard/TextItem.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

namespace quorvi {

namespace {

using Data = std::shared_ptr<const Bytes>;

// Returns nullopt if the text has a character beyond U+00FF or is not UTF-8.
std::optional<Bytes> latin1(std::string_view text) {
    Bytes out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto lead = static_cast<std::uint8_t>(text[i]);
        if (lead < 0x80) {
            out.push_back(lead);
            continue;
        }
        if ((lead != 0xC2 && lead != 0xC3) || i + 1 == text.size()) return std::nullopt;
        const auto next = static_cast<std::uint8_t>(text[++i]);
        if ((next & 0xC0) != 0x80) return std::nullopt;
        out.push_back(static_cast<std::uint8_t>((lead << 6) | (next & 0x3F)));
    }
    return out;
}

}  // namespace

PasteboardItem clipboardTextItem(std::string_view text, TranscriptVisibility visibility) {
    const Data utf8 = std::make_shared<const Bytes>(text.begin(), text.end());
    PasteboardItem item;
    const auto add = [&item](const char* type, const char* encoding, Data data) {
        item.representations.push_back({type, encoding, 8, std::move(data)});
    };
    add("UTF8_STRING", "UTF8_STRING", utf8);
    add("text/plain;charset=utf-8", "text/plain;charset=utf-8", utf8);
    add("text/plain", "text/plain", utf8);
    if (auto narrow = latin1(text))
        add("STRING", "STRING", std::make_shared<const Bytes>(std::move(*narrow)));
    add("TEXT", "UTF8_STRING", utf8);
    if (visibility == TranscriptVisibility::hiddenFromHistory) {
        const std::string_view secret = "secret";
        add("x-kde-passwordManagerHint", "x-kde-passwordManagerHint",
            std::make_shared<const Bytes>(secret.begin(), secret.end()));
    }
    return item;
}

}  // namespace quorvi
