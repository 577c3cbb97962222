#include "Quorvi/platform/linux/xdg/ApplicationName.h"

#include <gio/gdesktopappinfo.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "Quorvi/platform/linux/gio/GLibHandles.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi {

namespace {

std::string lowered(std::string name) {
    std::ranges::transform(name, name.begin(), text::asciiLower);
    return name;
}

}  // namespace

std::string installedApplicationName(const std::string& instance, const std::string& className) {
    for (const auto& id : {className, lowered(className), instance}) {
        if (id.empty()) continue;
        const GLibHandle<GDesktopAppInfo> info(g_desktop_app_info_new((id + ".desktop").c_str()));
        if (info) return g_app_info_get_name(G_APP_INFO(info.get()));
    }
    std::string name;
    GList* all = g_app_info_get_all();
    for (GList* item = all; item != nullptr && name.empty(); item = item->next) {
        auto* info = G_DESKTOP_APP_INFO(item->data);
        const char* declared = g_desktop_app_info_get_startup_wm_class(info);
        if (declared != nullptr && (className == declared || instance == declared))
            name = g_app_info_get_name(G_APP_INFO(info));
    }
    // GTK names a window after its program. Several entries may start it, in no certain order: the
    // entry with the fewest arguments names the program; another may open its settings.
    std::string shortest;
    for (GList* item = name.empty() ? all : nullptr; item != nullptr; item = item->next) {
        auto* info = G_APP_INFO(item->data);
        const char* program = g_app_info_get_executable(info);
        if (program == nullptr || instance != std::filesystem::path(program).filename()) continue;
        const char* given = g_app_info_get_commandline(info);
        const std::string command = given ? given : program;
        if (!name.empty() &&
            std::pair(command.size(), command) >= std::pair(shortest.size(), shortest))
            continue;
        shortest = command;
        name = g_app_info_get_name(info);
    }
    g_list_free_full(all, g_object_unref);
    return name;
}

std::string suiteName(const std::string& className) {
    const auto name = lowered(className);
    return name.starts_with("libreoffice") || name == "soffice" ? "LibreOffice" : "";
}

}  // namespace quorvi
