#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventPoster.h"

#include <gtest/gtest.h>
#include <xcb/xtest.h>

#include <atomic>
#include <cstdlib>
#include <thread>

#include "tests/support/Process.h"
#include "tests/support/Waiting.h"
#include "tests/support/clipboard/ForeignOwner.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/KeyWindow.h"
#include "tests/support/desktop/TapRecorder.h"

namespace quorvi::test {
namespace {

using Type = TapEventType;

constexpr std::int64_t marker = 0x51554F52;
constexpr std::uint8_t dvorakV = 60;

std::vector<TapEvent> commandV() {
    std::vector<TapEvent> events{{.type = Type::flagsChanged, .keyCode = 55},
                                 {.type = Type::keyDown, .keyCode = keyCode::v},
                                 {.type = Type::keyUp, .keyCode = keyCode::v},
                                 {.type = Type::flagsChanged, .keyCode = 55}};
    for (auto& event : events) event.sourceUserData = marker;
    for (std::size_t i = 0; i < 3; ++i) events[i].flags = modifierFlag::command;
    return events;
}

class X11KeyEventPosterTest : public testing::Test {
protected:
    void SetUp() override {
        useLayout("us");
        ASSERT_FALSE(poster.isAvailable());
        ASSERT_TRUE(recorder.install());
        ASSERT_TRUE(poster.isAvailable());
    }
    void TearDown() override { useLayout("us"); }

    void useLayout(const std::string& arguments) {
        ASSERT_EQ(std::system(("setxkbmap -option '' " + arguments).c_str()), 0);
    }
    TapRecorder recorder;
    X11KeyEventPoster poster{recorder.tap};
    TestUser user;
};

TEST_F(X11KeyEventPosterTest, PastesIntoARealEditorUnderEveryLayoutAndLock) {
    const TestFolder folder;
    const auto path = folder.write("paste.txt", "");
    const Process editor(mousepad(path));
    ASSERT_TRUE(user.waitForWindowOf(editor.pid()));
    std::unique_ptr<ForeignOwner> clipboard;
    std::string expected;
    const auto paste = [&](const std::string& text) {
        auto next = std::make_unique<ForeignOwner>(textItems(text));
        clipboard = std::move(next);  // the former one goes afterwards: some read twice
        poster.post(commandV(), editor.pid());
        EXPECT_TRUE(eventually([&] { return clipboard->reads() > 0; })) << text;
        expected += text;
    };
    for (const std::string layout :
         {"us", "gr", "us,gr", "ru", "ru,us", "'us(dvorak)'", "'de(neo)'", "fr"}) {
        useLayout(layout);
        paste("<" + layout + ">");
    }
    useLayout("us");
    for (const auto lock : {key::capsLock, key::numLock}) {
        user.tap(lock);
        paste("<locked>");
        user.tap(lock);
    }
    EXPECT_TRUE(recorder.waitUntil([&] {
        user.chord({key::leftControl}, key::s);
        recorder.scheduler.runFor(std::chrono::milliseconds(200));
        return contentOf(path) == expected;
    })) << contentOf(path);
}

TEST_F(X11KeyEventPosterTest, TheWindowsClassAndTheLayoutChooseTheKeys) {
    struct Row {
        const char* className;
        const char* layout;
        std::vector<int> keys;
    };
    const Row rows[] = {
        {"Editor", "'us(dvorak)'", {key::leftControl, dvorakV}},
        {"Editor", "gr", {key::leftShift, key::insert}},
        {"Editor", "us -option ctrl:swapcaps", {key::capsLock, key::v}},
        {"Gnome-terminal", "us", {key::leftControl, key::leftShift, key::v}},
        {"kitty", "'us(dvorak)'", {key::leftControl, key::leftShift, dvorakV}},
        {"Alacritty", "gr", {key::leftControl, key::leftShift, key::v}},
        {"Xfce4-terminal", "ru", {key::leftControl, key::leftShift, key::insert}},
        {"Gnome-terminal", "ru,us", {key::leftControl, key::leftShift, key::v}},
        {"Emacs", "us", {key::leftShift, key::insert}},
        {"XTerm", "us", {}},
        {"kitty", "ru,us", {}},
        {"MyEditor", "us", {key::leftControl, key::leftAlt, key::v}},
        {"URxvt", "us", {key::leftControl, key::leftAlt, key::v}},
    };
    recorder.tap.setPasteChords(
        PasteChords("# mine\nmyeditor Control-Alt-V # as set up\nEmacs control-w\nbad\n"));
    for (const auto& row : rows) {
        useLayout(row.layout);
        KeyWindow window(row.className);
        ASSERT_TRUE(window.show());
        auto expected = row.keys;
        for (auto keycode = row.keys.rbegin(); keycode != row.keys.rend(); ++keycode)
            expected.push_back(-*keycode);
        const Running<bool> looks(poster.looksBeforePasting(getpid(), {}));
        poster.post(commandV(), getpid());
        EXPECT_TRUE(window.waitForKeys(expected)) << row.className << ' ' << row.layout;
        EXPECT_TRUE(recorder.waitUntil([&] { return looks.value().has_value(); }));
        EXPECT_EQ(looks.value(), std::string(row.className).ends_with("-terminal"));
    }
}

TEST_F(X11KeyEventPosterTest, ReleasesAndRestoresItsGrabsAroundAPaste) {
    KeyWindow window;
    ASSERT_TRUE(window.show());
    // The paste chord itself is the declared shortcut; then a declared key that is held meanwhile.
    recorder.tap.setSwallowed({{keyCode::v, modifierFlag::control}, {100, 0}});
    ASSERT_TRUE(recorder.settle());
    window.forget();
    user.press(key::f8);
    ASSERT_TRUE(recorder.waitForType(Type::keyDown, 100));
    poster.post(commandV(), getpid());
    ASSERT_TRUE(recorder.waitUntil([&] { return recorder.marked(marker).size() == 4; }));
    EXPECT_TRUE(window.waitForKeys({key::leftControl, key::v, -key::v, -key::leftControl}));
    user.release(key::f8);
    window.forget();
    user.chord({key::leftControl}, key::v);
    user.type({key::f8, key::a});
    EXPECT_TRUE(window.waitForKeys(taps({key::leftControl, key::a})));
}

TEST_F(X11KeyEventPosterTest, OwnEventsAreToldFromTwoThousandForeignOnesOfTheSameKeys) {
    KeyWindow window;
    ASSERT_TRUE(window.show());
    recorder.scheduler.runFor(std::chrono::milliseconds(100));
    recorder.events.clear();
    constexpr std::size_t foreignEvents = 2000, pastes = 100;
    std::atomic<bool> flooding{true};
    std::jthread flood([&] {
        const X11Connection other;
        auto* c = other.get();
        for (std::size_t i = 0; i < foreignEvents; i += 2) {
            // Never half a tap: a key that is down already could not be pressed by the paste.
            const auto keycode = i % 4 == 0 ? key::v : key::leftControl;
            xcb_grab_server(c);
            for (const auto type : {XCB_KEY_PRESS, XCB_KEY_RELEASE})
                xcb_test_fake_input(c, static_cast<std::uint8_t>(type), keycode, XCB_CURRENT_TIME,
                                    XCB_NONE, 0, 0, 0);
            xcb_ungrab_server(c);
            other.synchronise();
        }
        flooding = false;
    });
    for (std::size_t posted = 1; posted <= pastes; ++posted) {
        poster.post(commandV(), getpid());
        EXPECT_TRUE(
            recorder.waitUntil([&] { return recorder.marked(marker).size() >= 4 * posted; }));
    }
    EXPECT_TRUE(recorder.waitUntil(
        [&] { return !flooding && recorder.events.size() >= foreignEvents + 4 * pastes; }));
    const auto own = recorder.marked(marker);
    ASSERT_EQ(own.size(), 4 * pastes);
    EXPECT_EQ(recorder.events.size() - own.size(), foreignEvents);
    for (std::size_t i = 0; i < own.size(); i += 4) {
        EXPECT_EQ(own[i].flags, 0x40001u);
        EXPECT_EQ(own[i + 1].keyCode, keyCode::v);
        EXPECT_EQ(own[i + 2].type, Type::keyUp);
        EXPECT_EQ(own[i + 3].flags, 0u);
    }
}

}  // namespace
}  // namespace quorvi::test
