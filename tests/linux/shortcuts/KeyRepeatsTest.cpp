#include "Quorvi/platform/linux/shortcuts/KeyRepeats.h"

#include <gtest/gtest.h>

#include "Quorvi/platform/linux/gnome/GnomeAccelerator.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;
using Times = std::vector<std::chrono::milliseconds>;

// What is told of commands at these times, each with its own time.
std::string toldOf(const Times& commands, KeyRepeats::Timing timing) {
    VirtualScheduler scheduler;
    std::string told;
    const auto begin = scheduler.now();
    KeyRepeats repeats(scheduler, timing, [&](KeyRepeats::Change change) {
        const char* names[] = {"pressed", "released", "tapped"};
        told += std::string(names[static_cast<int>(change)]) + ' ' +
                std::to_string((scheduler.now() - begin) / 1ms) + ' ';
    });
    for (const auto time : commands) {
        scheduler.advance(begin + time - scheduler.now());
        repeats.note();
    }
    scheduler.advance(2s);
    return told;
}

TEST(KeyRepeats, AHeldKeyIsToldFromOneThatIsPressedAgain) {
    Times held{0ms}, late{0ms};
    for (auto time = 500ms; time <= 1500ms; time += 30ms) held.push_back(time);
    for (auto time = 500ms; time <= 1500ms; time += 140ms) late.push_back(time);
    late.push_back(1500ms + 200ms);  // after the release was told
    const struct {
        Times commands;
        std::string told;
    } rows[] = {
        {{0ms}, "pressed 0 tapped 650 "},
        {held, "pressed 0 released 1640 "},
        {late, "pressed 0 released 1630 "},
        {{0ms, 300ms}, "pressed 0 tapped 300 pressed 300 tapped 950 "},
        // When a repeat was due, but no other came.
        {{0ms, 520ms}, "pressed 0 tapped 670 pressed 670 tapped 1170 "},
    };
    for (const auto& row : rows)
        EXPECT_EQ(toldOf(row.commands, KeyRepeats::Timing::of(500ms, 30ms)), row.told);
    EXPECT_EQ(toldOf(held, KeyRepeats::Timing::unknown()), "pressed 0 released 1640 ");
}

TEST(GnomeAccelerator, ACombinationOfTheUsersIsRecognisedHoweverItIsWritten) {
    const SwallowedKey space{keyCode::space, modifierFlag::shift | modifierFlag::command};
    const SwallowedKey letter{14, modifierFlag::control};
    EXPECT_EQ(gnomeAccelerator(space), "<Shift><Super>space");
    EXPECT_EQ(gnomeAccelerator(letter), "<Control>0x1a");
    for (const char* same : {"<Super><Shift>space", "<Mod4><Shift>SPACE"})
        EXPECT_TRUE(isGnomeAccelerator(same, space)) << same;
    for (const char* same : {"<Primary>e", "<Ctrl>E", "<Control>0x1a"})
        EXPECT_TRUE(isGnomeAccelerator(same, letter)) << same;
    for (const char* other : {"", "<Super>", "<Super>space", "<Hyper><Shift><Super>space"})
        EXPECT_FALSE(isGnomeAccelerator(other, space)) << other;
}

}  // namespace
}  // namespace quorvi::test
