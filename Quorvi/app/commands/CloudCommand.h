#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace quorvi {

// What can be done about the cloud from a command line, without a desktop's window.
//     --cloud-database=ADDRESS   stores the address; empty for the standard folder
//     --store-cloud-password     stores the password of the present address in the keyring, read
//                                from the standard input
//     --cloud-release-check      see CloudCheckCommand.h
// The exit status; nothing when the arguments are no such command.
std::optional<int> runCloudCommand(const std::vector<std::string_view>& arguments);

}  // namespace quorvi
