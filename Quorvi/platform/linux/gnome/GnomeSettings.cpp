#include "Quorvi/platform/linux/gnome/GnomeSettings.h"

namespace quorvi {

GnomeSchema gnomeSchema(const char* name) {
    auto* source = g_settings_schema_source_get_default();
    return GnomeSchema(source ? g_settings_schema_source_lookup(source, name, TRUE) : nullptr);
}

GLibHandle<GSettings> gnomeSettings(const char* schema, const char* path) {
    if (!gnomeSchema(schema)) return nullptr;
    return GLibHandle<GSettings>(path ? g_settings_new_with_path(schema, path)
                                      : g_settings_new(schema));
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

}  // namespace quorvi
