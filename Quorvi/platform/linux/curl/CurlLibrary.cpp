#include "Quorvi/platform/linux/curl/CurlLibrary.h"

#include <cstdlib>
#include <cstring>

#include "Quorvi/platform/linux/posix/ClearedMemory.h"
#include "Quorvi/platform/linux/posix/SharedLibrary.h"

namespace quorvi {

namespace {
constexpr int curlVersion = 4;  // of the interface, since 2006
}

CurlLibrary::CurlLibrary() {
    const SharedLibrary library("libcurl", curlVersion);
#define QUORVI_FIND(name) library.find("curl_" #name, name);
    QUORVI_CURL_FUNCTIONS(QUORVI_FIND)
#undef QUORVI_FIND
    clearMemoryOfOpenssl(library);
    global_init_mem(CURL_GLOBAL_DEFAULT, std::malloc, freeCleared, reallocateCleared, ::strdup,
                    std::calloc);
}

const CurlLibrary& CurlLibrary::get() {
    static const CurlLibrary library;
    return library;
}

}  // namespace quorvi
