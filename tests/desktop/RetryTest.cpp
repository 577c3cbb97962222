// The speech service or the network fails, and the user tries again.
#include "tests/desktop/ProgramDesk.h"

namespace quorvi::test {
namespace {

class Retry : public ProgramDesk {
protected:
    void dictate() {
        user.press(key::f8);
        program.until("Listening");
        hold();
        user.release(key::f8);
    }
    void fail(int status = 503, bool drop = false) {
        speech.willSay("", status, 0, drop);
        dictate();
        program.until("You can try again for 10 minutes. | ready");
    }
    void retry(const std::string& text) {
        speech.willSay(text);
        EXPECT_EQ(shell(builtProgram("quorvi") + " retry 2>&1"), "");
    }
    // Files of the user's that hold encoded sound.
    std::string soundFiles() const {
        return shell("grep -rla ftyp " + program.homeSetting().substr(5) + " " +
                     UserFolders::find().recordings.string() + " 2>/dev/null");
    }
};

TEST_F(Retry, BringsTheWordsIntoTheirFieldOrToTheClipboard) {
    startQuorvi();
    program.until("| ready");
    std::string text;
    for (const auto& [status, drop] :
         {std::pair(503, false), {401, false}, {408, false}, {429, false}, {200, true}}) {
        SCOPED_TRACE(status);
        fail(status, drop);
        EXPECT_EQ(soundFiles(), "");
        const auto words = "Words after " + std::to_string(status) + ". ";
        retry(words);
        program.until("Done");
        text += words.substr(0, words.size() - 1);
        EXPECT_TRUE(eventually([&] { return fieldText() == text; })) << fieldText();
    }
    EXPECT_NE(program.historyText().find("Words after 429."), std::string::npos);

    fail();
    user.type("x");
    retry("Late words.");
    program.until("Text copied");
    EXPECT_EQ(clipboard(), "Late words.");
    EXPECT_EQ(fieldText(), text + "x");
}

TEST_F(Retry, NothingOfTheRecordingOutlivesTheProgram) {
    for (const int end : {SIGTERM, SIGKILL, SIGABRT}) {
        startQuorvi();
        program.until("| ready");
        fail();
        program.crash(end);
        EXPECT_EQ(soundFiles(), "");
        EXPECT_EQ(recordingsLeft(), 0);
    }
    startQuorvi();
    program.until("| ready");
    retry("nothing");
    program.until("There is no recording to try again.");
}

}  // namespace
}  // namespace quorvi::test
