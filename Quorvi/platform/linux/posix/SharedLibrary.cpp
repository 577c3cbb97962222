#include "Quorvi/platform/linux/posix/SharedLibrary.h"

#include <dlfcn.h>

#include <stdexcept>

namespace quorvi {

namespace {

// The loader's words belong to the calling thread.
void* orThrow(void* found) {
    if (found) return found;
    const char* reason = dlerror();
    throw std::runtime_error(reason ? reason : "a library is missing");
}

}  // namespace

SharedLibrary::SharedLibrary(const std::string& name, int version)
    : handle_(orThrow(dlopen((name + ".so." + std::to_string(version)).c_str(),
                             RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE))) {}

void* SharedLibrary::address(const char* name) const {
    return orThrow(dlsym(handle_, name));
}

}  // namespace quorvi
