#include "Quorvi/platform/linux/gnome/CustomShortcutSettings.h"

#include <gio/gio.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/gio/BusConnection.h"
#include "Quorvi/platform/linux/gnome/GnomeAccelerator.h"
#include "Quorvi/platform/linux/gnome/GnomeSettings.h"
#include "Quorvi/platform/linux/shortcuts/CommandAddress.h"

namespace quorvi {
namespace {

using Entry = CustomShortcutSettings::Entry;

constexpr auto mediaKeys = "org.gnome.settings-daemon.plugins.media-keys";
constexpr auto customShortcut = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";
constexpr int patience = 2000;  // milliseconds
constexpr auto listKey = "custom-keybindings";
constexpr const char* keyBindings[] = {
    "org.gnome.desktop.wm.keybindings", "org.gnome.shell.keybindings",
    "org.gnome.mutter.keybindings", "org.gnome.mutter.wayland.keybindings", mediaKeys};

const char* pathOf(Entry entry) {
    return entry == Entry::dictate
               ? "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/quorvi/"
               : "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/quorvi-cancel/";
}

std::string text(GSettings& settings, const char* key) {
    const GLibHandle<char> value(g_settings_get_string(&settings, key));
    return value.get();
}

// An argument of a command line.
std::string quoted(const std::string& path) {
    const GLibHandle<char> result(g_shell_quote(path.c_str()));
    return result.get();
}

// The first setting of that schema with the key's combination, in words; empty if there is none.
std::string useOf(const SwallowedKey& key, const char* schemaName) {
    const auto described = gnomeSchema(schemaName);
    const auto values = gnomeSettings(schemaName);
    if (!described || !values) return {};
    const GLibHandle<char*> names(g_settings_schema_list_keys(described.get()));
    for (char** name = names.get(); *name; ++name) {
        const std::unique_ptr<GSettingsSchemaKey, GnomeSchemaRelease> entry(
            g_settings_schema_get_key(described.get(), *name));
        if (!g_variant_type_equal(g_settings_schema_key_get_value_type(entry.get()),
                                  G_VARIANT_TYPE_STRING_ARRAY))
            continue;
        const auto combinations = texts(*values, *name);
        if (std::ranges::none_of(combinations, [&](const std::string& combination) {
                return isGnomeAccelerator(combination, key);
            }))
            continue;
        const char* summary = g_settings_schema_key_get_summary(entry.get());
        return summary ? summary : *name;
    }
    return {};
}

}  // namespace

bool CustomShortcutSettings::areThere() {
    return gnomeSchema(mediaKeys) && gnomeSchema(customShortcut);
}

bool CustomShortcutSettings::areInUse() {
    if (!areThere()) return false;
    const auto bus = connectToBus(G_BUS_TYPE_SESSION, nullptr);
    if (!bus) return false;
    const GLibHandle<GVariant> answer(g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "NameHasOwner", g_variant_new("(s)", "org.gnome.SettingsDaemon.MediaKeys"),
        G_VARIANT_TYPE("(b)"), G_DBUS_CALL_FLAGS_NONE, patience, nullptr, nullptr));
    gboolean isOwned = FALSE;
    if (answer) g_variant_get(answer.get(), "(b)", &isOwned);
    return isOwned != FALSE;
}

CustomShortcutSettings::CustomShortcutSettings() {
    if (areThere()) list_ = gnomeSettings(mediaKeys);
    keyboard_ = gnomeKeyboardSettings();
    for (const auto entry : {Entry::dictate, Entry::cancel})
        if (list_) entries_[entry] = gnomeSettings(customShortcut, pathOf(entry));
}

CustomShortcutSettings::~CustomShortcutSettings() {
    for (auto* each : {list_.get(), keyboard_.get()})
        if (each) g_signal_handlers_disconnect_by_data(each, this);
    flush();
}

GSettings& CustomShortcutSettings::of(Entry entry) {
    return *entries_.at(entry);
}

bool CustomShortcutSettings::isInstalled() const {
    if (!list_) return false;
    const auto paths = texts(*list_, listKey);
    return std::ranges::find(paths, pathOf(Entry::dictate)) != paths.end();
}

void CustomShortcutSettings::install(const std::string& helper, const std::string& program) {
    if (!list_) return;
    auto paths = texts(*list_, listKey);
    for (const auto entry : {Entry::dictate, Entry::cancel}) {
        const bool dictates = entry == Entry::dictate;
        // If Quorvi was killed with Escape bound, the key is given back when it is pressed.
        const auto command = dictates ? quoted(helper) + ' ' + dictateWord
                                      : quoted(helper) + ' ' + cancelWord + ' ' + quoted(program) +
                                            " shortcut release";
        g_settings_set_string(&of(entry), "name", dictates ? "Quorvi" : "Quorvi: cancel");
        g_settings_set_string(&of(entry), "command", command.c_str());
        if (std::ranges::find(paths, pathOf(entry)) == paths.end())
            paths.emplace_back(pathOf(entry));
    }
    setTexts(*list_, listKey, paths);
}

void CustomShortcutSettings::remove() {
    if (!list_) return;
    auto paths = texts(*list_, listKey);
    const auto count = paths.size();
    for (const auto entry : {Entry::dictate, Entry::cancel}) {
        std::erase(paths, pathOf(entry));
        for (const char* key : {"binding", "command", "name"}) g_settings_reset(&of(entry), key);
    }
    if (paths.empty())
        g_settings_reset(list_.get(), listKey);
    else if (paths.size() != count)
        setTexts(*list_, listKey, paths);
}

void CustomShortcutSettings::bind(Entry entry, const std::optional<SwallowedKey>& key) {
    if (!isInstalled()) return;
    const auto combination = key ? gnomeAccelerator(*key) : "";
    if (text(of(entry), "binding") != combination)
        g_settings_set_string(&of(entry), "binding", combination.c_str());
}

std::string CustomShortcutSettings::takenBy(const SwallowedKey& key) const {
    if (!list_) return {};
    for (const auto& path : texts(*list_, listKey)) {
        if (path == pathOf(Entry::dictate) || path == pathOf(Entry::cancel)) continue;
        const auto other = gnomeSettings(customShortcut, path.c_str());
        if (isGnomeAccelerator(text(*other, "binding"), key)) return text(*other, "name");
    }
    for (const char* name : keyBindings)
        if (auto use = useOf(key, name); !use.empty()) return use;
    return {};
}

GnomeKeyRepeat CustomShortcutSettings::repeat() const {
    return gnomeKeyRepeat(keyboard_.get());
}

void CustomShortcutSettings::onChange(std::function<void()> changed) {
    changed_ = std::move(changed);
    const auto call = +[](GSettings*, const char*, gpointer data) {
        static_cast<CustomShortcutSettings*>(data)->changed_();
    };
    if (list_) g_signal_connect(list_.get(), "changed::custom-keybindings", G_CALLBACK(call), this);
    if (keyboard_) g_signal_connect(keyboard_.get(), "changed", G_CALLBACK(call), this);
}

void CustomShortcutSettings::flush() {
    g_settings_sync();
}

}  // namespace quorvi
