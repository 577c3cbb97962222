#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "Quorvi/platform/KeyEventTap.h"
#include "Quorvi/platform/linux/gio/GLibHandles.h"
#include "Quorvi/platform/linux/gnome/GnomeKeyRepeat.h"

typedef struct _GSettings GSettings;

namespace quorvi {

// Quorvi's two entries among the custom shortcuts in GNOME's settings, each of which runs a
// command: one for dictating, one for Escape while a dictation can be cancelled. They are there
// only if the user wants them, and bound only while Quorvi wants the keys. Lives on one thread,
// whose default GLib context tells of changes; reading and writing may take milliseconds.
class CustomShortcutSettings {
public:
    enum class Entry { dictate, cancel };

    // Whether GNOME's settings are there. Any thread.
    static bool areThere();
    // And whether a program of this session acts by them. Waits for the bus, some milliseconds; any
    // thread.
    static bool areInUse();

    CustomShortcutSettings();
    ~CustomShortcutSettings();
    CustomShortcutSettings(const CustomShortcutSettings&) = delete;
    CustomShortcutSettings& operator=(const CustomShortcutSettings&) = delete;

    bool isInstalled() const;
    // Adds the entries, unbound. `helper` is the path of quorvi-shortcut, `program` Quorvi's.
    void install(const std::string& helper, const std::string& program);
    // Removes all trace of them.
    void remove();

    // Gives an entry the key, or none. Does nothing if they are not installed.
    void bind(Entry entry, const std::optional<SwallowedKey>& key);
    // What GNOME uses the key for, in its own words; empty if for nothing.
    std::string takenBy(const SwallowedKey& key) const;
    GnomeKeyRepeat repeat() const;

    // `changed` is called when the list of custom shortcuts or the auto-repeat has changed.
    void onChange(std::function<void()> changed);

    // Waits until everything is written.
    static void flush();

private:
    GSettings& of(Entry entry);

    GLibHandle<GSettings> list_;      // null without GNOME's settings
    GLibHandle<GSettings> keyboard_;  // null without it
    std::map<Entry, GLibHandle<GSettings>> entries_;
    std::function<void()> changed_;
};

}  // namespace quorvi
