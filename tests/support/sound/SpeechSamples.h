#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/pulse/AacFileWriter.h"
#include "QuorviCore/base/Bytes.h"
#include "tests/support/Process.h"

namespace quorvi::test {

// Sound of one channel.
struct Sound {
    int rate = 0;
    std::vector<std::int16_t> samples;
};

// The sentence as a synthetic voice says it, with the voice that the recogniser understands best.
inline Sound spoken(const std::string& sentence) {
    const auto wave = outputOf({"espeak-ng", "-v", "en-us+f2", "-s", "130", "--stdout", sentence});
    // The header is of the plain kind: the rate at 24, the samples from 44 to the end.
    if (wave.size() < 44 || wave.compare(36, 4, "data") != 0) throw std::runtime_error("no speech");
    Sound sound;
    std::memcpy(&sound.rate, wave.data() + 24, 4);
    sound.samples.resize((wave.size() - 44) / 2);
    std::memcpy(sound.samples.data(), wave.data() + 44, sound.samples.size() * 2);
    return sound;
}

// A recording of it, as the application's own recorder writes it.
inline Bytes m4aOf(const Sound& sound) {
    const TestFolder folder;
    AacFileWriter writer({.sampleRate = sound.rate});
    writer.open(folder.path() / "speech.m4a");
    writer.write(sound.samples);
    writer.finish();
    const auto file = contentOf(folder.path() / "speech.m4a");
    return {file.begin(), file.end()};
}

}  // namespace quorvi::test
