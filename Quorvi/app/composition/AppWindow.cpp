#include "Quorvi/app/composition/AppWindow.h"

#include <QSystemTrayIcon>
#include <chrono>
#include <utility>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/xdg/XdgLoginItem.h"
#include "Quorvi/shell/DesktopNotice.h"
#include "Quorvi/system/LaunchAtLoginController.h"
#include "Quorvi/ui/window/MainWindow.h"
#include "QuorviCore/base/ColdMemory.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// A window that is opened again at once is as it was left.
constexpr auto remembrance = 5s;

}  // namespace

// In the order of dependence. What the window uses stays when it goes, since its jobs may take
// their time.
struct AppWindow::Contents {
    explicit Contents(Scheduler& scheduler) : loginItem(service, executor, scheduler) {}

    std::unique_ptr<MainWindow> makeWindow(const Parts& parts) {
        return std::make_unique<MainWindow>(WindowServices{
            parts.model, parts.corrections,
            HistoryEnvironment{parts.history, figures, parts.scheduler, parts.calendar, {}},
            parts.sync, parts.cloud, parts.keys, loginItem, parts.updater, parts.preferences,
            parts.scheduler, parts.quit, parts.hasSettingsFor, parts.desktop, parts.isKeyGiven,
            parts.keyConsent});
    }

    XdgLoginItem service{XdgLoginItem::Places::current()};
    SerialExecutor executor{"login-item"};
    // Searches and sums of the history.
    SerialExecutor figures{"figures", SerialExecutor::Afterwards::giveMemoryBack};
    LaunchAtLoginController loginItem;
    std::unique_ptr<MainWindow> window;
};

AppWindow::AppWindow(Parts parts) : parts_(std::move(parts)) {}

AppWindow::~AppWindow() = default;

MainWindow& AppWindow::window() {
    forgetting_.cancel();
    if (!contents_) contents_ = std::make_unique<Contents>(parts_.scheduler);
    auto& window = contents_->window;
    if (!window) {
        window = contents_->makeWindow(parts_);
        window->setTrayMissing(isTrayMissing_);
        window->onClosed = [this] { forgetSoon(); };
    }
    return *window;
}

void AppWindow::forgetSoon() {
    forgetting_ = parts_.scheduler.after(remembrance, [this] { forget(); });
}

void AppWindow::forget() {
    if (contents_->window->isWorking()) return forgetSoon();
    contents_->window.reset();
    // Behind the window's last jobs.
    contents_->figures.run(ColdMemory::giveBack);
}

void AppWindow::open() {
    window().present();
}

void AppWindow::openIfThereIsNoTray() {
    if (QSystemTrayIcon::isSystemTrayAvailable()) return;
    isTrayMissing_ = true;
    const bool exists = contents_ && contents_->window;
    if (exists) contents_->window->setTrayMissing(true);
    // A Wayland window takes the focus, wherever the user writes by now.
    if (parts_.desktop.isWayland && parts_.model.ready()) {
        if (!exists || !contents_->window->isVisible())
            showNotice(
                tr("Quorvi is running"),
                tr("This desktop shows no tray icons. Start Quorvi again to open its window."));
        return;
    }
    auto& shown = window();
    shown.setTrayMissing(true);
    if (shown.isVisible()) return;
    shown.setAttribute(Qt::WA_ShowWithoutActivating);
    shown.show();
    shown.lower();
    shown.setAttribute(Qt::WA_ShowWithoutActivating, false);
}

}  // namespace quorvi
