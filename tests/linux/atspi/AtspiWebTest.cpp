#include <gtest/gtest.h>

#include <string>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/TestUser.h"

namespace quorvi::test {
namespace {

// A page with fields in a browser of its own.
class WebFields : public testing::Test {
protected:
    void open(const std::string& body) {
        browser_ = Process(chromium(body, folder_));
        ASSERT_TRUE(user_.waitForWindowOf(pid()));
        ASSERT_TRUE(eventually([&] { return accessibility_.isTrusted(); }));
    }
    pid_t pid() const { return browser_.pid(); }

    std::optional<AXElement> focusWithValue(const std::string& value) {
        auto found = reader_.waitFor(
            pid(), [&](const AXElement& field) { return reader_.value(field) == value; });
        const auto focused = reader_.focused(pid());
        if (!found)
            ADD_FAILURE() << "the focus is in "
                          << (focused ? reader_.role(*focused) + " with " +
                                            reader_.value(*focused).value_or("no value")
                                      : "nothing");
        return found;
    }

    TestFolder folder_;
    TestUser user_;
    AtspiAccessibility accessibility_{[] { return true; }};
    FieldReader reader_{accessibility_};
    Process browser_;
};

TEST_F(WebFields, TheFocusVisitsEveryKindOfFieldAndTheBrowsersOwn) {
    open(
        "<p>Some read-only text.</p><input value='αβ😀γ' "
        "autofocus><textarea>many\nlines\n</textarea>"
        "<input type=password value=secret><button>Press</button>");
    const auto line = focusWithValue("αβ😀γ");
    ASSERT_TRUE(line);
    EXPECT_EQ(reader_.role(*line), "AXTextField");
    EXPECT_EQ(accessibility_.processIdentifier(*line), pid());
    user_.tap(key::end);
    EXPECT_TRUE(reader_.waitForSelection(*line, {5, 0}));
    user_.chord({key::leftShift}, key::left);
    user_.chord({key::leftShift}, key::left);
    EXPECT_TRUE(reader_.waitForSelection(*line, {2, 3}));
    user_.chord({key::leftShift}, key::home);
    EXPECT_TRUE(reader_.waitForSelection(*line, {0, 5}));
    const auto window = reader_.window(pid());
    ASSERT_TRUE(window);
    EXPECT_EQ(reader_.role(*window), "AXWindow");

    // To the browser's own field, and round its panes back to the page.
    user_.chord({key::leftControl}, key::l);
    ASSERT_TRUE(reader_.waitFor(pid(), [&](const AXElement& field) {
        return !(field == *line) && reader_.role(field) == "AXTextField";
    }));
    for (int i = 0; i < 8 && reader_.focused(pid()) != line; ++i) {
        const auto before = reader_.focused(pid());
        user_.tap(key::f6);
        ASSERT_TRUE(eventually([&] { return reader_.focused(pid()) != before; }));
    }
    EXPECT_TRUE(eventually([&] { return reader_.focused(pid()) == line; }));

    user_.tap(key::tab);
    const auto area = reader_.waitForFocus(pid(), "AXTextArea");
    ASSERT_TRUE(area);
    EXPECT_EQ(reader_.value(*area), "many\nlines\n");
    user_.chord({key::leftControl}, key::end);
    EXPECT_TRUE(reader_.waitForSelection(*area, {11, 0}));
    user_.type("typed");
    EXPECT_TRUE(reader_.waitForValue(*area, "many\nlines\ntyped"));

    user_.tap(key::tab);
    const auto password = reader_.waitForPassword(pid());
    ASSERT_TRUE(password);
    EXPECT_FALSE(reader_.value(*password));
    EXPECT_FALSE(reader_.selection(*password));

    user_.tap(key::tab);
    const auto button = reader_.waitForFocus(pid(), "AXButton");
    ASSERT_TRUE(button);
    EXPECT_FALSE(reader_.selection(*button));
    EXPECT_TRUE(reader_.window(pid()) == window);
}

TEST_F(WebFields, AnEditableRegionReadsAsLinesThatFitItsSelection) {
    open(
        "<div contenteditable autofocus><p>😀 one</p><p><br></p><p>two <a href=x>link</a> end</p>"
        "<ul><li>item</li></ul></div>");
    const std::string whole = "😀 one\n\ntwo link end\n• item";
    const auto region = focusWithValue(whole);
    ASSERT_TRUE(region);
    EXPECT_EQ(reader_.role(*region), "AXTextArea");
    const auto expectSelection = [&](std::int64_t location, std::int64_t length) {
        EXPECT_TRUE(reader_.waitForSelection(*region, {location, length})) << location;
    };
    user_.chord({key::leftControl}, key::home);
    expectSelection(0, 0);
    user_.tap(key::end);
    expectSelection(6, 0);
    user_.chord({key::leftShift}, key::left);
    expectSelection(5, 1);
    user_.tap(key::end);
    user_.tap(key::right);
    expectSelection(7, 0);
    user_.tap(key::right);
    expectSelection(8, 0);
    user_.tap(key::right, 6);
    expectSelection(14, 0);
    user_.chord({key::leftShift}, key::end);
    expectSelection(14, 6);

    // What is typed arrives where the selection said, in the empty paragraph too.
    user_.chord({key::leftControl}, key::home);
    user_.tap(key::down);
    expectSelection(7, 0);
    user_.type("typed");
    EXPECT_TRUE(reader_.waitForValue(*region, "😀 one\ntyped\ntwo link end\n• item"));
    expectSelection(12, 0);
    user_.chord({key::leftControl}, key::a);
    expectSelection(0, 32);
}

}  // namespace
}  // namespace quorvi::test
