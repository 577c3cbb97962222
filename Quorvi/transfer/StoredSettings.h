#pragma once

#include "Quorvi/platform/Preferences.h"
#include "QuorviCore/sync/LocalSnapshot.h"

// The settings that travel between the user's machines, as they lie in the preferences, for what
// works without a controller. Main thread, as the preferences.
namespace quorvi {

// Every one of them; its default where the preferences hold nothing that it can be.
LocalSnapshot::Settings storedSettings(const Preferences& preferences);

// Writes what differs. What is no setting, or no value that it can have, is left out.
void storeSettings(Preferences& preferences, const LocalSnapshot::Settings& settings);

}  // namespace quorvi
