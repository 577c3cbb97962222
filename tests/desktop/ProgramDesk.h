#pragma once

#include <sstream>
#include <thread>

#include "tests/support/Paths.h"
#include "tests/support/clipboard/ForeignOwner.h"
#include "tests/support/desktop/EditorUser.h"
#include "tests/support/desktop/QuorviProgram.h"
#include "tests/support/sound/SoundServer.h"

namespace quorvi::test {

// A speech service that says what it is told.
class ScriptedSpeech {
public:
    std::string address() const { return "http://127.0.0.1:" + port_; }
    // The answer to each request from now on, after a delay in seconds; `drop` hangs up instead.
    void willSay(const std::string& text, int status = 200, int delay = 0, bool drop = false) {
        std::ostringstream json;
        json << R"({"text":")" << text << R"(","status":)" << status << R"(,"delay":)" << delay
             << R"(,"drop":)" << (drop ? "true" : "false") << "}";
        std::filesystem::rename(folder_.write("next", json.str()), folder_.path() / "reply");
    }
    // Every text that was delivered, one in a line.
    std::string served() const { return contentOf(folder_.path() / "served"); }

private:
    TestFolder folder_;
    Process process_{{"python3",
                      sourceFolder() + "/tests/support/programs/scripted_speech_service.py",
                      folder_.path().string()}};
    std::string port_ = process_.readLine();
};

// The program itself on a desktop with an editor, somebody who hums into the microphone all the
// time, and a scripted speech service.
class ProgramDesk : public testing::Test, protected EditorUser {
protected:
    // On sway Qt's fields are pasted into, others are not.
    ProgramDesk() {
        hum();
        isOnSway() ? open({builtProgram("qt_fields")}) : openMousepad();
        user.chord({key::leftControl}, key::end);
    }

    void hum() { sound.pactl("load-module module-sine sink=mic_feed frequency=440"); }
    void startQuorvi() {
        program.start({"QUORVI_SERVICE=" + speech.address(), "QUORVI_API_KEY=scripted",
                       "PULSE_SERVER=" + sound.address()},
                      {"--shortcut", "f8"});
    }
    // Long enough to count as speech, with the sound that marks the beginning.
    static void hold() { std::this_thread::sleep_for(std::chrono::milliseconds(450)); }

    void copy(const std::string& text) {
        if (isOnSway()) {
            copyFile(folder.write("copied", text));
            return;
        }
        owner.reset();
        owner.emplace(textItems(text));
    }
    // Nobody holds a key or the keyboard.
    void expectFreeKeyboard() {
        EXPECT_EQ(user.pressedKeys(), 0U);
        EXPECT_TRUE(user.canGrabKeyboard());
    }

    SoundServer sound;
    ScriptedSpeech speech;
    std::optional<ForeignOwner> owner;  // of the clipboard
    QuorviProgram program;
};

}  // namespace quorvi::test
