// What happens to the keyboard, which the program has while the shortcut is held, on bad days.
#include "tests/desktop/ProgramDesk.h"

namespace quorvi::test {
namespace {

class HoldOnSway : public ProgramDesk {
protected:
    HoldOnSway() { openMousepad(); }
    void start() {
        speech.willSay("Something was said.");
        startQuorvi();
        program.until("| ready");
    }
    void pressAndListen() {
        user.press(key::f8);
        program.until("Listening");
    }
    bool fieldGets(const std::string& text) {
        return eventually([&] { return fieldText() == text; });
    }
    // The shortcut still works, and nothing but the words arrives.
    void expectDictation(const std::string& before = {}) {
        hold();
        user.release(key::f8);
        program.until("Done");
        EXPECT_TRUE(fieldGets(before + "Something was said.")) << fieldText();
    }
};

TEST_F(HoldOnSway, AStoppedProgramGoesOnAndKeepsNoKey) {
    start();
    pressAndListen();
    kill(program.pid(), SIGSTOP);
    // A key that is let pass before its last thread stops would repeat until its release is.
    ASSERT_TRUE(eventually([this] {
        return shell("grep -v ') T ' /proc/" + std::to_string(program.pid()) + "/task/*/stat")
            .empty();
    }));
    user.type("typed");
    EXPECT_TRUE(fieldGets("typed")) << fieldText();
    user.release(key::f8);
    // Not pasted, since the caret has moved; the sound of the stop may be missing, too.
    program.untilOneOf({"Ready to paste", "Needs attention"});
}

TEST_F(HoldOnSway, AKilledProgramLeavesTheKeyboardAtOnceAndTheNextOneDictates) {
    start();
    pressAndListen();
    program.crash();
    user.type("typed");
    EXPECT_TRUE(fieldGets("typed")) << fieldText();
    user.release(key::f8);
    start();
    pressAndListen();
    expectDictation("typed");
}

TEST_F(HoldOnSway, AReloadWhileHoldingLeavesTheShortcut) {
    start();
    pressAndListen();
    shell("swaymsg reload");
    expectDictation();
    user.chord({key::leftControl}, key::a);
    pressAndListen();
    expectDictation();
}

// It moves no caret, and no program is told of it.
TEST_F(HoldOnSway, AKeyDuringTheTranscriptionThatChangesTheFieldKeepsTheWordsOut) {
    user.type("ab");
    user.tap(key::home);
    start();
    speech.willSay("Something was said.", 200, 2);
    pressAndListen();
    hold();
    user.release(key::f8);
    program.until("Transcribing");
    std::this_thread::sleep_for(std::chrono::milliseconds(500));  // until the keyboard is free
    user.tap(key::remove);
    program.until("Ready to paste");
    EXPECT_EQ(fieldText(), "b");
}

// The seat has room for one input method. One that comes later costs one more press.
TEST_F(HoldOnSway, AnInputMethodOfTheUsersBeforeOrAfterQuorviLeavesTheShortcut) {
    const auto keyboards = [] { return shell("swaymsg -t get_inputs | grep -c virtual_keyboard"); };
    for (const bool isFirst : {true, false}) {
        if (!isFirst) start();
        const auto before = keyboards();
        const Process fcitx({"fcitx5"});
        ASSERT_TRUE(eventually([&] { return keyboards() != before; }));
        if (isFirst) start();
        pressAndListen();
        if (!isFirst) {
            hold();
            user.release(key::f8);
            user.press(key::f8);
        }
        expectDictation();
        user.chord({key::leftControl}, key::a);
        pressAndListen();
        expectDictation();
        user.chord({key::leftControl}, key::a);
        user.tap(key::backspace);
        program.quit();
    }
}

}  // namespace
}  // namespace quorvi::test
