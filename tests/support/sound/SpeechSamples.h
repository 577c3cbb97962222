#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "QuorviCore/base/Bytes.h"

namespace quorvi::test {

// Sound of one channel.
struct Sound {
    int rate = 0;
    std::vector<std::int16_t> samples;
};

// The sentence as a synthetic voice says it, with the voice that the recogniser understands best.
Sound spoken(const std::string& sentence);

// A recording of it, as the application's own recorder writes it.
Bytes m4aOf(const Sound& sound);

}  // namespace quorvi::test
