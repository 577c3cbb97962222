#pragma once

namespace quorvi {

inline constexpr auto cloudCheckArgument = "--cloud-release-check";

// Checks the configured cloud database. Prints a line and returns the exit status of
// CloudReleaseCheck. Needs no desktop.
int runCloudCheck();

}  // namespace quorvi
