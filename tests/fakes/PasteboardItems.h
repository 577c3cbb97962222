#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"

namespace quorvi::test {

inline PasteboardRepresentation representation(std::string type, std::string_view data,
                                               int format = 8, std::string encoding = {}) {
    if (encoding.empty()) encoding = type;
    return {std::move(type), std::move(encoding), format,
            std::make_shared<const Bytes>(data.begin(), data.end())};
}

inline std::vector<PasteboardItem> textItems(std::string_view text) {
    return {{{representation("UTF8_STRING", text)}}};
}

// An image, HTML and text, as an application offers them together, with data of every format.
inline std::vector<PasteboardItem> richItems() {
    using namespace std::string_view_literals;
    return {{{representation("image/png", "\x89PNG\r\n\x1a\n\0\0\xFF"sv),
              representation("text/html", "<b>Grüße</b>"), representation("UTF8_STRING", "Grüße"),
              representation("TEXT", "Grüße", 8, "UTF8_STRING"),
              representation("application/x-numbers", "\1\0\0\0\xFF\xFF\xFF\x7F"sv, 32, "INTEGER"),
              representation("application/x-shorts", "\1\0\2\0\3\0"sv, 16, "INTEGER"),
              representation("application/x-nothing", "")}}};
}

inline std::string dataOf(const std::vector<PasteboardItem>& items, std::string_view type) {
    for (const auto& item : items)
        for (const auto& one : item.representations)
            if (one.type == type) return {one.data->begin(), one.data->end()};
    return "(no " + std::string(type) + ")";
}

}  // namespace quorvi::test
