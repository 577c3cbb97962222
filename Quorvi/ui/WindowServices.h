#pragma once

#include <functional>

#include "Quorvi/platform/DesktopCapabilities.h"
#include "Quorvi/platform/KeyConsent.h"
#include "Quorvi/platform/SystemPermissions.h"
#include "Quorvi/ui/history/HistoryEnvironment.h"

namespace quorvi {

class SyncControl;
class CloudAccess;
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
    CloudAccess& cloud;
    KeyStore& keys;
    LaunchAtLoginController& loginItem;
    AppUpdater& updater;
    Preferences& preferences;
    Scheduler& scheduler;
    std::function<void()> quit;
    // Whether the desktop has settings for the subject; null if it has all.
    std::function<bool(PrivacyPane)> hasSettingsFor = nullptr;
    DesktopCapabilities desktop = {};  // what it offers on Wayland
    bool isKeyGiven = false;           // for this run only, by QUORVI_API_KEY
    KeyConsent* keyConsent = nullptr;  // null where Quorvi needs no leave to press keys
};

}  // namespace quorvi
