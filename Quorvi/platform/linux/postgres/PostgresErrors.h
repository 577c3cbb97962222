#pragma once

#include <string>
#include <string_view>

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi {

// Maps an SQLSTATE to a CloudError. `message` is the text of the server, in its language.
CloudError cloudErrorOfState(std::string_view sqlState, const std::string& message);

// Returns the SQLSTATE in libpq's message about a failed connection, made with verbosity
// PQERRORS_SQLSTATE; empty if the server did not answer. With several hosts, the last one's.
std::string sqlStateIn(std::string_view message);

}  // namespace quorvi
