#include "Quorvi/platform/linux/gnome/GnomeAccelerator.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <utility>

#include "Quorvi/platform/linux/shortcuts/KeyNames.h"
#include "Quorvi/platform/linux/xkb/KeyMap.h"

namespace quorvi {
namespace {

using Modifier = std::pair<const char*, std::uint64_t>;

// What GNOME writes comes first; then what it understands as well.
constexpr std::array<Modifier, 9> modifiers{{{"<shift>", modifierFlag::shift},
                                             {"<control>", modifierFlag::control},
                                             {"<alt>", modifierFlag::option},
                                             {"<super>", modifierFlag::command},
                                             {"<primary>", modifierFlag::control},
                                             {"<ctrl>", modifierFlag::control},
                                             {"<ctl>", modifierFlag::control},
                                             {"<mod1>", modifierFlag::option},
                                             {"<mod4>", modifierFlag::command}}};
constexpr std::size_t written = 4;

std::string lower(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(),
                           [](unsigned char letter) { return std::tolower(letter); });
    return result;
}

std::string positionName(KeyCode keyCode) {
    std::array<char, 8> name{};
    std::snprintf(name.data(), name.size(), "0x%02x", positionOfKeyCode(keyCode));
    return name.data();
}

}  // namespace

std::string gnomeAccelerator(const SwallowedKey& key) {
    std::string name;
    for (std::size_t i = 0; i < written; ++i)
        if (key.modifiers & modifiers[i].second) {
            name += modifiers[i].first;
            name[name.size() - std::string_view(modifiers[i].first).size() + 1] -= 'a' - 'A';
        }
    return name +
           (isSameInAllLayouts(key.keyCode) ? symbolName(key.keyCode) : positionName(key.keyCode));
}

bool isGnomeAccelerator(std::string_view setting, const SwallowedKey& key) {
    auto rest = lower(setting);
    std::uint64_t flags = 0;
    while (rest.starts_with('<')) {
        const auto* known = std::ranges::find_if(
            modifiers, [&](const auto& m) { return rest.starts_with(m.first); });
        if (known == modifiers.end()) return false;
        flags |= known->second;
        rest.erase(0, std::string_view(known->first).size());
    }
    return flags == key.modifiers && !rest.empty() &&
           (rest == lower(symbolName(key.keyCode)) || rest == positionName(key.keyCode));
}

}  // namespace quorvi
