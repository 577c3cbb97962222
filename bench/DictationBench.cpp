// The times that the user waits for, in a private desktop with a real text editor (mousepad), sound
// server and clipboard. The speech service answers at once, so its time is not included.
#include "bench/DictationDesk.h"

namespace quorvi::bench {
namespace {

class Bench : public DictationDesk {
public:
    void run() {
        std::vector<double> toSample, toPaste, toVisible, longToVisible, typed;
        for (int round = 0; round <= rounds; ++round) {
            const auto measured =
                dictate("the weather is nice today number " + std::to_string(round));
            if (round == 0) continue;  // warm-up
            toSample.push_back(measured.toSample);
            toPaste.push_back(measured.toPaste);
            toVisible.push_back(measured.toVisible);
        }
        std::string text;
        while (text.size() < 500) text += "abcdefghi ";
        text.back() = 'j';  // the service's text has no space at its end
        for (int round = 0; round < 5; ++round) longToVisible.push_back(dictate(text).toVisible);
        for (int round = 0; round < 3; ++round) typed.push_back(type(text));
        watch();
        figure("press_to_sample", median(toSample), "ms");
        figure("release_to_paste", median(toPaste), "ms");
        figure("release_to_visible", median(toVisible), "ms");
        figure("paste_vs_typing", median(longToVisible), "ms", median(typed));
    }

private:
    // After a dictation the program watches the field for the user's edits.
    void watch() {
        dictate("the weather is nice today");
        const int reads = accessibility_->reads;
        const auto processor = std::clock();
        const auto begin = millisecondsNow();
        scheduler_.runFor(20s);
        const double seconds = (millisecondsNow() - begin) / 1000;
        figure("watching_cpu",
               100 * static_cast<double>(std::clock() - processor) / CLOCKS_PER_SEC / seconds,
               "percent");
        figure("watching_reads", (accessibility_->reads - reads) / seconds, "per second");
    }

    double type(const std::string& text) {
        emptyEditor();
        const auto begin = millisecondsNow();
        if (std::system(("xdotool type '" + text + "'").c_str()) != 0) std::exit(1);
        until([&] { return reader_.value(*field_) == text; });
        return millisecondsNow() - begin;
    }
};

}  // namespace
}  // namespace quorvi::bench

int main() {
    quorvi::bench::Bench().run();
}
