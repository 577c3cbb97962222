#pragma once

#include <cstddef>
#include <string>

namespace quorvi {

// Overwrites a secret before its memory is freed. The writes are volatile, so the compiler cannot
// remove them.
inline void wipe(char* data, std::size_t size) {
    volatile char* byte = data;
    for (std::size_t i = 0; i < size; ++i) byte[i] = 0;
}

inline void wipe(std::string& secret) {
    secret.resize(secret.capacity());
    wipe(secret.data(), secret.size());
    secret.clear();
}

}  // namespace quorvi
