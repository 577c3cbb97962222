#include "Quorvi/dictation/RecordingCue.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "Quorvi/dictation/RecordingSounds.h"
#include "tests/fakes/FakeSoundOutput.h"

namespace quorvi::test {
namespace {

using Style = RecordingSoundStyle;

TEST(RecordingCue, EveryClipHasItsLengthItsLimitsAndSilentEnds) {
    struct Row {
        Style style;
        std::size_t start, stop;
    };
    for (const auto& row : {Row{Style::classic, 3748, 4189}, Row{Style::soft, 3087, 3528},
                            Row{Style::chime, 3748, 4189}, Row{Style::click, 1984, 2425}}) {
        SCOPED_TRACE(rawValue(row.style));
        EXPECT_EQ(samples(RecordingCue::start, row.style).size(), row.start);
        EXPECT_EQ(samples(RecordingCue::stop, row.style).size(), row.stop);
        for (auto cue : allRecordingCues) {
            const auto clip = samples(cue, row.style);
            const auto [lowest, highest] = std::ranges::minmax(clip);
            EXPECT_EQ(clip.front(), 0);
            EXPECT_EQ(clip.back(), 0);
            EXPECT_LE(std::max<int>(highest, -lowest), 14'000);
            EXPECT_GE(std::max<int>(highest, -lowest), row.style == Style::click ? 3'800 : 12'000);
        }
    }
    EXPECT_TRUE(samples(RecordingCue::start, Style::silent).empty());
    EXPECT_EQ(samples(RecordingCue::stop), samples(RecordingCue::stop, Style::classic));
}

// The start rises and the stop falls.
TEST(RecordingCue, TheirPitchesGoInOppositeDirections) {
    const auto crossingsOfHalf = [](RecordingCue cue, std::ptrdiff_t half) {
        const auto clip = samples(cue);
        const auto size = std::ssize(clip) / 2;
        int crossings = 0;
        for (auto i = clip.begin() + half * size + 1; i < clip.begin() + (half + 1) * size; ++i)
            crossings += (i[-1] < 0) != (*i < 0);
        return crossings;
    };
    EXPECT_GT(crossingsOfHalf(RecordingCue::start, 1), crossingsOfHalf(RecordingCue::start, 0) + 5);
    EXPECT_LT(crossingsOfHalf(RecordingCue::stop, 1), crossingsOfHalf(RecordingCue::stop, 0) - 5);
}

TEST(RecordingCue, TheWavFileDescribesItsSamples) {
    const Bytes header = {'R', 'I', 'F',  'F',  0x6C, 0x1D, 0,    0,    'W',  'A', 'V',
                          'E', 'f', 'm',  't',  ' ',  16,   0,    0,    0,    1,   0,
                          1,   0,   0x44, 0xAC, 0,    0,    0x88, 0x58, 1,    0,   2,
                          0,   16,  0,    'd',  'a',  't',  'a',  0x48, 0x1D, 0,   0};
    const auto wav = wavData(RecordingCue::start);
    const auto clip = samples(RecordingCue::start);
    ASSERT_EQ(wav.size(), header.size() + 2 * clip.size());
    EXPECT_TRUE(std::equal(header.begin(), header.end(), wav.begin()));
    for (std::size_t i = 0; i < clip.size(); ++i)
        ASSERT_EQ(clip[i], static_cast<std::int16_t>(wav[44 + 2 * i] | wav[45 + 2 * i] << 8)) << i;
}

using Journal = std::vector<std::string>;

TEST(RecordingSounds, AClipIsLoadedOnceAndReplacesTheOneThatSounds) {
    FakeSoundOutput output;
    RecordingSounds sounds(output);
    sounds.play(RecordingCue::start, Style::soft);
    sounds.play(RecordingCue::start, Style::soft);
    sounds.play(RecordingCue::stop, Style::soft);
    sounds.play(RecordingCue::stop, Style::click);
    sounds.play(RecordingCue::start, Style::silent);  // leaves the sounding one alone
    EXPECT_EQ(output.journal, (Journal{"play 1 at 0.5", "stop 1", "play 1 at 0.5", "stop 1",
                                       "play 2 at 0.5", "stop 2", "play 3 at 0.5"}));
    EXPECT_EQ(output.loaded, (std::vector{wavData(RecordingCue::start, Style::soft),
                                          wavData(RecordingCue::stop, Style::soft),
                                          wavData(RecordingCue::stop, Style::click)}));
}

}  // namespace
}  // namespace quorvi::test
