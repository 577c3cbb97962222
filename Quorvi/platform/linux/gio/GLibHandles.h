#pragma once

#include <memory>

typedef struct _GVariant GVariant;
typedef struct _GError GError;
typedef struct _GMainContext GMainContext;
typedef struct _GMainLoop GMainLoop;
typedef struct _GSource GSource;
typedef struct _GKeyFile GKeyFile;
typedef struct _GList GList;

namespace quorvi {

// Gives back what GLib's functions leave to their caller, each type in its own way. Everything that
// has no overload is an object (GDBusConnection, GCancellable, …). Includes no header of GLib.
struct GLibRelease {
    void operator()(void* object) const;
    void operator()(GVariant* value) const;
    void operator()(GError* error) const;
    void operator()(GMainContext* context) const;
    void operator()(GMainLoop* loop) const;
    void operator()(GSource* source) const;  // only the reference; the source stays attached
    void operator()(GKeyFile* file) const;
    void operator()(GList* list) const;  // not what is in it
    void operator()(char* text) const;
    void operator()(char** texts) const;
};

template <class T>
using GLibHandle = std::unique_ptr<T, GLibRelease>;

}  // namespace quorvi
