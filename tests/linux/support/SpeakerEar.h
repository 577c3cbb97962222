#pragma once

#include <fcntl.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/linux/support/SoundServer.h"

namespace quorvi::testing {

// Listens to what a speaker plays: 16-bit mono at 44.1 kHz.
class SpeakerEar {
public:
    explicit SpeakerEar(const std::string& server, const std::string& monitor = "speaker.monitor")
        : file_(folder_.path() / "heard.raw"),
          listener_({"parec", "-s", server, "-d", monitor, "--raw", "--rate=44100", "--channels=1",
                     "--format=s16le", "--latency-msec=10", file_.string()}) {
        eventually([this] { return !heard().empty(); });
    }

    // Everything up to now.
    Samples heard() const {
        std::ifstream stream(file_, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
        Samples samples(bytes.size() / 2);
        std::copy_n(bytes.data(), samples.size() * 2, reinterpret_cast<char*>(samples.data()));
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
    TemporaryFolder folder_;
    std::filesystem::path file_;
    Process listener_;
};

}  // namespace quorvi::testing
