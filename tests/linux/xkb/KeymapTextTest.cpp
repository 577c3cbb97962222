#include "Quorvi/platform/linux/xkb/KeymapText.h"

#include <gtest/gtest.h>

#include "Quorvi/platform/linux/kde/KdeKeys.h"
#include "Quorvi/platform/linux/keyboard/ChordKeys.h"
#include "tests/support/Process.h"

namespace quorvi::test {
namespace {

// As XKB's own compiler describes it.
KeymapText layout(const std::string& name) {
    return KeymapText(
        shell("setxkbmap -print -layout " + name + " | xkbcomp -xkb - - 2>/dev/null"));
}

TEST(KeymapText, TellsWhatTheKeysOfALayoutType) {
    constexpr XKeycode vOnUs = 55, yOnUs = 29, semicolonOnUs = 47;
    const auto german = layout("de");
    EXPECT_EQ(german.symbolAt(yOnUs), "z");
    EXPECT_EQ(kdeKeyOf({keyCodeOfPosition(yOnUs), modifierFlag::command}, german),
              0x10000000 + 'Z');
    EXPECT_EQ(kdeKeyOf({keyCodeOfPosition(semicolonOnUs), 0}, german), 0xD6);
    EXPECT_EQ(layout("us -variant dvorak").positionOf("v"), 60);
    const auto both = layout("ru,us");
    EXPECT_EQ(both.positionOf("v"), std::nullopt);
    EXPECT_TRUE(both.types(vOnUs, "v"));
    EXPECT_TRUE(KeymapText("xkb_symbols key <AD01> { [").isEmpty());

    const auto paste = ChordKeys::of(PasteChord::controlShiftV);
    EXPECT_EQ(paste.placedIn(both).key, paste.key);
    const auto dvorak = paste.placedIn(layout("us,us -variant dvorak,"));
    EXPECT_EQ(dvorak.key, 52u) << "though the desktop adds a US layout";
    EXPECT_EQ(dvorak.modifiers, paste.modifiers);
    EXPECT_EQ(paste.placedIn(layout("ru")).key, ChordKeys::of(PasteChord::shiftInsert).key);
}

}  // namespace
}  // namespace quorvi::test
