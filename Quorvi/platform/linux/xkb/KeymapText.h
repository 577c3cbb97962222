#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/xkb/KeyMap.h"

namespace quorvi {

// A keyboard's layout as a Wayland compositor describes it, in the text format of XKB that its
// library writes: what each key types without modifiers. Immutable, any thread.
class KeymapText {
public:
    // Without a text nothing is typed.
    explicit KeymapText(std::string_view text = {});

    bool isEmpty() const { return symbols_.empty(); }
    // The name of what the key types in the first group ("y", "adiaeresis"); empty if nothing.
    std::string symbolAt(XKeycode position) const;
    // Whether the key types it in one of the groups.
    bool types(XKeycode position, std::string_view symbol) const;
    // The key that types it in the first group.
    std::optional<XKeycode> positionOf(std::string_view symbol) const;

private:
    std::map<XKeycode, std::vector<std::string>> symbols_;  // one for each group
};

}  // namespace quorvi
