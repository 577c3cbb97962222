#pragma once

#include <string>
#include <vector>

#include "Quorvi/platform/SystemPermissions.h"

namespace quorvi {

// The desktop's own settings program for a subject, as an argument list, in the order to try: what
// belongs to the running desktop comes first. `desktops` is the value of XDG_CURRENT_DESKTOP.
std::vector<std::vector<std::string>> settingsPrograms(PrivacyPane pane,
                                                       const std::string& desktops);

// Starts the first of them that is found in `searchPath` (the notation of PATH), without a shell
// and on its own: it outlives this program. Blocks on the disk. False when there is none.
bool startFirst(const std::vector<std::vector<std::string>>& programs,
                const std::string& searchPath);

}  // namespace quorvi
