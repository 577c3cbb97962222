#pragma once

#include <string>
#include <vector>

#include "Quorvi/platform/SystemPermissions.h"

namespace quorvi {

// The settings programs for a subject, each as an argument list, in the order to try: those of the
// running desktop first. `desktops` is the value of XDG_CURRENT_DESKTOP.
std::vector<std::vector<std::string>> settingsPrograms(PrivacyPane pane,
                                                       const std::string& desktops);

// Returns the program's path: itself if it is a path, otherwise the first executable in
// `searchPath`. Empty if there is none. Blocks on the disk.
std::string findProgram(const std::string& program, const std::string& searchPath);

// Whether `searchPath` has one of the programs for a subject. Blocks on the disk.
bool hasSettingsProgram(PrivacyPane pane, const std::string& desktops,
                        const std::string& searchPath);

// Starts the first of the programs that `searchPath` (in the notation of PATH) has, without a shell
// and in a session of its own, so that it outlives this program. Returns false if there is none.
// Blocks on the disk.
bool startFirst(const std::vector<std::vector<std::string>>& programs,
                const std::string& searchPath);

}  // namespace quorvi
