#include "Quorvi/platform/linux/posix/ClearedMemory.h"

#include <malloc.h>
#include <openssl/crypto.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace quorvi {

namespace {

// OpenSSL expects a null pointer for no bytes.
void* allocateForOpenssl(std::size_t size, const char*, int) {
    return size == 0 ? nullptr : std::malloc(size);
}

void* reallocateForOpenssl(void* memory, std::size_t size, const char*, int) {
    if (size > 0) return reallocateCleared(memory, size);
    freeCleared(memory);
    return nullptr;
}

void freeForOpenssl(void* memory, const char*, int) {
    freeCleared(memory);
}

}  // namespace

void freeCleared(void* memory) {
    if (!memory) return;
    explicit_bzero(memory, malloc_usable_size(memory));
    std::free(memory);
}

// std::realloc() leaves the content behind where it moves a block.
void* reallocateCleared(void* memory, std::size_t size) {
    const auto before = memory ? malloc_usable_size(memory) : 0;
    if (size <= before && size >= before / 2) return memory;
    void* moved = std::malloc(size);
    if (!moved) return nullptr;
    if (memory) std::memcpy(moved, memory, std::min(size, before));
    freeCleared(memory);
    return moved;
}

void clearMemoryOfOpenssl(const SharedLibrary& user) {
    decltype(&CRYPTO_set_mem_functions) set;
    user.find("CRYPTO_set_mem_functions", set);
    set(allocateForOpenssl, reallocateForOpenssl, freeForOpenssl);
}

}  // namespace quorvi
