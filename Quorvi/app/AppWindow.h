#pragma once

#include <functional>
#include <memory>

#include "Quorvi/ui/WindowServices.h"

namespace quorvi {

// The main window on a real desktop. Nothing of it is made before it is first opened, which keeps
// the start short. Lives on the main thread, not longer than what it shows.
class AppWindow {
public:
    // What the window shows, but for the login item, which is this class's own.
    struct Parts {
        AppModel& model;
        CorrectionStore& corrections;
        HistoryStore& history;
        SyncControl& sync;
        KeyStore& keys;
        AppUpdater& updater;
        Preferences& preferences;
        Scheduler& scheduler;
        std::function<Calendar()> calendar;  // the user's present one
        std::function<void()> quit;
    };

    explicit AppWindow(Parts parts);
    ~AppWindow();
    AppWindow(const AppWindow&) = delete;
    AppWindow& operator=(const AppWindow&) = delete;

    void open();

    // Where the desktop has no tray, opens the window behind what the user does, and has it say so.
    void openIfThereIsNoTray();

private:
    struct Made;
    Made& made();

    Parts parts_;
    std::unique_ptr<Made> made_;
};

}  // namespace quorvi
