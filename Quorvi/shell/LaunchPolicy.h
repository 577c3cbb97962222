#pragma once

namespace quorvi {

// What the application does of its own accord when it is started.
struct LaunchPolicy {
    // Whether the window greets the user: only somebody who has neither started the program before
    // nor saved a key needs to be shown how to begin.
    static constexpr bool showWelcome(bool hasLaunched, bool hasSavedKey) {
        return !hasLaunched && !hasSavedKey;
    }
};

}  // namespace quorvi
