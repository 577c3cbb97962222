#pragma once

#include <string>

#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/dictation/PreferenceKeys.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"

namespace quorvi {

// The user's preferences, with an event loop, for a command that runs without the program. Main
// thread.
struct StoredPreferences {
    // Empty for the default cloud.
    std::string cloudAddress() const {
        return preferences.string(preferenceKey::cloudDatabase).value_or("");
    }

    LoopScheduler scheduler;
    PosixFileStore files;
    SerialExecutor disk{"preferences"};
    PropertyListPreferences preferences{files, preferencesFile(), disk, scheduler};
};

}  // namespace quorvi
