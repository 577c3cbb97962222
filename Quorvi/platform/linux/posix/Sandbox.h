#pragma once

#include <sys/types.h>
#include <optional>
#include <string>

namespace quorvi {

// The sandbox of a process, by the name that Flatpak gives each of its own; empty if it has no name
// or may not be looked at. Nullopt for a process that sees the files which this one sees. Any
// thread.
std::optional<std::string> sandboxOf(pid_t pid);

}  // namespace quorvi
