#include "tests/support/sound/SpeakerEar.h"

#include <algorithm>
#include <cstdlib>

#include "tests/support/Waiting.h"

namespace quorvi::test {

int loudest(const Samples& samples) {
    int peak = 0;
    for (const int sample : samples) peak = std::max(peak, std::abs(sample));
    return peak;
}

Samples SpeakerEar::heard() const {
    const auto bytes = contentOf(file_);
    Samples samples(bytes.size() / 2);
    if (!samples.empty()) std::memcpy(samples.data(), bytes.data(), samples.size() * 2);
    return samples;
}

Samples SpeakerEar::sound() const {
    const auto all = heard();
    const auto audible = [](std::int16_t s) { return std::abs(s) > 20; };
    const auto first = std::find_if(all.begin(), all.end(), audible);
    const auto last = std::find_if(all.rbegin(), all.rend(), audible).base();
    return first < last ? Samples(first, last) : Samples{};
}

SpeakerEar::SpeakerEar(const std::string& server)
    : file_(folder_.path() / "heard.raw"),
      listener_({"parec", "-s", server, "-d", "speaker.monitor", "--raw", "--rate=44100",
                 "--channels=1", "--format=s16le", "--latency-msec=10", file_.string()}) {
    eventually([this] { return !heard().empty(); });
}

}  // namespace quorvi::test
