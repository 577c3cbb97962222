#pragma once

#include <functional>
#include <string>

namespace quorvi {

class AccountSyncing;
class AppModel;
class AppUpdater;
class CorrectionStore;
class HistoryStore;
class KeyStore;
class LaunchAtLoginController;
class Preferences;
class Scheduler;

// Everything that the window and its pages show and change; all of it outlives the window.
struct WindowServices {
    AppModel& model;
    CorrectionStore& corrections;
    HistoryStore& history;
    AccountSyncing& sync;
    KeyStore& keys;
    LaunchAtLoginController& loginItem;
    AppUpdater& updater;
    Preferences& preferences;
    Scheduler& scheduler;
    std::function<void()> quit;
};

}  // namespace quorvi
