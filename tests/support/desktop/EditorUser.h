#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/xdg/UserFolders.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/TestUser.h"
#include "tests/support/desktop/UserClipboard.h"

namespace quorvi::test {

// Somebody with an editor open, who types into it; and a test that reads its field. A part of a
// test's fixture.
struct EditorUser {
    // Starts a program, waits for its field to have the focus and to answer, and returns the field;
    // nothing when there is none after a generous limit.
    std::optional<AXElement> open(const Command& command, std::string_view role = "AXTextArea") {
        editor = Process(command);
        user.bringToFront(editor.pid());
        openField = reader.waitForFocus(editor.pid(), role);
        if (!openField) ADD_FAILURE() << command.front() << " shows no " << role;
        // A program that is still starting takes its time, longer than a dictation waits for it.
        if (openField) eventually([&] { return answersAtOnce() && answersAtOnce(); });
        return openField;
    }
    bool answersAtOnce() {
        const auto asked = std::chrono::steady_clock::now();
        return reader.selection(*openField).has_value() &&
               std::chrono::steady_clock::now() - asked < std::chrono::milliseconds(40);
    }
    std::optional<AXElement> openMousepad(const std::string& content = {}) {
        return open(mousepad(folder.write("note.txt", content)));
    }
    std::string fieldText() { return reader.value(*openField).value_or("(unreadable)"); }

    // Makes "nice" "nise" in "… nice today." that the caret is behind, where a paste leaves it.
    void mendSentence() {
        user.tap(key::left, 8);
        user.tap(key::backspace);
        user.type("s");
    }

    static std::string clipboard() { return pastedText(); }
    static std::ptrdiff_t recordingsLeft() {
        const auto recordings = UserFolders::find().recordings;
        if (!std::filesystem::exists(recordings)) return 0;
        return std::distance(std::filesystem::directory_iterator(recordings), {});
    }

    TestFolder folder;
    AtspiAccessibility accessibilityBus{[] { return true; }};
    FieldReader reader{accessibilityBus};
    TestUser user;
    Process editor;
    std::optional<AXElement> openField;  // of the program that was opened last
};

}  // namespace quorvi::test
