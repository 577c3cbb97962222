#pragma once

#include <string>

namespace quorvi {

// Returns where IBus's daemon of this session listens; empty if there is none. Reads small files of
// the user's configuration; any thread.
std::string ibusAddress();

}  // namespace quorvi
