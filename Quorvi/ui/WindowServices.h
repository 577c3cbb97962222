#pragma once

#include <functional>

#include "Quorvi/ui/history/HistoryEnvironment.h"

namespace quorvi {

class SyncControl;
class AppModel;
class AppUpdater;
class CorrectionStore;
class KeyStore;
class LaunchAtLoginController;
class Preferences;

// What the window and its pages use. All of it outlives the window.
struct WindowServices {
    AppModel& model;
    CorrectionStore& corrections;
    HistoryEnvironment history;  // the window adds makeRememberButton
    SyncControl& sync;
    KeyStore& keys;
    LaunchAtLoginController& loginItem;
    AppUpdater& updater;
    Preferences& preferences;
    Scheduler& scheduler;
    std::function<void()> quit;
};

}  // namespace quorvi
