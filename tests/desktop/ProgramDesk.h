#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/clipboard/ForeignOwner.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/QuorviProgram.h"
#include "tests/support/desktop/TestUser.h"
#include "tests/support/sound/SoundServer.h"

namespace quorvi::test {

// A speech service that says what it is told.
class ScriptedSpeech {
public:
    struct Reply {
        std::string text;
        int status = 200;
        double delay = 0;  // seconds
        bool drop = false;
    };

    ScriptedSpeech()
        : process_({"python3",
                    sourceFolder() + "/tests/support/programs/scripted_speech_service.py",
                    folder_.path().string()}),
          port_(process_.readLine()) {}
    std::string address() const { return "http://127.0.0.1:" + port_; }
    void willSay(const Reply& reply) const {
        std::ostringstream json;
        json << R"({"text":")" << reply.text << R"(","status":)" << reply.status << R"(,"delay":)"
             << reply.delay << R"(,"drop":)" << (reply.drop ? "true" : "false") << "}";
        std::filesystem::rename(folder_.write("next", json.str()), folder_.path() / "reply");
    }
    // Every text that was delivered.
    std::vector<std::string> served() const {
        std::istringstream lines(contentOf(folder_.path() / "served"));
        std::vector<std::string> texts;
        for (std::string line; std::getline(lines, line);) texts.push_back(line);
        return texts;
    }

private:
    TestFolder folder_;
    Process process_;
    std::string port_;
};

// The program itself on a desktop with an editor, somebody who hums into the microphone all the
// time, and a scripted speech service.
class ProgramDesk : public testing::Test {
protected:
    ProgramDesk() {
        hum();
        openEditor();
    }

    void hum() { sound.pactl("load-module module-sine sink=mic_feed frequency=440"); }
    void openEditor() {
        editor = Process(mousepad(folder.write("note.txt", "")));
        user.bringToFront(editor.pid());
        field = reader.waitForFocus(editor.pid(), "AXTextArea");
        ASSERT_TRUE(field);
        eventually([&] { return reader.selection(*field).has_value(); });
    }
    void startQuorvi() {
        program.start({"QUORVI_SERVICE=" + speech.address(), "QUORVI_API_KEY=scripted",
                       "PULSE_SERVER=" + sound.address()},
                      {"--shortcut", "f8"});
    }
    // Long enough to count as speech, with the sound that marks the beginning.
    static void hold() { std::this_thread::sleep_for(std::chrono::milliseconds(450)); }

    void copy(const std::string& text) {
        owner.reset();
        owner.emplace(textItems(text));
    }
    static std::string clipboard() {
        return shell("timeout 5 xclip -selection clipboard -o -t UTF8_STRING 2>/dev/null");
    }
    std::string fieldText() { return reader.value(*field).value_or("(unreadable)"); }
    // Nobody holds a key or the keyboard.
    void expectFreeKeyboard() {
        EXPECT_EQ(user.pressedKeys(), 0U);
        EXPECT_TRUE(user.canGrabKeyboard());
    }
    static std::vector<std::string> recordingsLeft() {
        std::vector<std::string> names;
        const auto recordings = std::filesystem::temp_directory_path() / "VeskRecordings";
        if (std::filesystem::exists(recordings))
            for (const auto& one : std::filesystem::directory_iterator(recordings))
                names.push_back(one.path());
        return names;
    }

    const TestFolder folder;
    SoundServer sound;
    ScriptedSpeech speech;
    AtspiAccessibility accessibility{[] { return true; }};
    FieldReader reader{accessibility};
    TestUser user;
    Process editor;
    std::optional<AXElement> field;
    std::optional<ForeignOwner> owner;  // of the clipboard
    QuorviProgram program;
};

}  // namespace quorvi::test
