#pragma once

#include <exception>

#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// Returns what the interface shows for an error of the cloud, or of anything else during a pass.
Message cloudMessage(const std::exception& error);

// Returns how long to wait after the error before the cloud is asked again.
Duration cloudRetryInterval(const std::exception& error);

}  // namespace quorvi
