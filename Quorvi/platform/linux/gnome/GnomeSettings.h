#pragma once

// For adapter sources only: it brings GLib with it.
#include <gio/gio.h>

#include <memory>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/gio/GLibHandles.h"

namespace quorvi {

// GNOME's settings, which are there only if their schema is installed; GLib would end the program
// that asks for others.
struct GnomeSchemaRelease {
    void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
    void operator()(GSettingsSchemaKey* key) const { g_settings_schema_key_unref(key); }
};
using GnomeSchema = std::unique_ptr<GSettingsSchema, GnomeSchemaRelease>;

// Null if it is not installed. Any thread.
GnomeSchema gnomeSchema(const char* name);
// The same; `path` for a schema without one of its own. For one thread.
GLibHandle<GSettings> gnomeSettings(const char* schema, const char* path = nullptr);

using Texts = std::vector<std::string>;
Texts texts(GSettings& settings, const char* key);
void setTexts(GSettings& settings, const char* key, const Texts& values);

}  // namespace quorvi
