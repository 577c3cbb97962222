#pragma once

#include <string>
#include <vector>

#include "Quorvi/platform/SystemPermissions.h"

namespace quorvi {

// The desktop's own settings program for a subject, as an argument list, in the order to try: what
// belongs to the running desktop comes first. `desktops` is the value of XDG_CURRENT_DESKTOP.
std::vector<std::vector<std::string>> settingsPrograms(PrivacyPane pane,
                                                       const std::string& desktops);

// The file that a command's first word names: itself when it is a path, otherwise the first one in
// `searchPath` that can be run. Empty when there is none. Blocks on the disk.
std::string findProgram(const std::string& program, const std::string& searchPath);

// Starts the first of them that is found in `searchPath` (the notation of PATH), without a shell
// and on its own: it outlives this program. Blocks on the disk. False when there is none.
bool startFirst(const std::vector<std::vector<std::string>>& programs,
                const std::string& searchPath);

}  // namespace quorvi
