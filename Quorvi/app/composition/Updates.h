#pragma once

#include <memory>

#include "Quorvi/platform/Preferences.h"
#include "Quorvi/system/updates/AppUpdater.h"
#include "Quorvi/ui/updates/UpdateWindow.h"

namespace quorvi {

// The updater with its adapters and window, configured with this build's feed and key. Main thread;
// the scheduler and the preferences outlive it.
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
    std::unique_ptr<UpdateWindow> window_;  // created when first shown
};

}  // namespace quorvi
