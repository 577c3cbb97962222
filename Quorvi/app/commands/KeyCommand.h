#pragma once

#include <optional>
#include <string_view>

namespace quorvi {

// The commands for the API key in the keyring; they need no desktop. A running Quorvi notices the
// change.
enum class KeyCommand { store, remove };

// The command that an argument names, or nullopt.
std::optional<KeyCommand> keyCommandFromArgument(std::string_view argument);

// Runs the command. The key to store is the first line of standard input, without echo on a
// terminal. Prints the result and returns the exit status.
int runKeyCommand(KeyCommand command);

}  // namespace quorvi
