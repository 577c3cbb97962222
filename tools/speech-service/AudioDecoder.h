#pragma once

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "QuorviCore/base/Bytes.h"

namespace quorvi::speech {

// Thrown for a file without usable sound; what() is a sentence for the client.
class DecodeError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

constexpr int sampleRate = 16'000;

// Returns the sound of an audio file as the recogniser needs it: mono, 16 bit, at sampleRate. The
// file is untrusted: files and addresses that it refers to are not opened. Throws DecodeError, also
// for more than 15 minutes of sound. Thread-safe.
std::vector<std::int16_t> decodeAudio(const Bytes& file);

}  // namespace quorvi::speech
