#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Quorvi/platform/KeyEventTap.h"

namespace quorvi {

// Finds the keys that a configuration of sway binds, so that no binding of the user's is replaced.
// Understands variables and blocks; names of keys as on a US keyboard; not the bindings of other
// modes than the usual one.
class SwayConfig {
public:
    explicit SwayConfig(std::string_view text);

    bool binds(const SwallowedKey& key) const;
    // What its "include" lines name: paths, perhaps with wildcards and "~".
    const std::vector<std::string>& includes() const { return includes_; }

private:
    struct Binding {
        std::string key;  // its name in lower case, or its code
        std::uint64_t modifiers = 0;
        bool isRelease = false;
    };

    void readLine(const std::vector<std::string>& words);
    void addBinding(std::span<const std::string> words);

    std::vector<Binding> bindings_;
    std::vector<std::string> includes_;
    std::vector<std::pair<std::string, std::string>> variables_;
    std::vector<std::string> blocks_;  // the open ones
};

// Asks the running sway, and reads the files that its configuration includes. Blocks for up to a
// second; false without sway.
bool isBoundInSway(const SwallowedKey& key);

}  // namespace quorvi
