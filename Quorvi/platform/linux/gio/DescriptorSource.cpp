#include "Quorvi/platform/linux/gio/DescriptorSource.h"

#include <glib-unix.h>
#include <glib.h>

#include <utility>

namespace quorvi {

DescriptorSource::DescriptorSource(int descriptor, std::function<bool()> readable)
    : source_(g_unix_fd_source_new(descriptor,
                                   static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR))) {
    using Readable = std::function<bool()>;
    const GUnixFDSourceFunc call = [](gint, GIOCondition, gpointer data) -> gboolean {
        return (*static_cast<Readable*>(data))() ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
    };
    // GLib keeps the function until a call of it has returned.
    g_source_set_callback(source_.get(),
                          reinterpret_cast<GSourceFunc>(reinterpret_cast<void*>(call)),
                          new Readable(std::move(readable)),
                          [](gpointer data) { delete static_cast<Readable*>(data); });
    g_source_attach(source_.get(), g_main_context_get_thread_default());
}

DescriptorSource::~DescriptorSource() {
    g_source_destroy(source_.get());
}

}  // namespace quorvi
