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
