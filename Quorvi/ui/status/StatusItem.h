#pragma once

#include <QCoreApplication>
#include <QMenu>
#include <QSystemTrayIcon>
#include <functional>
#include <optional>
#include <string>

#include "Quorvi/dictation/AppModel.h"

namespace quorvi {

// The program's tray icon and its menu. Desktops with a StatusNotifierItem host draw both
// themselves. Main thread; the controller outlives it.
class StatusItem {
    Q_DECLARE_TR_FUNCTIONS(StatusItem)

public:
    // What the menu does besides driving the controller.
    struct Actions {
        std::function<void()> openWindow;  // at the controller's selected page
        std::function<void()> checkForUpdates;
        std::function<void()> quit;
    };

    StatusItem(AppModel& model, Actions actions);

    void hide() { icon_.hide(); }

    // Whether the desktop has a tray.
    static bool hasTray() { return QSystemTrayIcon::isSystemTrayAvailable(); }

private:
    // What the icon and the menu show; both are rebuilt only when it changes.
    struct Shown {
        DictationStage stage;
        DictationMode mode;
        QString shortcut;
        bool hasTranscript;
        bool canRestore;
        bool canRetry;
        bool operator==(const Shown&) const = default;
    };

    void refresh();
    void rebuildMenu();
    QAction* add(const QString& text, std::function<void()> effect);
    void addLine(const QString& text);
    void open(WindowPage page);
    void showMenu(QSystemTrayIcon::ActivationReason reason);

    AppModel& model_;
    Actions actions_;
    QMenu menu_;
    QSystemTrayIcon icon_;
    std::optional<Shown> shown_;
    Subscription changes_;
};

}  // namespace quorvi
