// The times that the user waits for on sway, where a real text editor (mousepad) is given the text.
// The speech service answers at once, so its time is not included.
#include "bench/DictationDesk.h"

namespace quorvi::bench {
namespace {

struct Bench : DictationDesk {
    void run() {
        std::vector<double> toSample, toVisible;
        for (int round = 0; round <= rounds; ++round) {
            const auto measured =
                dictate("the weather is nice today number " + std::to_string(round));
            if (round == 0) continue;  // warm-up
            toSample.push_back(measured.toSample);
            toVisible.push_back(measured.toVisible);
        }
        figure("wayland_press_to_sample", median(toSample), "ms");
        figure("wayland_release_to_visible", median(toVisible), "ms");
    }
};

}  // namespace
}  // namespace quorvi::bench

int main() {
    quorvi::bench::Bench().run();
}
