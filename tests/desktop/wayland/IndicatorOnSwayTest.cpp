#include "tests/desktop/ProgramDesk.h"
#include "tests/support/desktop/Mouse.h"

namespace quorvi::test {
namespace {

class IndicatorOnSway : public ProgramDesk {
protected:
    IndicatorOnSway() { openMousepad(); }
};

TEST_F(IndicatorOnSway, ItsCopyButtonCopiesAndLeavesTheFocus) {
    Mouse mouse;
    speech.willSay("Something was said.", 200, 1);
    startQuorvi();
    program.until("| ready");
    user.press(key::f8);
    program.until("Listening");
    hold();
    user.release(key::f8);
    program.until("Transcribing");
    user.type("x");  // so the words are not inserted
    program.until("Ready to paste");
    copy("other");
    ASSERT_TRUE(eventually([] { return clipboard() == "other"; }));
    EXPECT_TRUE(eventually([&] {
        mouse.click(760, 725);
        return clipboard() == "Something was said.";
    }));
    user.type("y");
    EXPECT_TRUE(eventually([&] { return fieldText() == "xy"; })) << fieldText();
}

}  // namespace
}  // namespace quorvi::test
