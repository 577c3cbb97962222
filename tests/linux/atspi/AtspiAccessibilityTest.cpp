#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"

#include <gtest/gtest.h>

#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/TestUser.h"

namespace quorvi::test {
namespace {

constexpr const char* greekAndEmoji = "αβγ😀 hello\nsecond";

class AtspiFields : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(eventually([&] { return accessibility_.isTrusted(); }));
    }
    void start(const Command& command) {
        application_ = Process(command);
        ASSERT_TRUE(user_.waitForWindowOf(pid())) << command.front();
    }
    pid_t pid() const { return application_.pid(); }

    TestFolder folder_;
    TestUser user_;
    AtspiAccessibility accessibility_{[] { return true; }};
    FieldReader reader_{accessibility_};
    Process application_;
};

TEST_F(AtspiFields, AnObjectIsNeverAskedForMoreChildrenThanAnybodyLooksAt) {
    start({builtProgram("qt_fields"), "--endless"});
    const auto endless =
        reader_.waitFor(pid(), [&](const auto& field) { return reader_.role(field) == "AXGroup"; });
    ASSERT_TRUE(endless);
    EXPECT_TRUE(reader_.get<std::vector<AXElement>>(*endless, "AXChildren"));
    AtspiAccessibility late([] { return true; });
    EXPECT_TRUE(FieldReader(late).waitForFocus(pid(), "AXGroup")) << "by a walk from the window";
    user_.tap(key::tab);
    EXPECT_TRUE(reader_.waitForFocus(pid(), "AXTextField")) << "the program is as quick as ever";
}

TEST_F(AtspiFields, EveryEditorsFieldIsFoundCountedInUtf16UnitsAndOutlivesItsApplication) {
    const auto file = folder_.write("note.txt", greekAndEmoji);
    for (const Command& command : {mousepad(file), gnomeTextEditor(file), featherpad(file),
                                   Command{builtProgram("qt_fields")}}) {
        SCOPED_TRACE(command.front());
        start(command);
        const auto field = reader_.waitForFocus(pid(), "AXTextArea");
        ASSERT_TRUE(field);
        EXPECT_EQ(reader_.value(*field), greekAndEmoji);
        EXPECT_EQ(accessibility_.processIdentifier(*field), pid());
        EXPECT_TRUE(reader_.focusedAnywhere() == field);
        const auto window = reader_.window(pid());
        ASSERT_TRUE(window);
        EXPECT_EQ(reader_.role(*window), "AXWindow");
        // Whoever starts later has missed the events that told the first.
        AtspiAccessibility late([] { return true; });
        FieldReader lateReader(late);
        EXPECT_TRUE(lateReader.waitForFocus(pid(), "AXTextArea") == field);
        EXPECT_TRUE(lateReader.focusedAnywhere() == field);
        EXPECT_TRUE(lateReader.window(pid()) == window);

        user_.chord({key::leftControl}, key::home);
        EXPECT_TRUE(reader_.waitForSelection(*field, {0, 0}));
        user_.tap(key::right, 3);
        user_.chord({key::leftShift}, key::right);
        EXPECT_TRUE(reader_.waitForSelection(*field, {3, 2}));
        user_.chord({key::leftControl}, key::end);
        EXPECT_TRUE(reader_.waitForSelection(*field, {18, 0}));
        user_.type("typed");
        EXPECT_TRUE(reader_.waitForValue(*field, std::string(greekAndEmoji) + "typed"));
        EXPECT_TRUE(reader_.waitForSelection(*field, {23, 0}));

        const auto deadPid = pid();
        application_.kill();
        EXPECT_TRUE(eventually([&] { return !reader_.value(*field); }));
        EXPECT_FALSE(reader_.selection(*field));
        EXPECT_EQ(reader_.role(*field), "");
        EXPECT_TRUE(eventually([&] { return !reader_.focused(deadPid); }));
        EXPECT_FALSE(reader_.window(deadPid));
    }
}

TEST_F(AtspiFields, TabVisitsEveryKindOfQtField) {
    start({builtProgram("qt_fields")});
    ASSERT_TRUE(reader_.waitForFocus(pid(), "AXTextArea"));

    const auto tabTo = [&](const char* role, const std::optional<std::string>& value) {
        user_.tap(key::tab);
        EXPECT_TRUE(reader_.waitFor(pid(), [&](const AXElement& field) {
            return reader_.role(field) == role && reader_.value(field) == value;
        })) << role;
    };
    tabTo("AXTextField", "αβ😀γ");
    user_.tap(key::tab);
    const auto password = reader_.waitForPassword(pid());
    ASSERT_TRUE(password);
    EXPECT_EQ(reader_.role(*password), "AXTextField");
    EXPECT_FALSE(reader_.value(*password));
    EXPECT_FALSE(reader_.selection(*password));

    tabTo("AXStaticText", "fixed");
    tabTo("AXTextField", "chosen");
    tabTo("AXButton", std::nullopt);
}

TEST_F(AtspiFields, AHungApplicationYieldsNothingUntilItRecoversAndATextBeyondTheLimitNever) {
    using namespace std::chrono_literals;
    const std::string longest(100'000, 'x');
    start(mousepad(folder_.write("long.txt", longest)));
    const auto field = reader_.waitForFocus(pid(), "AXTextArea");
    ASSERT_TRUE(field);
    application_.freeze();
    const auto application = accessibility_.applicationElement(pid());
    EXPECT_FALSE(accessibility_.attribute(application, "AXFocusedUIElement", 250ms));
    EXPECT_FALSE(accessibility_.attribute(application, "AXFocusedWindow", 250ms));
    EXPECT_FALSE(accessibility_.attribute(*field, "AXRole", 50ms));
    EXPECT_FALSE(accessibility_.attribute(*field, "AXValue", 150ms));
    EXPECT_EQ(accessibility_.processIdentifier(*field), pid());

    application_.thaw();
    EXPECT_TRUE(reader_.waitForValue(*field, longest));
    EXPECT_TRUE(reader_.waitForFocus(pid(), "AXTextArea") == field);
    user_.type("y");
    EXPECT_TRUE(eventually([&] { return !reader_.value(*field); }));
    EXPECT_TRUE(reader_.waitForSelection(*field, {1, 0}));
    user_.chord({key::leftControl, key::leftShift}, key::end);
    EXPECT_TRUE(reader_.waitForSelection(*field, {1, 100'000}));
}

}  // namespace
}  // namespace quorvi::test
