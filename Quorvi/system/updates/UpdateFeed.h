#pragma once

#include <stop_token>
#include <string>

#include "Quorvi/system/updates/UpdateEnvironment.h"
#include "QuorviCore/updates/Appcast.h"

namespace quorvi {

// Fetches the feed and yields what it has for this program. The environment outlives the task.
// Throws QuorviError; Cancelled after a stop.
Task<UpdateChoice> readUpdateFeed(const UpdateEnvironment& environment, std::stop_token stop);

// The release's notes as safe markup, from the feed or from where it points to. Notes that can't be
// had are no reason to keep an update from the user: a sentence says so in their place. Throws only
// Cancelled.
Task<std::string> readReleaseNotes(const UpdateEnvironment& environment, AppcastItem item,
                                   std::stop_token stop);

}  // namespace quorvi
