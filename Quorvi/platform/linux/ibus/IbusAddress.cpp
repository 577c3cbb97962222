#include "Quorvi/platform/linux/ibus/IbusAddress.h"

#include <glib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Quorvi/platform/linux/gio/GLibHandles.h"

namespace quorvi {
namespace {

// The daemon writes a file for each display, named MACHINE-unix-DISPLAY: on Wayland the
// compositor's socket, on X11 the display's number.
std::string addressIn(const std::filesystem::path& file) {
    constexpr std::string_view key = "IBUS_ADDRESS=";
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(key)) return line.substr(key.size());
    return {};
}

std::string displayName() {
    if (const char* socket = std::getenv("WAYLAND_DISPLAY"); socket && *socket)
        return std::filesystem::path(socket).filename();
    const char* display = std::getenv("DISPLAY");
    const std::string name = display ? display : "";
    const auto number = name.find(':');
    return number == std::string::npos ? "" : name.substr(number + 1, name.find('.') - number - 1);
}

}  // namespace

std::string ibusAddress() {
    if (const char* address = std::getenv("IBUS_ADDRESS"); address && *address) return address;
    const auto display = displayName();
    if (display.empty()) return {};
    std::error_code error;
    const auto folder = std::filesystem::path(g_get_user_config_dir()) / "ibus" / "bus";
    for (const auto& file : std::filesystem::directory_iterator(folder, error))
        if (file.path().filename().string().ends_with("-unix-" + display))
            if (auto address = addressIn(file); !address.empty()) return address;
    return {};
}

}  // namespace quorvi
