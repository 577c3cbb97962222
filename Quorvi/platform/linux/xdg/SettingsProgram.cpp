#include "Quorvi/platform/linux/xdg/SettingsProgram.h"

#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <sstream>
#include <string_view>

namespace quorvi {

namespace {

struct Program {
    PrivacyPane pane;
    std::string_view desktop;
    std::array<const char*, 3> command;  // trailing null pointers are no arguments
};

constexpr auto microphone = PrivacyPane::microphone;
constexpr auto accessibility = PrivacyPane::accessibility;
constexpr auto loginItems = PrivacyPane::loginItems;

// pavucontrol's fourth tab shows the input devices. It belongs to the desktops that have no sound
// settings of their own, and it helps on every other one.
constexpr std::array programs{
    Program{microphone, "GNOME", {"gnome-control-center", "sound"}},
    Program{microphone, "Unity", {"unity-control-center", "sound"}},
    Program{microphone, "Budgie", {"budgie-control-center", "sound"}},
    Program{microphone, "KDE", {"systemsettings", "kcm_pulseaudio"}},
    Program{microphone, "KDE", {"systemsettings5", "kcm_pulseaudio"}},
    Program{microphone, "KDE", {"kcmshell5", "kcm_pulseaudio"}},
    Program{microphone, "X-Cinnamon", {"cinnamon-settings", "sound"}},
    Program{microphone, "MATE", {"mate-volume-control"}},
    Program{microphone, "LXQt", {"pavucontrol-qt", "--tab=4"}},
    Program{microphone, "XFCE", {"pavucontrol", "--tab=4"}},
    Program{accessibility, "GNOME", {"gnome-control-center", "universal-access"}},
    Program{accessibility, "Unity", {"unity-control-center", "universal-access"}},
    Program{accessibility, "Budgie", {"budgie-control-center", "universal-access"}},
    Program{accessibility, "KDE", {"systemsettings", "kcm_access"}},
    Program{accessibility, "KDE", {"systemsettings5", "kcm_access"}},
    Program{accessibility, "KDE", {"kcmshell5", "kcm_access"}},
    Program{accessibility, "X-Cinnamon", {"cinnamon-settings", "universal-access"}},
    Program{accessibility, "MATE", {"mate-at-properties"}},
    Program{accessibility, "XFCE", {"xfce4-accessibility-settings"}},
    Program{loginItems, "GNOME", {"gnome-tweaks"}},
    Program{loginItems, "GNOME", {"gnome-session-properties"}},
    Program{loginItems, "Unity", {"gnome-session-properties"}},
    Program{loginItems, "Budgie", {"budgie-desktop-settings"}},
    Program{loginItems, "KDE", {"systemsettings", "kcm_autostart"}},
    Program{loginItems, "KDE", {"systemsettings5", "kcm_autostart"}},
    Program{loginItems, "KDE", {"kcmshell5", "kcm_autostart"}},
    Program{loginItems, "X-Cinnamon", {"cinnamon-settings", "startup"}},
    Program{loginItems, "MATE", {"mate-session-properties"}},
    Program{loginItems, "LXQt", {"lxqt-config-session"}},
    Program{loginItems, "XFCE", {"xfce4-session-settings"}},
};

std::vector<std::string> split(const std::string& list) {
    std::vector<std::string> items;
    std::istringstream stream(list);
    for (std::string item; std::getline(stream, item, ':');) items.push_back(item);
    return items;
}

// A session of its own, so that the end of this program's session or terminal doesn't end it.
void leaveSession(void*) {
    ::setsid();
}

}  // namespace

std::vector<std::vector<std::string>> settingsPrograms(PrivacyPane pane,
                                                       const std::string& desktops) {
    // Desktops have no settings page for reading the keyboard.
    if (pane == PrivacyPane::inputMonitoring) pane = PrivacyPane::accessibility;
    const auto running = split(desktops);
    std::vector<std::vector<std::string>> own, others;
    for (const auto& program : programs) {
        if (program.pane != pane) continue;
        std::vector<std::string> command;
        for (const char* part : program.command)
            if (part) command.emplace_back(part);
        const bool isOwn = std::ranges::find(running, program.desktop) != running.end();
        (isOwn ? own : others).push_back(std::move(command));
    }
    // Then the others, most independent program (last in the table) first.
    own.insert(own.end(), others.rbegin(), others.rend());
    return own;
}

std::string findProgram(const std::string& program, const std::string& searchPath) {
    if (program.starts_with('/')) return program;
    for (const auto& folder : split(searchPath)) {
        if (!folder.starts_with('/')) continue;
        const auto path = std::filesystem::path(folder) / program;
        std::error_code ignored;
        if (std::filesystem::is_regular_file(path, ignored) && ::access(path.c_str(), X_OK) == 0)
            return path;
    }
    return {};
}

bool hasSettingsProgram(PrivacyPane pane, const std::string& desktops,
                        const std::string& searchPath) {
    return std::ranges::any_of(settingsPrograms(pane, desktops), [&](const auto& command) {
        return !findProgram(command[0], searchPath).empty();
    });
}

bool startFirst(const std::vector<std::vector<std::string>>& programs,
                const std::string& searchPath) {
    for (auto command : programs) {
        command[0] = findProgram(command[0], searchPath);
        if (command[0].empty()) continue;
        std::vector<char*> arguments;
        for (auto& argument : command) arguments.push_back(argument.data());
        arguments.push_back(nullptr);
        constexpr auto flags =
            static_cast<GSpawnFlags>(G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
        if (g_spawn_async(nullptr, arguments.data(), nullptr, flags, &leaveSession, nullptr,
                          nullptr, nullptr))
            return true;
    }
    return false;
}

}  // namespace quorvi
