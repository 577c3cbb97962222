#include "Quorvi/platform/linux/pulse/PulseSoundOutput.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "Quorvi/dictation/RecordingCue.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/Waiting.h"
#include "tests/support/sound/SoundServer.h"
#include "tests/support/sound/SpeakerEar.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

// How alike the clip and the sound at its best place are, from -1 to 1.
double likeness(const std::vector<std::int16_t>& clip, const Samples& heard) {
    double best = -1;
    for (std::size_t at = 0; at < heard.size(); ++at) {
        double product = 0, a = 0, b = 0;
        for (std::size_t i = 0; i < clip.size(); ++i) {
            const double x = clip[i], y = at + i < heard.size() ? heard[at + i] : 0;
            product += x * y, a += x * x, b += y * y;
        }
        if (b > 0) best = std::max(best, product / std::sqrt(a * b));
    }
    return best;
}

class PulseSoundOutputTest : public testing::Test {
protected:
    PulseSoundOutputTest() {
        until(scheduler, [&] { return connection.hasMicrophone().has_value(); });
    }
    bool isPaused() const {
        const auto inputs = server.pactl("list sink-inputs");
        return inputs.find("Corked: no") == std::string::npos;
    }
    // The sound has begun and 300 ms without any have followed.
    Samples sounded(const SpeakerEar& ear) {
        eventually([&] { return !ear.sound().empty(); });
        eventually([&] {
            const auto all = ear.heard();
            constexpr std::size_t quiet = 13'230;
            return all.size() > quiet && loudest(Samples(all.end() - quiet, all.end())) <= 20;
        });
        return ear.sound();
    }

    SoundServer server;
    LoopScheduler scheduler;
    PulseConnection connection{scheduler, server.address()};
    PulseSoundOutput output{connection};
};

TEST_F(PulseSoundOutputTest, ACueIsHeardWholeAtHalfVolumeAndAgainTheSecondTime) {
    const auto clip = samples(RecordingCue::start);
    const auto sound = output.load(wavData(RecordingCue::start));
    for (int round = 0; round < 3; ++round) {
        const SpeakerEar ear(server.address());
        sound->play(0.5);
        const auto heard = sounded(ear);
        EXPECT_NEAR(loudest(heard), 7000, 200) << round;
        EXPECT_LE(heard.size(), clip.size()) << round;
        EXPECT_GT(likeness(clip, ear.heard()), 0.99) << round;
    }
    EXPECT_TRUE(eventually([&] { return isPaused(); }));
}

TEST_F(PulseSoundOutputTest, PlayingAgainRestartsInsteadOfOverlapping) {
    const auto clip = samples(RecordingCue::stop, RecordingSoundStyle::chime);
    const auto sound = output.load(wavData(RecordingCue::stop, RecordingSoundStyle::chime));
    const SpeakerEar ear(server.address());
    sound->play(0.5);
    ASSERT_TRUE(eventually([&] { return !ear.sound().empty(); }));
    sound->play(0.5);
    const auto heard = sounded(ear);
    EXPECT_LE(loudest(heard), 7100);
    EXPECT_LT(heard.size(), 2 * clip.size());
    EXPECT_GT(likeness(clip, ear.heard()), 0.99);
}

TEST_F(PulseSoundOutputTest, AClipThatIsStoppedFallsSilentAndOthersGoOn) {
    const auto wav = wavData(RecordingCue::start);
    auto longer = wav;  // 26 times the clip, 2 s
    for (int i = 0; i < 25; ++i) longer.insert(longer.end(), wav.begin() + 44, wav.end());
    const auto size = static_cast<std::uint32_t>(longer.size() - 44);
    for (std::size_t i = 0; i < 4; ++i) longer[40 + i] = static_cast<std::uint8_t>(size >> (8 * i));
    const auto sound = output.load(longer);
    const auto other = output.load(wav);

    const SpeakerEar ear(server.address());
    sound->play(1);
    ASSERT_TRUE(eventually([&] { return loudest(ear.sound()) > 9'500; }));
    other->stop();
    sound->stop();
    EXPECT_TRUE(eventually([&] { return isPaused(); }));
    EXPECT_LT(sounded(ear).size(), size / 2);
}

TEST_F(PulseSoundOutputTest, WithoutAServerAClipIsSilentAndSoundsAgainWhenThereIsOne) {
    const auto sound = output.load(wavData(RecordingCue::start));
    server.kill();
    sound->play(0.5);
    sound->stop();
    ASSERT_TRUE(until(scheduler, [&] { return connection.hasMicrophone() == false; }));
    sound->play(0.5);
    server.start();
    ASSERT_TRUE(until(scheduler, [&] { return connection.hasMicrophone() == true; }));
    const SpeakerEar ear(server.address());
    sound->play(0.5);
    EXPECT_NEAR(loudest(sounded(ear)), 7000, 200);
}

}  // namespace
}  // namespace quorvi::test
