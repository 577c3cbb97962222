#include "Quorvi/platform/linux/postgres/PqLibrary.h"

#include "Quorvi/platform/linux/posix/ClearedMemory.h"
#include "Quorvi/platform/linux/posix/SharedLibrary.h"

namespace quorvi {

namespace {
constexpr int pqVersion = 5;  // of the interface, since 2006
}

PqLibrary::PqLibrary() {
    const SharedLibrary library("libpq", pqVersion);
#define QUORVI_FIND(name) library.find("PQ" #name, name);
    QUORVI_PQ_FUNCTIONS(QUORVI_FIND)
#undef QUORVI_FIND
    // Its first allocation in OpenSSL may come before that of a request with the API key.
    clearMemoryOfOpenssl(library);
}

const PqLibrary& PqLibrary::get() {
    static const PqLibrary library;
    return library;
}

}  // namespace quorvi
