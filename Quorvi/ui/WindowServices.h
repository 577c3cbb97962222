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

// Everything that the window and its pages show and change; all of it outlives the window.
struct WindowServices {
    AppModel& model;
    CorrectionStore& corrections;
    HistoryEnvironment history;  // the window adds the control that remembers corrections
    SyncControl& sync;
    KeyStore& keys;
    LaunchAtLoginController& loginItem;
    AppUpdater& updater;
    Preferences& preferences;
    Scheduler& scheduler;
    std::function<void()> quit;
};

}  // namespace quorvi
