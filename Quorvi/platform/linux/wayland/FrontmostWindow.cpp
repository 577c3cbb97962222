#include "Quorvi/platform/linux/wayland/FrontmostWindow.h"

#include <utility>

#include "Quorvi/platform/linux/posix/ProcessName.h"
#include "Quorvi/platform/linux/xdg/ApplicationName.h"

namespace quorvi {

void FrontmostWindow::show(std::optional<FocusedWindow> shown) {
    if (shown == window_) return;
    window_ = std::move(shown);
    if (!window_) return publish(std::nullopt, {});
    const auto& [pid, name, id] = *window_;
    const auto known = names_.find(name);
    if (known != names_.end()) return publish(RunningApplication{pid, known->second, id}, name);
    publish(RunningApplication{pid, name.empty() ? processName(pid) : name, id}, name);
    if (name.empty()) return;
    auto display = installedApplicationName(name, name);
    if (display.empty()) display = name;
    names_.emplace(name, display);
    publish(RunningApplication{pid, std::move(display), id}, name);
}

void FrontmostWindow::publish(std::optional<RunningApplication> application, std::string name) {
    std::lock_guard lock(mutex_);
    application_ = std::move(application);
    name_ = std::move(name);
}

std::optional<RunningApplication> FrontmostWindow::application() const {
    std::lock_guard lock(mutex_);
    return application_;
}

std::string FrontmostWindow::name() const {
    std::lock_guard lock(mutex_);
    return name_;
}

}  // namespace quorvi
