#include "Quorvi/app/composition/AppWindow.h"

#include <QSystemTrayIcon>
#include <utility>

#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/xdg/XdgLoginItem.h"
#include "Quorvi/system/LaunchAtLoginController.h"
#include "Quorvi/ui/window/MainWindow.h"

namespace quorvi {

// In the order of dependence.
struct AppWindow::Contents {
    explicit Contents(const Parts& parts)
        : loginItem(service, executor, parts.scheduler),
          window({parts.model, parts.corrections,
                  HistoryEnvironment{parts.history, figures, parts.scheduler, parts.calendar, {}},
                  parts.sync, parts.cloud, parts.keys, loginItem, parts.updater, parts.preferences,
                  parts.scheduler, parts.quit, parts.hasSettingsFor, parts.isKeyGiven}) {}

    XdgLoginItem service{XdgLoginItem::Places::current()};
    SerialExecutor executor{"login-item"};
    SerialExecutor figures{"figures"};  // searches and sums of the history
    LaunchAtLoginController loginItem;
    MainWindow window;
};

AppWindow::AppWindow(Parts parts) : parts_(std::move(parts)) {}

AppWindow::~AppWindow() = default;

MainWindow& AppWindow::window() {
    if (!contents_) contents_ = std::make_unique<Contents>(parts_);
    return contents_->window;
}

void AppWindow::open() {
    window().present();
}

void AppWindow::openIfThereIsNoTray() {
    if (QSystemTrayIcon::isSystemTrayAvailable()) return;
    auto& shown = window();
    shown.setTrayMissing(true);
    if (shown.isVisible()) return;
    shown.setAttribute(Qt::WA_ShowWithoutActivating);
    shown.show();
    shown.lower();
    shown.setAttribute(Qt::WA_ShowWithoutActivating, false);
}

}  // namespace quorvi
