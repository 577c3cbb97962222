#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Quorvi/platform/linux/AtspiAccessibility.h"
#include "tests/support/Editors.h"
#include "tests/support/FieldReader.h"
#include "tests/support/Process.h"
#include "tests/support/TestUser.h"

namespace quorvi::test {
namespace {

// A page with fields in a browser of its own.
class WebFields : public testing::Test {
protected:
    void open(const std::string& body) {
        browser_ = std::make_unique<Process>(chromium(body, folder_));
        ASSERT_TRUE(user_.waitForWindowOf(browser_->pid()));
        ASSERT_TRUE(eventually([&] { return accessibility_.isTrusted(); }));
    }
    pid_t pid() const { return browser_->pid(); }

    std::optional<AXElement> focusWithValue(const std::string& value) {
        return reader_.waitFor(
            pid(), [&](const AXElement& field) { return reader_.value(field) == value; });
    }

    TestFolder folder_;
    TestUser user_;
    AtspiAccessibility accessibility_{[] { return true; }};
    FieldReader reader_{accessibility_};
    std::unique_ptr<Process> browser_;
};

TEST_F(WebFields, TabVisitsEveryKindOfField) {
    open(
        "<p>Some read-only text.</p><input value='αβ😀γ' "
        "autofocus><textarea>many\nlines\n</textarea>"
        "<input type=password value=secret><button>Press</button>");
    const auto line = reader_.waitForFocus(pid(), "AXTextField");
    ASSERT_TRUE(line);
    EXPECT_EQ(reader_.value(*line), "αβ😀γ");
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
    user_.chord({key::leftControl}, key::home);
    EXPECT_TRUE(reader_.waitForSelection(*region, {0, 0}));
    user_.tap(key::end);
    EXPECT_TRUE(reader_.waitForSelection(*region, {6, 0}));
    user_.chord({key::leftShift}, key::left);
    EXPECT_TRUE(reader_.waitForSelection(*region, {5, 1}));
    user_.tap(key::end);
    user_.tap(key::right);
    EXPECT_TRUE(reader_.waitForSelection(*region, {7, 0}));
    user_.tap(key::right);
    EXPECT_TRUE(reader_.waitForSelection(*region, {8, 0}));
    user_.tap(key::right, 6);
    EXPECT_TRUE(reader_.waitForSelection(*region, {14, 0}));
    user_.chord({key::leftShift}, key::end);
    EXPECT_TRUE(reader_.waitForSelection(*region, {14, 6}));

    // What is typed arrives where the selection said, in the empty paragraph too.
    user_.chord({key::leftControl}, key::home);
    user_.tap(key::down);
    EXPECT_TRUE(reader_.waitForSelection(*region, {7, 0}));
    user_.type("typed");
    EXPECT_TRUE(reader_.waitForValue(*region, "😀 one\ntyped\ntwo link end\n• item"));
    EXPECT_TRUE(reader_.waitForSelection(*region, {12, 0}));
    user_.chord({key::leftControl}, key::a);
    EXPECT_TRUE(reader_.waitForSelection(*region, {0, 32}));
}

TEST_F(WebFields, FocusMovesBetweenThePageAndTheBrowsersOwnField) {
    open("<input value='in the page' autofocus><p>text</p>");
    const auto inPage = focusWithValue("in the page");
    ASSERT_TRUE(inPage);
    user_.chord({key::leftControl}, key::l);
    ASSERT_TRUE(reader_.waitFor(pid(), [&](const AXElement& field) {
        return !(field == *inPage) && reader_.role(field) == "AXTextField";
    }));
    for (int i = 0; i < 8 && reader_.focused(pid()) != inPage; ++i) {
        const auto before = reader_.focused(pid());
        user_.tap(key::f6);
        ASSERT_TRUE(eventually([&] { return reader_.focused(pid()) != before; }));
    }
    EXPECT_TRUE(eventually([&] { return reader_.focused(pid()) == inPage; }));
}

}  // namespace
}  // namespace quorvi::test
