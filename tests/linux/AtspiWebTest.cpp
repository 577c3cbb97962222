#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Quorvi/platform/linux/AtspiAccessibility.h"
#include "support/EditorProcess.h"
#include "support/FieldReader.h"
#include "support/DesktopUser.h"

namespace quorvi {
namespace {

using namespace testing;

// A page with fields in a browser of its own.
class WebFields : public ::testing::Test {
protected:
    void open(const std::string& body) {
        page_ = folder_.write("page.html",
                              "<!doctype html><meta charset=utf-8><title>Fields</title>" + body);
        browser_ = std::make_unique<EditorProcess>(chromium(page_, folder_));
        ASSERT_TRUE(user_.waitForWindowOf(browser_->pid()));
        ASSERT_TRUE(eventually([&] { return accessibility_.isTrusted(); }));
    }
    pid_t pid() const { return browser_->pid(); }

    std::optional<AXElement> focusWithValue(const std::string& value) {
        std::optional<AXElement> field;
        eventually([&] {
            field = reader_.focused(pid());
            return field && reader_.value(*field) == value;
        });
        return field && reader_.value(*field) == value ? field : std::nullopt;
    }

    TestFolder folder_;
    DesktopUser user_;
    std::string page_;
    AtspiAccessibility accessibility_{[] { return true; }};
    FieldReader reader_{accessibility_};
    std::unique_ptr<EditorProcess> browser_;
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
    user_.press({XK_End});
    EXPECT_TRUE(reader_.waitForSelection(*line, {5, 0}));
    user_.press({XK_Shift_L, XK_Left});
    user_.press({XK_Shift_L, XK_Left});
    EXPECT_TRUE(reader_.waitForSelection(*line, {2, 3}));
    user_.press({XK_Shift_L, XK_Home});
    EXPECT_TRUE(reader_.waitForSelection(*line, {0, 5}));
    const auto window = reader_.window(pid());
    ASSERT_TRUE(window);
    EXPECT_EQ(reader_.role(*window), "AXWindow");

    user_.press({XK_Tab});
    const auto area = reader_.waitForFocus(pid(), "AXTextArea");
    ASSERT_TRUE(area);
    EXPECT_EQ(reader_.value(*area), "many\nlines\n");
    user_.press({XK_Control_L, XK_End});
    EXPECT_TRUE(reader_.waitForSelection(*area, {11, 0}));
    user_.type("typed");
    EXPECT_TRUE(reader_.waitForValue(*area, "many\nlines\ntyped"));

    user_.press({XK_Tab});
    ASSERT_TRUE(eventually([&] {
        const auto field = reader_.focused(pid());
        return field && reader_.isSecure(*field);
    }));
    const auto password = reader_.focused(pid());
    EXPECT_FALSE(reader_.value(*password));
    EXPECT_FALSE(reader_.selection(*password));

    user_.press({XK_Tab});
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
    user_.press({XK_Control_L, XK_Home});
    EXPECT_TRUE(reader_.waitForSelection(*region, {0, 0}));
    user_.press({XK_End});
    EXPECT_TRUE(reader_.waitForSelection(*region, {6, 0}));
    user_.press({XK_Shift_L, XK_Left});
    EXPECT_TRUE(reader_.waitForSelection(*region, {5, 1}));
    user_.press({XK_End});
    user_.press({XK_Right});
    EXPECT_TRUE(reader_.waitForSelection(*region, {7, 0}));
    user_.press({XK_Right});
    EXPECT_TRUE(reader_.waitForSelection(*region, {8, 0}));
    for (int i = 0; i < 6; ++i) user_.press({XK_Right});
    EXPECT_TRUE(reader_.waitForSelection(*region, {14, 0}));
    user_.press({XK_Shift_L, XK_End});
    EXPECT_TRUE(reader_.waitForSelection(*region, {14, 6}));

    // What is typed arrives where the selection said, in the empty paragraph too.
    user_.press({XK_Control_L, XK_Home});
    user_.press({XK_Down});
    EXPECT_TRUE(reader_.waitForSelection(*region, {7, 0}));
    user_.type("typed");
    EXPECT_TRUE(reader_.waitForValue(*region, "😀 one\ntyped\ntwo link end\n• item"));
    EXPECT_TRUE(reader_.waitForSelection(*region, {12, 0}));
    user_.press({XK_Control_L, XK_a});
    EXPECT_TRUE(reader_.waitForSelection(*region, {0, 32}));
}

TEST_F(WebFields, FocusMovesBetweenThePageAndTheBrowsersOwnField) {
    open("<input value='in the page' autofocus><p>text</p>");
    const auto inPage = focusWithValue("in the page");
    ASSERT_TRUE(inPage);
    user_.press({XK_Control_L, XK_l});
    ASSERT_TRUE(eventually([&] {
        const auto field = reader_.focused(pid());
        return field && !(*field == *inPage) && reader_.role(*field) == "AXTextField";
    }));
    for (int i = 0; i < 8 && reader_.focused(pid()) != inPage; ++i) {
        const auto before = reader_.focused(pid());
        user_.press({XK_F6});
        ASSERT_TRUE(eventually([&] { return reader_.focused(pid()) != before; }));
    }
    EXPECT_TRUE(eventually([&] { return reader_.focused(pid()) == inPage; }));
}

}  // namespace
}  // namespace quorvi
