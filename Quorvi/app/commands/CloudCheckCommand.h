#pragma once

namespace quorvi {

inline constexpr auto cloudCheckArgument = "--cloud-release-check";

// Checks the cloud database of the preferences from a command line, without a desktop; prints a
// line and returns the exit status, as CloudReleaseCheck has them.
int runCloudCheck();

}  // namespace quorvi
