#include "Quorvi/platform/linux/pulse/AvLibraries.h"

#include <dlfcn.h>

#include <string>

#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

[[noreturn]] void fail() {
    const char* reason = dlerror();
    throw QuorviError::message(say::soundCannotBeEncoded(reason ? reason : "a library is missing"));
}

// The version whose headers this was compiled with. Never unloaded again: libraries that come with
// it leave threads and thread-specific data behind.
void* load(const char* name, int version) {
    const auto file = std::string(name) + ".so." + std::to_string(version);
    void* library = dlopen(file.c_str(), RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    if (!library) fail();
    return library;
}

template <class Function>
void find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    if (!function) fail();
}

}  // namespace

AvLibraries::AvLibraries() {
    void* library = load("libavutil", LIBAVUTIL_VERSION_MAJOR);
#define QUORVI_FIND(name) find(library, #name, name);
    QUORVI_AVUTIL_FUNCTIONS(QUORVI_FIND)
    library = load("libavcodec", LIBAVCODEC_VERSION_MAJOR);
    QUORVI_AVCODEC_FUNCTIONS(QUORVI_FIND)
    library = load("libavformat", LIBAVFORMAT_VERSION_MAJOR);
    QUORVI_AVFORMAT_FUNCTIONS(QUORVI_FIND)
#undef QUORVI_FIND
}

const AvLibraries& AvLibraries::get() {
    static const AvLibraries libraries;
    return libraries;
}

}  // namespace quorvi
