#include <gtest/gtest.h>

#include "QuorviCore/shortcut/Gestures.h"

namespace quorvi::test {
namespace {

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
