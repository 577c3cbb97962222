#pragma once

#include <QMenu>
#include <QSystemTrayIcon>
#include <functional>
#include <optional>
#include <string>

#include "Quorvi/dictation/AppModel.h"

namespace quorvi {

// The program's icon in the desktop's tray, with its menu. Follows the controller.
class StatusItem {
public:
    StatusItem(AppModel& model, std::function<void()> quit);

    // Greets a user who seems to be new, and says what is missing.
    void welcome();
    void hide() { icon_.hide(); }

    // Installed by the application's shell.
    std::function<void()> checkForUpdates;

private:
    // What the icon and the menu depend on; they are rebuilt only when it changes.
    struct Shown {
        DictationStage stage;
        DictationMode mode;
        std::string shortcut;
        bool hasTranscript;
        bool operator==(const Shown&) const = default;
    };

    void refresh();
    void rebuildMenu();
    void showMenu(QSystemTrayIcon::ActivationReason reason);

    AppModel& model_;
    std::function<void()> quit_;
    QMenu menu_;
    QSystemTrayIcon icon_;
    std::optional<Shown> shown_;
    Subscription changes_;
};

}  // namespace quorvi
