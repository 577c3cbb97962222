#include "Quorvi/platform/linux/xkb/KeymapText.h"

#include <algorithm>
#include <cstdlib>

namespace quorvi {
namespace {

// What stands between two marks from `at` on, which moves behind it; nothing without them.
std::optional<std::string_view> between(std::string_view text, std::string_view first,
                                        std::string_view last, std::size_t& at) {
    const auto begin = text.find(first, at);
    if (begin == text.npos) return std::nullopt;
    const auto inside = begin + first.size();
    const auto end = text.find(last, inside);
    if (end == text.npos) return std::nullopt;
    at = end + last.size();
    return text.substr(inside, end - inside);
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

// "<AD06> = 29;" for each key.
std::map<std::string, XKeycode, std::less<>> positionsIn(std::string_view text) {
    std::map<std::string, XKeycode, std::less<>> positions;
    std::size_t at = 0;
    while (const auto line = between(text, "<", ";", at)) {
        const auto nameEnd = line->find('>');
        const auto equals = line->find('=');
        if (nameEnd == line->npos || equals == line->npos) continue;
        const auto number = std::atoi(std::string(line->substr(equals + 1)).c_str());
        if (number > 0 && number < 256)
            positions.emplace(line->substr(0, nameEnd), static_cast<XKeycode>(number));
    }
    return positions;
}

// The first symbol of each list: "[ y, Y ]", or "symbols[Group1]= [ y, Y ], symbols[Group2]= …".
std::vector<std::string> symbolsIn(std::string_view key) {
    std::vector<std::string> symbols;
    std::size_t at = 0;
    while (const auto list = between(key, "[", "]", at))
        if (!list->starts_with("Group") && !list->starts_with("group"))
            symbols.emplace_back(trimmed(list->substr(0, list->find(','))));
    return symbols;
}

}  // namespace

KeymapText::KeymapText(std::string_view text) {
    const auto symbols = text.find("xkb_symbols");
    if (symbols == text.npos) return;
    const auto positions = positionsIn(text.substr(0, symbols));
    std::size_t at = symbols;
    while (const auto name = between(text, "key <", ">", at)) {
        const auto key = between(text, "{", "}", at);
        const auto position = positions.find(*name);
        if (key && position != positions.end()) symbols_[position->second] = symbolsIn(*key);
    }
}

std::string KeymapText::symbolAt(XKeycode position) const {
    const auto found = symbols_.find(position);
    return found == symbols_.end() || found->second.empty() ? std::string() : found->second.front();
}

bool KeymapText::types(XKeycode position, std::string_view symbol) const {
    const auto found = symbols_.find(position);
    return found != symbols_.end() &&
           std::ranges::find(found->second, symbol) != found->second.end();
}

std::optional<XKeycode> KeymapText::positionOf(std::string_view symbol) const {
    for (const auto& [position, symbols] : symbols_)
        if (!symbols.empty() && symbols.front() == symbol) return position;
    return std::nullopt;
}

}  // namespace quorvi
