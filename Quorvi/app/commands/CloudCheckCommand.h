#pragma once

#include <string_view>

namespace quorvi {

inline constexpr std::string_view cloudCheckArgument = "--cloud-release-check";

// Checks the configured cloud database. Prints a line and returns the exit status of
// CloudReleaseCheck. Needs no desktop.
int runCloudCheck();

}  // namespace quorvi
