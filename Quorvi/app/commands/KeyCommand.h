#pragma once

#include <optional>
#include <string_view>

namespace quorvi {

// What can be done with the key in the user's keyring from a command line, without a desktop's
// window. A Quorvi that is running notices by itself.
enum class KeyCommand { store, remove };

// The command that an argument names, if it does.
std::optional<KeyCommand> keyCommandFromArgument(std::string_view argument);

// Carries it out; the key to store is the first line of the standard input, which a terminal does
// not show. Says on the standard output or error what came of it; the exit status.
int runKeyCommand(KeyCommand command);

}  // namespace quorvi
