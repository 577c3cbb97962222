#include "Quorvi/platform/linux/xdg/DesktopEntry.h"

#include <glib.h>

#include <algorithm>
#include <sstream>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/gio/GLibHandles.h"

namespace quorvi {

namespace {

constexpr auto group = "Desktop Entry";

bool flag(GKeyFile* file, const char* key, bool fallback) {
    GError* failure = nullptr;
    const bool value = g_key_file_get_boolean(file, group, key, &failure) != FALSE;
    const GLibHandle<GError> error(failure);
    return error ? fallback : value;
}

std::vector<std::string> list(GKeyFile* file, const char* key) {
    const GLibHandle<char*> values(g_key_file_get_string_list(file, group, key, nullptr, nullptr));
    std::vector<std::string> result;
    for (char** value = values.get(); value && *value; ++value) result.emplace_back(*value);
    return result;
}

bool namesAny(const std::vector<std::string>& names, const std::string& desktops) {
    std::istringstream stream(desktops);
    for (std::string desktop; std::getline(stream, desktop, ':');)
        if (std::ranges::find(names, desktop) != names.end()) return true;
    return false;
}

// "%%" stands for "%"; a field code is no part of a program's name.
std::string withoutFieldCodes(std::string_view word) {
    std::string result;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (word[i] != '%') {
            result += word[i];
        } else if (++i < word.size() && word[i] == '%') {
            result += '%';
        }
    }
    return result;
}

std::string programOf(GKeyFile* file) {
    const GLibHandle<char> command(g_key_file_get_string(file, group, "Exec", nullptr));
    char** parsed = nullptr;
    if (!command || !g_shell_parse_argv(command.get(), nullptr, &parsed, nullptr)) return {};
    const GLibHandle<char*> words(parsed);
    return withoutFieldCodes(*words.get());
}

// Escapes a value for the file.
std::string escapedValue(const std::string& value) {
    std::string result;
    for (const char c : value) {
        if (c == '\\')
            result += "\\\\";
        else if (c == '\n')
            result += "\\n";
        else if (c == '\t')
            result += "\\t";
        else if (c == '\r')
            result += "\\r";
        else
            result += c;
    }
    return result;
}

}  // namespace

std::optional<DesktopEntry> DesktopEntry::read(const std::filesystem::path& file,
                                               const std::string& desktops) {
    const GLibHandle<GKeyFile> entry(g_key_file_new());
    if (!g_key_file_load_from_file(entry.get(), file.c_str(), G_KEY_FILE_NONE, nullptr) ||
        !g_key_file_has_group(entry.get(), group))
        return std::nullopt;
    DesktopEntry result;
    result.program = programOf(entry.get());
    result.isHidden = flag(entry.get(), "Hidden", false) ||
                      !flag(entry.get(), "X-GNOME-Autostart-enabled", true) ||
                      !flag(entry.get(), "X-MATE-Autostart-enabled", true);
    const auto only = list(entry.get(), "OnlyShowIn");
    const bool isExcluded = namesAny(list(entry.get(), "NotShowIn"), desktops);
    result.showsHere = !isExcluded && (only.empty() || namesAny(only, desktops));
    return result;
}

std::string quotedForExec(const std::string& path) {
    std::string quoted = "\"";
    for (const char c : path) {
        if (std::string_view("\"`$\\").find(c) != std::string_view::npos) quoted += '\\';
        if (c == '%') quoted += '%';
        quoted += c;
    }
    return quoted + '"';
}

std::string autostartEntry(const std::string& program) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Quorvi\n"
           "Comment=Dictation that works in every application\n"
           "Exec=" +
           escapedValue(quotedForExec(program)) + "\nTryExec=" + escapedValue(program) +
           "\n"
           "Icon=app.quorvi.Quorvi\n"
           "Terminal=false\n"
           "StartupNotify=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

}  // namespace quorvi
