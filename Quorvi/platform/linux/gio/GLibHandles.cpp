#include "Quorvi/platform/linux/gio/GLibHandles.h"

#include <gio/gio.h>

namespace quorvi {

void GLibRelease::operator()(void* object) const {
    g_object_unref(object);
}
void GLibRelease::operator()(GVariant* value) const {
    g_variant_unref(value);
}
void GLibRelease::operator()(GError* error) const {
    g_error_free(error);
}
void GLibRelease::operator()(GMainContext* context) const {
    g_main_context_unref(context);
}
void GLibRelease::operator()(GMainLoop* loop) const {
    g_main_loop_unref(loop);
}
void GLibRelease::operator()(GSource* source) const {
    g_source_unref(source);
}
void GLibRelease::operator()(GKeyFile* file) const {
    g_key_file_unref(file);
}
void GLibRelease::operator()(GList* list) const {
    g_list_free(list);
}
void GLibRelease::operator()(char* text) const {
    g_free(text);
}
void GLibRelease::operator()(char** texts) const {
    g_strfreev(texts);
}

}  // namespace quorvi
