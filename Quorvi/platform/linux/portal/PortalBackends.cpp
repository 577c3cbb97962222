#include "Quorvi/platform/linux/portal/PortalBackends.h"

#include <glib.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "Quorvi/platform/linux/gio/GLibHandles.h"

namespace quorvi {
namespace {

namespace fs = std::filesystem;

GLibHandle<char*> list(GKeyFile* file, const char* key) {
    return GLibHandle<char*>(g_key_file_get_string_list(file, "portal", key, nullptr, nullptr));
}

bool names(const GLibHandle<char*>& values, const char* wanted) {
    for (char** value = values.get(); value && *value; ++value)
        if (g_ascii_strcasecmp(*value, wanted) == 0) return true;
    return false;
}

// The name of the backend that the file describes, if it has the portal on one of the desktops.
std::string backendIn(const fs::path& path, const char* interface,
                      const GLibHandle<char*>& desktops) {
    const GLibHandle<GKeyFile> file(g_key_file_new());
    if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr) ||
        !names(list(file.get(), "Interfaces"), interface))
        return {};
    const GLibHandle<char> name(g_key_file_get_string(file.get(), "portal", "DBusName", nullptr));
    const auto usedIn = list(file.get(), "UseIn");
    for (char** desktop = desktops.get(); *desktop; ++desktop)
        if (name && names(usedIn, *desktop)) return name.get();
    return {};
}

}  // namespace

std::string portalBackend(const char* interface) {
    const char* variable = std::getenv("XDG_CURRENT_DESKTOP");
    const GLibHandle<char*> desktops(g_strsplit(variable ? variable : "", ":", -1));
    for (const char* const* data = g_get_system_data_dirs(); *data; ++data) {
        std::error_code absent;
        for (const auto& entry :
             fs::directory_iterator(fs::path(*data) / "xdg-desktop-portal/portals", absent))
            if (auto name = backendIn(entry.path(), interface, desktops); !name.empty())
                return name;
    }
    return {};
}

}  // namespace quorvi
