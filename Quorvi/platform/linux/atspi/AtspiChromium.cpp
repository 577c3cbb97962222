#include "Quorvi/platform/linux/atspi/AtspiChromium.h"

#include <algorithm>

namespace quorvi::atspi {
namespace {

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}
bool startsAstral(char byte) {
    return static_cast<unsigned char>(byte) >= 0xF0;
}

// Where the code point at `index` starts, in UTF-16 units.
std::int32_t utf16Offset(std::string_view text, std::int32_t index) {
    std::int32_t units = 0;
    for (const char byte : text) {
        if (isContinuation(byte)) continue;
        if (index-- == 0) break;
        units += startsAstral(byte) ? 2 : 1;
    }
    return units;
}

}  // namespace

void dropPlaceholderBreak(std::string& text) {
    if (text.ends_with('\n')) text.pop_back();
}

std::optional<Span> selectionFromChromium(Span reported, std::int32_t caret,
                                          std::string_view text) {
    if (std::none_of(text.begin(), text.end(), startsAstral)) return reported;
    if (reported.start == reported.end) return std::nullopt;
    const auto fits = [caret](Span span) {
        return caret < 0 || span.start == caret || span.end == caret;
    };
    const Span corrected{utf16Offset(text, reported.start), utf16Offset(text, reported.end)};
    if (fits(corrected)) return corrected;
    return fits(reported) ? std::optional(reported) : std::nullopt;
}

}  // namespace quorvi::atspi
