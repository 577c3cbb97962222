#include "Quorvi/platform/linux/x11/desktop/X11ActiveApplication.h"

#include <utility>

#include "Quorvi/platform/linux/posix/ProcessName.h"
#include "Quorvi/platform/linux/xdg/ApplicationName.h"

namespace quorvi {

X11ActiveApplication::X11ActiveApplication(const X11Connection& connection)
    : connection_(connection), activeWindowAtom_(connection.atom("_NET_ACTIVE_WINDOW")) {}

std::optional<RunningApplication> X11ActiveApplication::look() {
    const auto window = connection_.number(connection_.root(), activeWindowAtom_, XCB_ATOM_WINDOW);
    if (!window || *window == XCB_NONE) return std::nullopt;
    const auto pid = x11ProcessOf(connection_, *window);
    if (pid <= 0) return std::nullopt;
    return RunningApplication{pid, nameOf(*window, pid)};
}

std::string X11ActiveApplication::nameOf(xcb_window_t window, pid_t pid) {
    const auto windowClass = x11WindowClass(connection_, window);
    const auto& [instance, className] = windowClass;
    if (windowClass.isEmpty()) return processName(pid);
    if (auto suite = suiteName(className); !suite.empty()) return suite;
    const auto known = names_.find(windowClass);
    if (known != names_.end()) return known->second;
    unnamed_ = windowClass;
    return className.empty() ? instance : className;
}

bool X11ActiveApplication::lookUpName() {
    const auto windowClass = std::exchange(unnamed_, std::nullopt);
    if (!windowClass) return false;
    const auto& [instance, className] = *windowClass;
    auto name = installedApplicationName(instance, className);
    if (name.empty()) name = className.empty() ? instance : className;
    names_.emplace(*windowClass, std::move(name));
    return true;
}

}  // namespace quorvi
