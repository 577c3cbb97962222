#pragma once

#include <filesystem>
#include <string>
#include <vector>

struct AVFormatContext;

namespace quorvi::test {

// A sound file as a player would hear it, with what it says about itself.
struct DecodedSound {
    std::string codec;
    std::string container;
    int sampleRate = 0;
    int channels = 0;
    double bitRate = 0;
    double declaredSeconds = 0;
    std::vector<float> samples;  // of the first channel

    explicit DecodedSound(const std::filesystem::path& file);

private:
    void decode(AVFormatContext& format);
};

}  // namespace quorvi::test
