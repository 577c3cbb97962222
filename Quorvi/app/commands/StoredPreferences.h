#pragma once

#include <optional>
#include <string>

#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"
#include "Quorvi/settings/Settings.h"

namespace quorvi {

// The user's preferences, with an event loop, for a command that runs without the program. Main
// thread.
struct StoredPreferences {
    // Empty for the default cloud; nullopt if the preferences could not be read, as problem() says.
    std::optional<std::string> cloudAddress() const {
        if (!preferences.couldBeRead()) return std::nullopt;
        return settings.get(setting::cloudDatabase);
    }
    Message problem() const { return preferences.persistenceError().value_or(Message()); }

    LoopScheduler scheduler;
    PosixFileStore files;
    SerialExecutor disk{"preferences"};
    PropertyListPreferences preferences{files, preferencesFile(), disk, scheduler};
    Settings settings{preferences};
};

}  // namespace quorvi
