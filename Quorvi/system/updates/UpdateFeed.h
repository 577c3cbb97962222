#pragma once

#include <stop_token>

#include "Quorvi/system/updates/UpdateEnvironment.h"
#include "QuorviCore/messages/Message.h"
#include "QuorviCore/updates/Appcast.h"

namespace quorvi {

// Fetches the feed and chooses the release for this program. The environment outlives the task.
// Throws QuorviError; Cancelled after a stop.
Task<UpdateChoice> readUpdateFeed(const UpdateEnvironment& environment, std::stop_token stop);

// Returns the release's notes as safe markup, from the feed or from the address that it names; a
// sentence if they can't be loaded. Throws only Cancelled.
Task<Message> readReleaseNotes(const UpdateEnvironment& environment, AppcastItem item,
                               std::stop_token stop);

}  // namespace quorvi
