#include "Quorvi/platform/linux/curl/CurlMemory.h"

#include <curl/curl.h>
#include <malloc.h>
#include <openssl/crypto.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>

namespace quorvi {

namespace {

void release(void* memory) {
    if (!memory) return;
    explicit_bzero(memory, malloc_usable_size(memory));
    std::free(memory);
}

// std::realloc() leaves the content behind where it moves a block.
void* resize(void* memory, std::size_t size) {
    const auto before = memory ? malloc_usable_size(memory) : 0;
    if (size <= before && size >= before / 2) return memory;
    void* moved = std::malloc(size);
    if (!moved) return nullptr;
    if (memory) std::memcpy(moved, memory, std::min(size, before));
    release(memory);
    return moved;
}

char* duplicate(const char* text) {
    const auto size = std::strlen(text) + 1;
    auto* copy = static_cast<char*>(std::malloc(size));
    if (copy) std::memcpy(copy, text, size);
    return copy;
}

// OpenSSL expects a null pointer for no bytes.
void* allocateForOpenssl(std::size_t size, const char*, int) {
    return size == 0 ? nullptr : std::malloc(size);
}

void* resizeForOpenssl(void* memory, std::size_t size, const char*, int) {
    if (size > 0) return resize(memory, size);
    release(memory);
    return nullptr;
}

void releaseForOpenssl(void* memory, const char*, int) {
    release(memory);
}

}  // namespace

void clearMemoryOfOpenssl() {
    CRYPTO_set_mem_functions(allocateForOpenssl, resizeForOpenssl, releaseForOpenssl);
}

void initializeCurl() {
    static std::once_flag once;
    std::call_once(once, [] {
        clearMemoryOfOpenssl();  // for programs whose main() does not
        curl_global_init_mem(CURL_GLOBAL_DEFAULT, std::malloc, release, resize, duplicate,
                             std::calloc);
    });
}

}  // namespace quorvi
