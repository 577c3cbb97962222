#pragma once

#include "Quorvi/platform/linux/shortcuts/ShortcutSource.h"

namespace quorvi {

// Where the desktop has no shortcuts for programs: the user binds commands. Main thread.
class NoShortcuts final : public ShortcutSource {
public:
    Support support() const override { return {.isOffered = false}; }
    void bind(std::vector<SwallowedKey>) override {}
    bool isBound() const override { return true; }  // nothing is missing that could be had
    void start(std::function<void(const SwallowedKey&, Change)>, std::function<void()>) override {}
};

}  // namespace quorvi
