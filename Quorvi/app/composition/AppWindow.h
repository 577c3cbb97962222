#pragma once

#include <QCoreApplication>
#include <functional>
#include <memory>

#include "Quorvi/ui/WindowServices.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

class MainWindow;

// The main window on a real desktop. It exists while it is open and for a few seconds afterwards:
// the program is mostly in the tray, where it should be small. Main thread; `Parts` outlive it.
class AppWindow {
    Q_DECLARE_TR_FUNCTIONS(AppWindow)

public:
    // What the window shows. The login item is this class's own.
    struct Parts {
        AppModel& model;
        CorrectionStore& corrections;
        HistoryStore& history;
        SyncControl& sync;
        CloudAccess& cloud;
        KeyStore& keys;
        AppUpdater& updater;
        Preferences& preferences;
        Scheduler& scheduler;
        SystemCalendar& calendar;
        std::function<void()> quit;
        std::function<bool(PrivacyPane)> hasSettingsFor;
        DesktopCapabilities desktop;
        bool isKeyGiven;
        KeyConsent* keyConsent;
    };

    explicit AppWindow(Parts parts);
    ~AppWindow();
    AppWindow(const AppWindow&) = delete;
    AppWindow& operator=(const AppWindow&) = delete;

    void open();

    // On a desktop without a tray: opens the window below the others, with a note about that; on
    // Wayland only if the user has something to do in it, and else says that Quorvi is running.
    void openIfThereIsNoTray();

private:
    struct Contents;       // the window and what only it uses
    MainWindow& window();  // creates it if there is none
    void forgetSoon();
    void forget();

    Parts parts_;
    bool isTrayMissing_ = false;
    std::unique_ptr<Contents> contents_;  // from the first window on
    Timer forgetting_;
};

}  // namespace quorvi
