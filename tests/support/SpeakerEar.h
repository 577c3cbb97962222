#pragma once

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "tests/support/SoundServer.h"

namespace quorvi::test {

inline int loudest(const Samples& samples) {
    int peak = 0;
    for (const int sample : samples) peak = std::max(peak, std::abs(sample));
    return peak;
}

// Listens to what a speaker plays.
class SpeakerEar {
public:
    explicit SpeakerEar(const std::string& server)
        : file_(folder_.path() / "heard.raw"),
          listener_({"parec", "-s", server, "-d", "speaker.monitor", "--raw", "--rate=44100",
                     "--channels=1", "--format=s16le", "--latency-msec=10", file_.string()}) {
        eventually([this] { return !heard().empty(); });
    }

    // Everything up to now.
    Samples heard() const {
        const auto bytes = contentOf(file_);
        Samples samples(bytes.size() / 2);
        if (!samples.empty()) std::memcpy(samples.data(), bytes.data(), samples.size() * 2);
        return samples;
    }
    // What has sounded so far, without the silence around it.
    Samples sound() const {
        const auto all = heard();
        const auto audible = [](std::int16_t s) { return std::abs(s) > 20; };
        const auto first = std::find_if(all.begin(), all.end(), audible);
        const auto last = std::find_if(all.rbegin(), all.rend(), audible).base();
        return first < last ? Samples(first, last) : Samples{};
    }

private:
    TestFolder folder_;
    std::filesystem::path file_;
    Process listener_;
};

}  // namespace quorvi::test
