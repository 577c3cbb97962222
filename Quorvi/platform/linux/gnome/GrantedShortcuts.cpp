#include "Quorvi/platform/linux/gnome/GrantedShortcuts.h"

#include "Quorvi/platform/linux/gnome/GnomeSettings.h"

namespace quorvi {
namespace {

constexpr auto applicationsSchema = "org.gnome.settings-daemon.global-shortcuts";
constexpr auto shortcutsSchema = "org.gnome.settings-daemon.global-shortcuts.application";
constexpr auto shortcutsPath = "/org/gnome/settings-daemon/global-shortcuts/app.quorvi.Quorvi/";

// The kept one of a value of the type a(sa{sv}); null if there is no other.
GLibHandle<GVariant> only(GVariant* shortcuts, const std::string& kept) {
    GVariantBuilder rest;
    g_variant_builder_init(&rest, G_VARIANT_TYPE("a(sa{sv})"));
    const auto count = g_variant_n_children(shortcuts);
    gsize left = 0;
    for (gsize i = 0; i < count; ++i) {
        const GLibHandle<GVariant> shortcut(g_variant_get_child_value(shortcuts, i));
        const char* name = nullptr;
        g_variant_get_child(shortcut.get(), 0, "&s", &name);
        if (kept != name) continue;
        g_variant_builder_add_value(&rest, shortcut.get());
        ++left;
    }
    GLibHandle<GVariant> result(g_variant_ref_sink(g_variant_builder_end(&rest)));
    return left == count ? nullptr : std::move(result);
}

}  // namespace

void forgetGrantedShortcuts(const std::string& kept) {
    const auto applications = gnomeSettings(applicationsSchema);
    const auto own = gnomeSettings(shortcutsSchema, shortcutsPath);
    if (!applications || !own) return;
    if (kept.empty()) {
        g_settings_reset(own.get(), "shortcuts");
        auto names = texts(*applications, "applications");
        std::erase(names, "app.quorvi.Quorvi");
        if (names.empty())
            g_settings_reset(applications.get(), "applications");
        else
            setTexts(*applications, "applications", names);
    } else {
        const GLibHandle<GVariant> shortcuts(g_settings_get_value(own.get(), "shortcuts"));
        const auto rest = only(shortcuts.get(), kept);
        if (rest) g_settings_set_value(own.get(), "shortcuts", rest.get());
    }
    g_settings_sync();
}

}  // namespace quorvi
