#pragma once

#include <exception>
#include <string>

#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// What the user is told of an error of the cloud's, or of anything else that went wrong there.
std::string cloudMessage(const std::exception& error);

// How long to leave the cloud alone after it.
Duration cloudRetryInterval(const std::exception& error);

}  // namespace quorvi
