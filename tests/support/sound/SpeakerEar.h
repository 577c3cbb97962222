#pragma once

#include <cstring>

#include "tests/support/sound/SoundServer.h"

namespace quorvi::test {

int loudest(const Samples& samples);

// Listens to what a speaker plays.
class SpeakerEar {
public:
    explicit SpeakerEar(const std::string& server);

    // Everything up to now.
    Samples heard() const;
    // What has sounded so far, without the silence around it.
    Samples sound() const;

private:
    TestFolder folder_;
    std::filesystem::path file_;
    Process listener_;
};

}  // namespace quorvi::test
