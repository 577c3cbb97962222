#include "Quorvi/platform/linux/xkb/KeyMap.h"

#include <gtest/gtest.h>

#include <set>

namespace quorvi::test {
namespace {

TEST(KeyMap, EveryKeyOfAFullKeyboardHasItsOwnCode) {
    std::set<KeyCode> codes;
    std::size_t keys = 0;
    // Esc to keypad point, the ISO key with F11 and F12, keypad Enter to right Alt, Home to Delete,
    // the Windows keys and Menu, F13 to F20; but not Scroll Lock, which no Mac has.
    for (const auto& [first, last] : {std::pair{9, 77},
                                      {79, 91},
                                      {94, 96},
                                      {104, 106},
                                      {108, 108},
                                      {110, 119},
                                      {133, 135},
                                      {191, 198}})
        for (int keycode = first; keycode <= last; ++keycode, ++keys) {
            const auto code = keyCodeOfPosition(static_cast<XKeycode>(keycode));
            EXPECT_LT(code, firstForeignKeyCode) << keycode;
            EXPECT_EQ(positionOfKeyCode(code), keycode);
            codes.insert(code);
        }
    EXPECT_EQ(codes.size(), keys);
    EXPECT_EQ(keyCodeOfPosition(107), 0x100 + 107);
    EXPECT_EQ(positionOfKeyCode(0x100 + 107), 107);
    EXPECT_EQ(positionOfKeyCode(keyCode::fn), 0);
}

}  // namespace
}  // namespace quorvi::test
