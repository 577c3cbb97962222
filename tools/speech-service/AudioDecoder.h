#pragma once

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "QuorviCore/base/Bytes.h"

namespace quorvi::speech {

// A file that holds no sound that can be used. what() is a sentence for the client.
class DecodeError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

constexpr int sampleRate = 16'000;

// The sound of an audio file, as the recogniser wants it: one channel of 16-bit samples at
// sampleRate. The file comes from a client and is not trusted: no other file or address that it
// names is opened, and sound beyond a quarter of an hour is refused. Thread-safe.
std::vector<std::int16_t> decodeAudio(const Bytes& file);

}  // namespace quorvi::speech
