#include "Quorvi/platform/linux/gnome/CustomShortcutSettings.h"

#include <gio/gio.h>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/gnome/GnomeAccelerator.h"
#include "Quorvi/platform/linux/shortcuts/CommandAddress.h"

namespace quorvi {
namespace {

using Texts = std::vector<std::string>;
using Entry = CustomShortcutSettings::Entry;

constexpr auto mediaKeys = "org.gnome.settings-daemon.plugins.media-keys";
constexpr auto customShortcut = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";
constexpr auto keyboardSchema = "org.gnome.desktop.peripherals.keyboard";
constexpr auto listKey = "custom-keybindings";
constexpr const char* keyBindings[] = {
    "org.gnome.desktop.wm.keybindings", "org.gnome.shell.keybindings",
    "org.gnome.mutter.keybindings", "org.gnome.mutter.wayland.keybindings", mediaKeys};

const char* pathOf(Entry entry) {
    return entry == Entry::dictate
               ? "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/quorvi/"
               : "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/quorvi-cancel/";
}

struct SchemaRelease {
    void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
    void operator()(GSettingsSchemaKey* key) const { g_settings_schema_key_unref(key); }
};
using Schema = std::unique_ptr<GSettingsSchema, SchemaRelease>;

Schema schema(const char* name) {
    auto* source = g_settings_schema_source_get_default();
    return Schema(source ? g_settings_schema_source_lookup(source, name, TRUE) : nullptr);
}

// A schema that is not there would end the program.
GLibHandle<GSettings> settings(const char* name, const char* path = nullptr) {
    if (!schema(name)) return nullptr;
    return GLibHandle<GSettings>(path ? g_settings_new_with_path(name, path)
                                      : g_settings_new(name));
}

std::string text(GSettings& settings, const char* key) {
    const GLibHandle<char> value(g_settings_get_string(&settings, key));
    return value.get();
}

Texts texts(GSettings& settings, const char* key) {
    const GLibHandle<char*> values(g_settings_get_strv(&settings, key));
    Texts result;
    for (char** value = values.get(); *value; ++value) result.emplace_back(*value);
    return result;
}

void setTexts(GSettings& settings, const char* key, const Texts& values) {
    std::vector<const char*> pointers;
    for (const auto& value : values) pointers.push_back(value.c_str());
    pointers.push_back(nullptr);
    g_settings_set_strv(&settings, key, pointers.data());
}

// An argument of a command line.
std::string quoted(const std::string& path) {
    const GLibHandle<char> result(g_shell_quote(path.c_str()));
    return result.get();
}

// The first setting of that schema with the key's combination, in words; empty if there is none.
std::string useOf(const SwallowedKey& key, const char* schemaName) {
    const auto described = schema(schemaName);
    const auto values = settings(schemaName);
    if (!described || !values) return {};
    const GLibHandle<char*> names(g_settings_schema_list_keys(described.get()));
    for (char** name = names.get(); *name; ++name) {
        const std::unique_ptr<GSettingsSchemaKey, SchemaRelease> entry(
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
    return schema(mediaKeys) && schema(customShortcut);
}

CustomShortcutSettings::CustomShortcutSettings() {
    if (areThere()) list_ = settings(mediaKeys);
    keyboard_ = settings(keyboardSchema);
    for (const auto entry : {Entry::dictate, Entry::cancel})
        if (list_) entries_[entry] = settings(customShortcut, pathOf(entry));
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
        const auto other = settings(customShortcut, path.c_str());
        if (isGnomeAccelerator(text(*other, "binding"), key)) return text(*other, "name");
    }
    for (const char* name : keyBindings)
        if (auto use = useOf(key, name); !use.empty()) return use;
    return {};
}

CustomShortcutSettings::Repeat CustomShortcutSettings::repeat() const {
    if (!keyboard_) return {};
    const auto milliseconds = [this](const char* key) {
        return std::chrono::milliseconds(g_settings_get_uint(keyboard_.get(), key));
    };
    return {g_settings_get_boolean(keyboard_.get(), "repeat") != FALSE,
            KeyRepeats::Timing::of(milliseconds("delay"), milliseconds("repeat-interval"))};
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
