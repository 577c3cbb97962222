#pragma once

#include <memory>

#include "Quorvi/platform/Preferences.h"
#include "Quorvi/system/updates/AppUpdater.h"
#include "Quorvi/ui/updates/UpdateWindow.h"

namespace quorvi {

// The updater on a real desktop, with its window: set up with the feed and the key that this build
// has been given. Lives on the main thread, not longer than the scheduler and the preferences.
class Updates {
public:
    Updates(Scheduler& scheduler, Preferences& preferences);
    ~Updates();
    Updates(const Updates&) = delete;
    Updates& operator=(const Updates&) = delete;

    AppUpdater& updater() { return *updater_; }

private:
    void showWindow();

    struct Adapters;
    std::unique_ptr<Adapters> adapters_;
    std::unique_ptr<AppUpdater> updater_;
    std::unique_ptr<UpdateWindow> window_;  // made when it is first shown
};

}  // namespace quorvi
