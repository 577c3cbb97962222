#include "Quorvi/app/AppWindow.h"

#include <QSystemTrayIcon>
#include <utility>

#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/xdg/XdgLoginItem.h"
#include "Quorvi/system/LaunchAtLoginController.h"
#include "Quorvi/ui/window/MainWindow.h"

namespace quorvi {

// In the order of dependence.
struct AppWindow::Made {
    explicit Made(const Parts& parts)
        : loginItem(service, executor, parts.scheduler),
          window({parts.model, parts.corrections,
                  HistoryEnvironment{parts.history, figures, parts.scheduler, parts.calendar, {}},
                  parts.sync, parts.keys, loginItem, parts.updater, parts.preferences,
                  parts.scheduler, parts.quit}) {}

    XdgLoginItem service{XdgLoginItem::Places::current()};
    SerialExecutor executor{"login-item"};
    SerialExecutor figures{"figures"};  // searches and sums of the history
    LaunchAtLoginController loginItem;
    MainWindow window;
};

AppWindow::AppWindow(Parts parts) : parts_(std::move(parts)) {}

AppWindow::~AppWindow() = default;

AppWindow::Made& AppWindow::made() {
    if (!made_) made_ = std::make_unique<Made>(parts_);
    return *made_;
}

void AppWindow::open() {
    made().window.present();
}

void AppWindow::openIfThereIsNoTray() {
    if (QSystemTrayIcon::isSystemTrayAvailable()) return;
    auto& window = made().window;
    window.setTrayMissing(true);
    if (window.isVisible()) return;
    window.setAttribute(Qt::WA_ShowWithoutActivating);
    window.show();
    window.lower();
    window.setAttribute(Qt::WA_ShowWithoutActivating, false);
}

}  // namespace quorvi
