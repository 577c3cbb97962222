#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace quorvi {

// The commands for the cloud; they need no desktop.
//     --cloud-database=ADDRESS   stores the address; empty for the default folder
//     --store-cloud-password     stores the password of the current address in the keyring,
//                                read from standard input
//     --cloud-release-check      see CloudCheckCommand.h; also among other arguments, since their
//                                refusal has the exit status of a missing account
// Returns the exit status, or nullopt if the arguments are none of these commands.
std::optional<int> runCloudCommand(const std::vector<std::string_view>& arguments);

}  // namespace quorvi
