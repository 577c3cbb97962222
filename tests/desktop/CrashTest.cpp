// The program is killed, or aborts, at each stage of a dictation; and then started again.
#include "tests/desktop/ProgramDesk.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

constexpr auto former = "what the user had copied";
constexpr auto dictated = "Something was said.";

enum class Moment { recording, transcribing, inserting, pasted, done };

class Crash : public ProgramDesk, public testing::WithParamInterface<int> {
protected:
    std::filesystem::path note() const { return program.dataFolder() / "dictation-under-way"; }
    bool noteSays(const std::string& stage) const {
        return eventually([&] { return contentOf(note()).starts_with(stage); });
    }
    bool holds(const std::string& text) { return fieldText().find(text) != std::string::npos; }

    // Dictates up to the moment. The shortcut is then still held in a recording.
    void dictateUpTo(Moment moment) {
        speech.willSay(dictated, 200, moment == Moment::transcribing ? 60 : 0);
        user.press(key::f8);
        program.until("Listening");
        EXPECT_TRUE(noteSays("recording"));
        hold();
        EXPECT_EQ(recordingsLeft(), 0) << "it has no name";
        if (moment == Moment::recording) return;
        user.release(key::f8);
        program.until("Transcribing");
        if (moment == Moment::transcribing) {
            EXPECT_TRUE(noteSays("transcribing"));
            return;
        }
        program.until("Inserting");
        // The note follows the stage; it goes again when this moment was missed.
        EXPECT_TRUE(eventually([&] {
            return !std::filesystem::exists(note()) || contentOf(note()).starts_with("inserting");
        }));
        if (moment == Moment::pasted) {
            EXPECT_TRUE(eventually([&] { return holds(dictated); }));
        }
        if (moment == Moment::done) {
            program.until("Done");
            EXPECT_TRUE(eventually([&] { return !std::filesystem::exists(note()); }));
        }
    }

    // What the next start says, given whether the text had reached the history.
    static std::string report(Moment moment, bool inHistory) {
        if (moment == Moment::done) return {};
        if (moment == Moment::recording)
            return "during your last dictation. Nothing of it was kept";
        return inHistory ? "Its text is in the history." : "Its text is not in the history";
    }
};

TEST_P(Crash, LeavesNoRecordingAndNoGrabGivesTheClipboardBackAndIsReported) {
    startQuorvi();
    program.until("| ready");
    for (const auto moment : {Moment::recording, Moment::transcribing, Moment::inserting,
                              Moment::pasted, Moment::done}) {
        SCOPED_TRACE("moment " + std::to_string(static_cast<int>(moment)));
        copy(former);
        bool tooLate = false;
        do {  // the machine may have been too busy to catch a short moment
            dictateUpTo(moment);
            program.crash(GetParam());
            tooLate = moment != Moment::done && program.rest().find("Done") != std::string::npos;
            if (tooLate) startQuorvi(), program.until("| ready");
        } while (tooLate && !HasFailure());

        // The shortcut may still be held: the next key arrives all the same.
        user.tap(key::a);
        EXPECT_TRUE(eventually([&] { return fieldText().ends_with("a"); })) << fieldText();
        user.release(key::f8);
        expectFreeKeyboard();
        EXPECT_EQ(recordingsLeft(), 0);
        EXPECT_TRUE(eventually([] { return clipboard() == former; })) << clipboard();

        const bool inHistory = program.historyText().find(dictated) != std::string::npos;
        startQuorvi();
        if (const auto sentence = report(moment, inHistory); !sentence.empty()) {
            const auto line = program.until("ended unexpectedly");
            EXPECT_NE(line.find(sentence), std::string::npos) << line;
        } else {
            EXPECT_EQ(program.until("| ready").find("unexpectedly"), std::string::npos);
        }
        if (HasFailure()) return;
        user.tap(key::backspace);
        program.quit();
        std::filesystem::remove(program.historyFile());
        startQuorvi();
        EXPECT_EQ(program.until("| ready").find("unexpectedly"), std::string::npos) << "told once";
    }
    EXPECT_FALSE(holds(former)) << "pasted what was given back";
}

TEST_P(Crash, LeavesTheClipboardThatWasGivenBackAlsoAfterQuitting) {
    copy(former);
    startQuorvi();
    program.until("| ready");
    dictateUpTo(Moment::done);
    EXPECT_TRUE(holds(dictated));
    program.crash(GetParam() == SIGABRT ? SIGTERM : GetParam());
    EXPECT_TRUE(eventually([] { return clipboard() == former; })) << clipboard();
}

INSTANTIATE_TEST_SUITE_P(By, Crash, testing::Values(SIGKILL, SIGABRT), [](const auto& by) {
    return std::string(by.param == SIGKILL ? "Kill" : "Abort");
});

}  // namespace
}  // namespace quorvi::test
