#pragma once

#include <string>
#include <string_view>

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi {

// What the server refused with, by its SQLSTATE. `message` is the server's own, in its language.
CloudError cloudErrorOfState(std::string_view sqlState, const std::string& message);

// The SQLSTATE in libpq's message about a connection that failed, made with its verbosity
// PQERRORS_SQLSTATE; empty when the server had no say in it. With several hosts, the last one's.
std::string sqlStateIn(std::string_view message);

}  // namespace quorvi
