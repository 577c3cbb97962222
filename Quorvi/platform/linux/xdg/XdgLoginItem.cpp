#include "Quorvi/platform/linux/xdg/XdgLoginItem.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "Quorvi/platform/linux/xdg/DesktopEntry.h"
#include "Quorvi/platform/linux/xdg/SettingsProgram.h"
#include "QuorviCore/Error.h"

namespace quorvi {

namespace fs = std::filesystem;
using Status = LoginItemStatus;

namespace {

constexpr auto entryName = "quorvi.desktop";
constexpr auto launcherName = "app.quorvi.Quorvi.desktop";

std::string variable(const char* name, const std::string& fallback = {}) {
    const char* value = std::getenv(name);
    return value && *value ? value : fallback;
}

bool isSameFile(const fs::path& a, const fs::path& b) {
    std::error_code ignored;
    return fs::equivalent(a, b, ignored);
}

}  // namespace

XdgLoginItem::Places XdgLoginItem::Places::current() {
    Places places;
    std::error_code ignored;
    places.executable = fs::read_symlink("/proc/self/exe", ignored);
    const fs::path home = variable("HOME", "/");
    places.configuration = variable("XDG_CONFIG_HOME", home / ".config");
    places.applicationRoots.emplace_back(variable("XDG_DATA_HOME", home / ".local/share"));
    std::istringstream roots(variable("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
    for (std::string root; std::getline(roots, root, ':');)
        if (!root.empty()) places.applicationRoots.emplace_back(root);
    places.desktops = variable("XDG_CURRENT_DESKTOP");
    places.searchPath = variable("PATH");
    return places;
}

XdgLoginItem::XdgLoginItem(Places places)
    : places_(std::move(places)), entry_(places_.configuration / "autostart" / entryName) {}

// As the desktop would start it: the first folder that has the entry counts.
bool XdgLoginItem::isInstalled() const {
    for (const auto& root : places_.applicationRoots) {
        const auto file = root / "applications" / launcherName;
        std::error_code ignored;
        if (!fs::exists(file, ignored)) continue;
        const auto entry = DesktopEntry::read(file, places_.desktops);
        if (!entry || entry->isHidden) return false;
        return isSameFile(findProgram(entry->program, places_.searchPath), places_.executable);
    }
    return false;
}

Status XdgLoginItem::status() {
    if (!isInstalled()) return Status::notFound;
    std::error_code error;
    if (!fs::exists(entry_, error)) return error ? Status::unknown : Status::notRegistered;
    const auto entry = DesktopEntry::read(entry_, places_.desktops);
    if (!entry) return Status::unknown;
    if (entry->isHidden || !entry->showsHere) return Status::requiresApproval;
    // An entry for another copy, or a missing one, does not concern this program.
    const auto program = findProgram(entry->program, places_.searchPath);
    return isSameFile(program, places_.executable) ? Status::enabled : Status::notRegistered;
}

void XdgLoginItem::registerItem() {
    if (!isInstalled()) throw QuorviError::message(say::loginItemInstallFirst());
    const auto content = autostartEntry(places_.executable);
    const std::array<std::string_view, 1> parts{content};
    files_.replace(entry_, parts);
}

void XdgLoginItem::unregisterItem() {
    std::error_code error;
    fs::remove(entry_, error);
    if (error) throw std::system_error(error, "remove " + entry_.string());
}

void XdgLoginItem::openSettings() {
    const auto programs = settingsPrograms(PrivacyPane::loginItems, places_.desktops);
    if (!startFirst(programs, places_.searchPath))
        throw QuorviError::message(say::loginItemNoSettings());
}

}  // namespace quorvi
