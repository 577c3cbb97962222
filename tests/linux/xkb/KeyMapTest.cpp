#include "Quorvi/platform/linux/xkb/KeyMap.h"

#include <gtest/gtest.h>

namespace quorvi::test {
namespace {

TEST(KeyMap, EveryPositionHasItsOwnCode) {
    for (int keycode = 8; keycode < 256; ++keycode)
        EXPECT_EQ(positionOfKeyCode(keyCodeOfPosition(static_cast<XKeycode>(keycode))), keycode);
    EXPECT_LT(keyCodeOfPosition(198), firstForeignKeyCode) << "F20";
    EXPECT_EQ(positionOfKeyCode(keyCode::fn), 0);
}

}  // namespace
}  // namespace quorvi::test
