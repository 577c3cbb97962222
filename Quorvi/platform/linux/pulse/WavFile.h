#pragma once

#include <cstdint>
#include <vector>

#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// Sound as interleaved 16-bit samples.
struct PcmSound {
    std::uint32_t sampleRate = 0;  // Hz
    std::uint8_t channels = 0;
    std::vector<std::int16_t> samples;

    double seconds() const { return static_cast<double>(samples.size()) / channels / sampleRate; }
};

// Reads a 16-bit PCM WAV file. Throws QuorviError for anything else.
PcmSound readWavFile(const Bytes& wav);

}  // namespace quorvi
