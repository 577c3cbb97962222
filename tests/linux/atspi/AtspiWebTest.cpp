#include <gtest/gtest.h>

#include <string>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/atspi/AtspiRichText.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/TestUser.h"

namespace quorvi::test {
namespace {

TEST(WebFields, AnEditableRegionReadsAsLinesThatFitItsSelection) {
    const TestFolder folder;
    TestUser user;
    AtspiAccessibility accessibility([] { return true; });
    FieldReader reader(accessibility);
    const Process browser(chromium(
        "<div contenteditable autofocus><p>😀 one</p><p><br></p><p>two <a href=x>link</a> end</p>"
        "<ul><li>item</li></ul></div>",
        folder));
    const auto region = reader.waitFor(browser.pid(), [&](const AXElement& field) {
        return reader.value(field) == "😀 one\n\ntwo link end\n• item";
    });
    ASSERT_TRUE(region);
    EXPECT_EQ(reader.role(*region), "AXTextArea");
    const auto expectSelection = [&](std::int64_t location, std::int64_t length) {
        EXPECT_TRUE(reader.waitForSelection(*region, {location, length})) << location;
    };
    user.chord({key::leftControl}, key::home);
    expectSelection(0, 0);
    user.tap(key::end);
    expectSelection(6, 0);
    user.chord({key::leftShift}, key::left);
    expectSelection(5, 1);
    user.tap(key::end);
    user.tap(key::right);
    expectSelection(7, 0);
    user.tap(key::right);
    expectSelection(8, 0);
    user.tap(key::right, 6);
    expectSelection(14, 0);
    user.chord({key::leftShift}, key::end);
    expectSelection(14, 6);

    // What is typed arrives where the selection said, in the empty paragraph too.
    user.chord({key::leftControl}, key::home);
    user.tap(key::down);
    expectSelection(7, 0);
    user.type("typed");
    EXPECT_TRUE(reader.waitForValue(*region, "😀 one\ntyped\ntwo link end\n• item"));
    expectSelection(12, 0);
    user.chord({key::leftControl}, key::a);
    expectSelection(0, 32);
}

TEST(AtspiRichText, OnlySpacesThatTheBrowserMadeOfTypedOnesAreRestored) {
    std::string text = "\u00A0Bonjour\u00A0! Ça  va \u00A0?\u00A0\n\u00A0";
    atspi::restoreTypedSpaces(text);
    EXPECT_EQ(text, " Bonjour\u00A0! Ça  va  ? \n ");
}

}  // namespace
}  // namespace quorvi::test
