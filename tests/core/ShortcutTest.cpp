#include <gtest/gtest.h>

#include "QuorviCore/shortcut/Gestures.h"

namespace quorvi {
namespace {

using Action = ModifierHotkeyGesture::Action;

TEST(Hotkey, IsSoleModifierOnlyWhenNothingElseIsHeldOnEitherSide) {
    struct Row {
        const char* name;
        std::uint64_t flags;
        bool expected;
    };
    const Row rows[] = {
        {"right Option", 0x80040, true},        {"left Option", 0x80020, false},
        {"both Options", 0x80060, false},       {"with Shift", 0xA0040, false},
        {"with Fn", 0x880040, false},           {"with Caps Lock", 0x90040, true},
        {"device bit without family", 0x40, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Hotkey::rightOption.isSoleModifier(row.flags), row.expected) << row.name;
    EXPECT_FALSE((Hotkey{57, 0, "Caps Lock"}.isModifier()));
    EXPECT_FALSE((Hotkey{57, 0, "Caps Lock"}.isSoleModifier(0)));
}

TEST(Hotkey, SurvivesStorageAndRefusesWhatIsNoShortcut) {
    EXPECT_EQ(Hotkey::fromJson(Hotkey::commandShiftSpace.toJson()), Hotkey::commandShiftSpace);
    for (const char* broken :
         {"", "{", "[]", "{\"keyCode\":61,\"modifiers\":0}", "{\"keyCode\":\"61\",\"modifiers\":0,\"label\":\"x\"}",
          "{\"keyCode\":65536,\"modifiers\":0,\"label\":\"x\"}", "{\"keyCode\":1,\"modifiers\":-1,\"label\":\"x\"}"})
        EXPECT_EQ(Hotkey::fromJson(broken), std::nullopt) << broken;
}

TEST(Hotkey, KeyCombinationsNeedAModifierOrAFunctionKey) {
    using namespace modifierFlag;
    EXPECT_EQ(Hotkey::keyCombination(0, shift, "a"), std::nullopt);
    EXPECT_EQ(Hotkey::keyCombination(0, control | shift | leftControl, "a"),
              (Hotkey{0, control | shift, "⌃⇧A"}));
    EXPECT_EQ(Hotkey::keyCombination(105, 0, std::nullopt), (Hotkey{105, 0, "F13"}));
    EXPECT_EQ(Hotkey::keyCombination(49, command, " "), (Hotkey{49, command, "⌘Space"}));
    EXPECT_EQ(Hotkey::keyCombination(200, option, std::nullopt)->label, "⌥Key 200");
    EXPECT_EQ(Hotkey::keyCombination(2, control | option | command, "ß")->label, "⌃⌥⌘SS");
}

// Every row of the transition table, phase by phase.
TEST(ModifierGesture, FollowsItsTransitionTable) {
    using Phase = ModifierHotkeyGesture::Phase;
    struct Row {
        Phase before;
        const char* operation;
        DictationMode mode;
        Phase after;
        Action action;
    };
    constexpr auto hold = DictationMode::hold;
    constexpr auto toggle = DictationMode::toggle;
    const Row rows[] = {
        {Phase::idle, "press", hold, Phase::pending, Action::arm},
        {Phase::idle, "press", toggle, Phase::pending, Action::none},
        {Phase::idle, "press not eligible", hold, Phase::chord, Action::none},
        {Phase::pending, "press", hold, Phase::pending, Action::none},
        {Phase::active, "press", hold, Phase::active, Action::none},
        {Phase::chord, "press", hold, Phase::chord, Action::none},
        {Phase::pending, "press not eligible", hold, Phase::chord, Action::none},
        {Phase::active, "press not eligible", hold, Phase::chord, Action::cancel},
        {Phase::idle, "chord", hold, Phase::idle, Action::none},
        {Phase::pending, "chord", hold, Phase::chord, Action::none},
        {Phase::active, "chord", hold, Phase::chord, Action::cancel},
        {Phase::pending, "elapsed", hold, Phase::active, Action::start},
        {Phase::idle, "elapsed", hold, Phase::idle, Action::none},
        {Phase::chord, "elapsed", hold, Phase::chord, Action::none},
        {Phase::active, "release", hold, Phase::idle, Action::finish},
        {Phase::pending, "release", toggle, Phase::idle, Action::toggle},
        {Phase::pending, "release", hold, Phase::idle, Action::none},
        {Phase::chord, "release", toggle, Phase::idle, Action::none},
        {Phase::idle, "release", toggle, Phase::idle, Action::none},
    };
    for (const auto& row : rows) {
        ModifierHotkeyGesture gesture{row.before};
        const std::string operation = row.operation;
        const auto action = operation == "press"                ? gesture.press(true, row.mode)
                            : operation == "press not eligible" ? gesture.press(false, row.mode)
                            : operation == "chord"              ? gesture.chord()
                            : operation == "elapsed"            ? gesture.holdElapsed()
                                                                : gesture.release(row.mode);
        const auto name = operation + " in phase " + std::to_string(static_cast<int>(row.before));
        EXPECT_EQ(action, row.action) << name;
        EXPECT_EQ(gesture.phase, row.after) << name;
    }
}

TEST(HotkeyLatch, DropsAutoRepeatAndReleasesWithoutAPress) {
    HotkeyLatch latch;
    EXPECT_EQ(latch.transition(false), std::nullopt);
    EXPECT_EQ(latch.transition(true), true);
    EXPECT_EQ(latch.transition(true), std::nullopt);
    EXPECT_EQ(latch.transition(false), false);
}

TEST(DictationAction, FollowsModeDirectionAndStage) {
    constexpr auto hold = DictationMode::hold;
    constexpr auto toggle = DictationMode::toggle;
    for (auto mode : allDictationModes)
        for (bool down : {false, true})
            for (bool recording : {false, true})
                EXPECT_EQ(dictationAction(mode, down, recording, true), DictationAction::none);
    EXPECT_EQ(dictationAction(hold, true, false, false), DictationAction::start);
    EXPECT_EQ(dictationAction(hold, true, true, false), DictationAction::none);
    EXPECT_EQ(dictationAction(hold, false, true, false), DictationAction::finish);
    EXPECT_EQ(dictationAction(hold, false, false, false), DictationAction::none);
    EXPECT_EQ(dictationAction(toggle, true, false, false), DictationAction::start);
    EXPECT_EQ(dictationAction(toggle, true, true, false), DictationAction::finish);
    EXPECT_EQ(dictationAction(toggle, false, true, false), DictationAction::none);
}

TEST(ShortcutCapture, ChoosesAModifierPressedAndReleasedAlone) {
    StandaloneModifierCapture capture;
    EXPECT_EQ(capture.modifierChanged(61, 0x80040), std::nullopt);
    EXPECT_EQ(capture.modifierChanged(61, 0), Hotkey::rightOption);

    capture.modifierChanged(61, 0xA0044);  // Shift is held too
    EXPECT_EQ(capture.modifierChanged(61, 0x20004), std::nullopt);

    capture.modifierChanged(59, 0x40001);  // Control, then Option before either is released
    capture.modifierChanged(61, 0xC0041);
    EXPECT_EQ(capture.modifierChanged(61, 0x40001), std::nullopt);
    EXPECT_EQ(capture.modifierChanged(59, 0), std::nullopt);

    capture.modifierChanged(60, 0x20004);  // right Shift can't be chosen
    EXPECT_EQ(capture.modifierChanged(60, 0), std::nullopt);
}

}  // namespace
}  // namespace quorvi
