#include "Quorvi/platform/linux/remote/KeptKeyConsent.h"

#include <gio/gio.h>

#include <array>
#include <exception>
#include <memory>
#include <string_view>
#include <system_error>

#include "Quorvi/platform/linux/gio/BusConnection.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"

namespace quorvi {
namespace {

constexpr auto table = "remote-desktop";
constexpr int patience = 1000;  // milliseconds

GLibHandle<GVariant> askPermissions(const char* method, GVariant* arguments, GError** error) {
    return callOnSessionBus("org.freedesktop.impl.portal.PermissionStore",
                            "/org/freedesktop/impl/portal/PermissionStore",
                            "org.freedesktop.impl.portal.PermissionStore", method, arguments,
                            patience, error);
}

}  // namespace

std::optional<std::string> KeptKeyConsent::token() const {
    try {
        auto kept = PosixFileStore().read(file_);
        if (kept && kept->empty() && byPortal_) return std::nullopt;
        return kept;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

bool KeptKeyConsent::keep(const std::string& token) const {
    try {
        PosixFileStore().replace(file_, std::array{std::string_view(token)});
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void KeptKeyConsent::forget() const {
    if (const auto kept = token(); kept && !kept->empty())
        askPermissions("Delete", g_variant_new("(ss)", table, kept->c_str()), nullptr);
    std::error_code absent;
    std::filesystem::remove(file_, absent);
}

std::optional<bool> KeptKeyConsent::isRemembered(const std::string& token) {
    GError* problem = nullptr;
    const auto answer = askPermissions("List", g_variant_new("(s)", table), &problem);
    const GLibHandle<GError> error(problem);
    if (!answer || !g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(as)"))) {
        const GLibHandle<char> name(error ? g_dbus_error_get_remote_error(error.get()) : nullptr);
        // There is no such table.
        if (name && std::string_view(name.get()).ends_with(".NotFound")) return false;
        return std::nullopt;
    }
    const GLibHandle<GVariant> names(g_variant_get_child_value(answer.get(), 0));
    const std::unique_ptr<const char*, void (*)(void*)> list(
        g_variant_get_strv(names.get(), nullptr), g_free);
    return g_strv_contains(list.get(), token.c_str()) != FALSE;
}

}  // namespace quorvi
