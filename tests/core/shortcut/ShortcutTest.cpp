#include <gtest/gtest.h>

#include "QuorviCore/shortcut/Gestures.h"

namespace quorvi::test {
namespace {

TEST(Hotkey, IsSoleModifierOnlyWhenNothingElseIsHeldOnEitherSide) {
    for (const auto& [name, flags, expected] :
         std::initializer_list<std::tuple<const char*, std::uint64_t, bool>>{
             {"right Option", 0x80040, true},
             {"left Option", 0x80020, false},
             {"both Options", 0x80060, false},
             {"with Shift", 0xA0040, false},
             {"with Fn", 0x880040, false},
             {"with Caps Lock", 0x90040, true},
             {"device bit without family", 0x40, false}})
        EXPECT_EQ(Hotkey::rightOption.isSoleModifier(flags), expected) << name;
    EXPECT_FALSE((Hotkey{57, 0, "Caps Lock"}.isModifier()));
    EXPECT_FALSE((Hotkey{57, 0, "Caps Lock"}.isSoleModifier(0)));
}

TEST(Hotkey, RefusesWhatIsNoShortcut) {
    for (const char* broken : {"", "{", "[]", "{\"keyCode\":61,\"modifiers\":0}",
                               "{\"keyCode\":\"61\",\"modifiers\":0,\"label\":\"x\"}",
                               "{\"keyCode\":65536,\"modifiers\":0,\"label\":\"x\"}",
                               "{\"keyCode\":1,\"modifiers\":-1,\"label\":\"x\"}"})
        EXPECT_EQ(Hotkey::fromJson(broken), std::nullopt) << broken;
}

TEST(Hotkey, KeyCombinationsAreLabelledByTheirModifiersAndKey) {
    using namespace modifierFlag;
    EXPECT_EQ(Hotkey::keyCombination(0, control | shift | leftControl, "a"),
              (Hotkey{0, control | shift, "⌃⇧A"}));
    EXPECT_EQ(Hotkey::keyCombination(105, 0, std::nullopt), (Hotkey{105, 0, "F13"}));
    EXPECT_EQ(Hotkey::keyCombination(49, command, " "), (Hotkey{49, command, "⌘Space"}));
    EXPECT_EQ(Hotkey::keyCombination(200, option, std::nullopt)->label, "⌥Key 200");
    EXPECT_EQ(Hotkey::keyCombination(2, control | option | command, "ß")->label, "⌃⌥⌘SS");
}

TEST(ShortcutCapture, ChoosesNoModifierThatWasHeldWithAnother) {
    StandaloneModifierCapture capture;
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
}  // namespace quorvi::test
