#pragma once

#include <cstddef>

#include "Quorvi/platform/linux/posix/SharedLibrary.h"

// Allocation for libraries whose buffers hold requests with the API key: what is freed is
// overwritten. Any thread.
namespace quorvi {

void freeCleared(void* memory);
void* reallocateCleared(void* memory, std::size_t size);

// Makes the OpenSSL that a library depends on allocate so. Takes effect only before OpenSSL's first
// allocation: whoever loads such a library calls it before anything else.
void clearMemoryOfOpenssl(const SharedLibrary& user);

}  // namespace quorvi
