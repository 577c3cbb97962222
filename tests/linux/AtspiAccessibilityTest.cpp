#include "Quorvi/platform/linux/AtspiAccessibility.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/support/Editors.h"
#include "tests/support/FieldReader.h"
#include "tests/support/Process.h"
#include "tests/support/TestUser.h"

namespace quorvi::test {
namespace {

constexpr const char* greekAndEmoji = "αβγ😀 hello\nsecond";

class AtspiFields : public testing::Test {
protected:
    void connect() {
        accessibility_ = std::make_unique<AtspiAccessibility>([] { return true; });
        reader_ = std::make_unique<FieldReader>(*accessibility_);
        ASSERT_TRUE(eventually([&] { return accessibility_->isTrusted(); }));
    }
    // Starts an application and waits for its window; nothing is connected yet unless a test did.
    void start(const std::vector<std::string>& command) {
        application_ = std::make_unique<Process>(command);
        ASSERT_TRUE(user_.waitForWindowOf(application_->pid())) << command.front();
    }
    pid_t pid() const { return application_->pid(); }

    TestFolder folder_;
    TestUser user_;
    std::unique_ptr<AtspiAccessibility> accessibility_;
    std::unique_ptr<FieldReader> reader_;
    std::unique_ptr<Process> application_;
};

struct Editor {
    const char* name;
    std::vector<std::string> (*command)(const std::string& file);
};

std::vector<std::string> qtFields(const std::string&) {
    return {QUORVI_QT_FIELDS};
}

class AtspiEditor : public AtspiFields, public testing::WithParamInterface<Editor> {};

INSTANTIATE_TEST_SUITE_P(Editors, AtspiEditor,
                         testing::Values(Editor{"mousepad", mousepad},
                                         Editor{"gnomeTextEditor", gnomeTextEditor},
                                         Editor{"featherpad", featherpad}, Editor{"qt6", qtFields}),
                         [](const auto& row) { return row.param.name; });

TEST_P(AtspiEditor, FindsAFieldThatHadTheFocusBeforeTheProgramStarted) {
    start(GetParam().command(folder_.write("note.txt", greekAndEmoji)));
    connect();
    const auto field = reader_->waitForFocus(pid(), "AXTextArea");
    ASSERT_TRUE(field);
    EXPECT_FALSE(reader_->isSecure(*field));
    EXPECT_EQ(reader_->get<bool>(*field, "AXFocused"), true);
    EXPECT_EQ(reader_->value(*field), greekAndEmoji);
    EXPECT_EQ(accessibility_->processIdentifier(*field), pid());

    const auto everywhere = reader_->focusedAnywhere();
    ASSERT_TRUE(everywhere);
    EXPECT_TRUE(*everywhere == *field);

    const auto window = reader_->window(pid());
    ASSERT_TRUE(window);
    EXPECT_EQ(reader_->role(*window), "AXWindow");
    EXPECT_TRUE(window == reader_->window(pid()));
    EXPECT_FALSE(*window == *field);
}

TEST_P(AtspiEditor, CountsCaretAndSelectionInUtf16Units) {
    connect();
    start(GetParam().command(folder_.write("note.txt", greekAndEmoji)));
    const auto field = reader_->waitForFocus(pid(), "AXTextArea");
    ASSERT_TRUE(field);
    user_.chord({key::leftControl}, key::home);
    EXPECT_TRUE(reader_->waitForSelection(*field, {0, 0}));
    user_.tap(key::end);
    EXPECT_TRUE(reader_->waitForSelection(*field, {11, 0}));
    user_.chord({key::leftShift}, key::home);
    EXPECT_TRUE(reader_->waitForSelection(*field, {0, 11}));
    user_.tap(key::home);
    user_.tap(key::right, 3);
    user_.chord({key::leftShift}, key::right);
    EXPECT_TRUE(reader_->waitForSelection(*field, {3, 2}));

    user_.chord({key::leftControl}, key::end);
    EXPECT_TRUE(reader_->waitForSelection(*field, {18, 0}));
    user_.type("typed");
    EXPECT_TRUE(reader_->waitForValue(*field, std::string(greekAndEmoji) + "typed"));
    EXPECT_TRUE(reader_->waitForSelection(*field, {23, 0}));
}

TEST_P(AtspiEditor, AnElementOutlivesItsApplication) {
    connect();
    start(GetParam().command(folder_.write("note.txt", greekAndEmoji)));
    const auto field = reader_->waitForFocus(pid(), "AXTextArea");
    ASSERT_TRUE(field);
    const auto deadPid = pid();
    application_->kill();
    EXPECT_TRUE(eventually([&] { return !reader_->value(*field); }));
    EXPECT_FALSE(reader_->selection(*field));
    EXPECT_EQ(reader_->role(*field), "");
    EXPECT_TRUE(eventually([&] { return !reader_->focused(deadPid); }));
    EXPECT_FALSE(reader_->window(deadPid));
    EXPECT_TRUE(*field == *field);
}

TEST_F(AtspiFields, TabVisitsEveryKindOfQtField) {
    connect();
    start({QUORVI_QT_FIELDS});
    ASSERT_TRUE(reader_->waitForFocus(pid(), "AXTextArea"));

    user_.tap(key::tab);
    const auto line = reader_->waitForFocus(pid(), "AXTextField");
    ASSERT_TRUE(line);
    EXPECT_EQ(reader_->value(*line), "αβ😀γ");
    EXPECT_FALSE(reader_->isSecure(*line));

    user_.tap(key::tab);
    const auto password = reader_->waitForPassword(pid());
    ASSERT_TRUE(password);
    EXPECT_EQ(reader_->role(*password), "AXTextField");
    EXPECT_FALSE(reader_->value(*password));
    EXPECT_FALSE(reader_->selection(*password));

    user_.tap(key::tab);
    const auto readOnly = reader_->waitForFocus(pid(), "AXStaticText");
    ASSERT_TRUE(readOnly);
    EXPECT_EQ(reader_->value(*readOnly), "fixed");

    user_.tap(key::tab);
    const auto choice = reader_->waitFor(
        pid(), [&](const AXElement& field) { return reader_->value(field) == "chosen"; });
    ASSERT_TRUE(choice);
    EXPECT_EQ(reader_->role(*choice), "AXTextField");
    user_.tap(key::end);
    EXPECT_TRUE(reader_->waitForSelection(*choice, {6, 0}));

    user_.tap(key::tab);
    const auto button = reader_->waitForFocus(pid(), "AXButton");
    ASSERT_TRUE(button);
    EXPECT_FALSE(reader_->selection(*button));
}

TEST_F(AtspiFields, GtkLabelsPasswordsAndTerminalsAreToldApart) {
    connect();
    start({"zenity", "--entry", "--text", "Read me", "--entry-text", "αβ😀γ"});
    const auto entry = reader_->waitForFocus(pid(), "AXTextField");
    ASSERT_TRUE(entry);
    EXPECT_EQ(reader_->value(*entry), "αβ😀γ");
    EXPECT_TRUE(reader_->waitForSelection(*entry, {0, 5}));
    const auto window = reader_->window(pid());
    ASSERT_TRUE(window);
    const auto label = reader_->find(*window, "AXStaticText");
    ASSERT_TRUE(label);
    EXPECT_EQ(reader_->value(*label), "Read me");
    EXPECT_FALSE(reader_->selection(*label));

    start({"zenity", "--password"});
    const auto password = reader_->waitForPassword(pid());
    ASSERT_TRUE(password);
    user_.type("secret");
    EXPECT_EQ(reader_->role(*password), "AXTextField");
    EXPECT_FALSE(reader_->value(*password));
    EXPECT_FALSE(reader_->selection(*password));

    start({"xfce4-terminal", "--disable-server"});
    const auto terminal = reader_->waitForFocus(pid(), "AXTextArea");
    ASSERT_TRUE(terminal);
    EXPECT_FALSE(reader_->value(*terminal));
    EXPECT_FALSE(reader_->selection(*terminal));
}

TEST_F(AtspiFields, FocusFollowsTheActiveWindow) {
    connect();
    start(mousepad(folder_.write("first.txt", "first")));
    const auto field = reader_->waitForFocus(pid(), "AXTextArea");
    ASSERT_TRUE(field);
    const auto window = reader_->window(pid());
    const auto firstWindow = user_.activeWindow();

    Process second(featherpad(folder_.write("second.txt", "second")));
    ASSERT_TRUE(user_.waitForWindowOf(second.pid()));
    const auto secondField = reader_->waitForFocus(second.pid(), "AXTextArea");
    ASSERT_TRUE(secondField);
    EXPECT_FALSE(*secondField == *field);
    EXPECT_TRUE(eventually([&] { return !reader_->window(pid()); }));
    EXPECT_TRUE(eventually([&] { return reader_->focusedAnywhere() == secondField; }));

    user_.activate(firstWindow);
    EXPECT_TRUE(eventually([&] { return reader_->focusedAnywhere() == field; }));
    EXPECT_TRUE(eventually([&] { return reader_->window(pid()) == window; }));
    EXPECT_TRUE(reader_->focused(pid()) == field);
}

TEST_F(AtspiFields, TextsBeyondTheLimitAreNotRead) {
    connect();
    start(mousepad(folder_.write("long.txt", std::string(100'000, 'x'))));
    const auto field = reader_->waitForFocus(pid(), "AXTextArea");
    ASSERT_TRUE(field);
    EXPECT_TRUE(reader_->waitForValue(*field, std::string(100'000, 'x')));
    user_.type("y");
    EXPECT_TRUE(eventually([&] { return !reader_->value(*field); }));
    EXPECT_TRUE(reader_->waitForSelection(*field, {1, 0}));
}

TEST_F(AtspiFields, AHungApplicationYieldsNothingAndRecovers) {
    using namespace std::chrono_literals;
    connect();
    start(mousepad(folder_.write("note.txt", "text")));
    const auto field = reader_->waitForFocus(pid(), "AXTextArea");
    ASSERT_TRUE(field);
    application_->freeze();
    const auto application = accessibility_->applicationElement(pid());
    EXPECT_FALSE(accessibility_->attribute(application, "AXFocusedUIElement", 250ms));
    EXPECT_FALSE(accessibility_->attribute(application, "AXFocusedWindow", 250ms));
    EXPECT_FALSE(accessibility_->attribute(*field, "AXRole", 50ms));
    EXPECT_FALSE(accessibility_->attribute(*field, "AXValue", 150ms));
    EXPECT_EQ(accessibility_->processIdentifier(*field), pid());

    application_->thaw();
    EXPECT_TRUE(reader_->waitForValue(*field, "text"));
    EXPECT_TRUE(reader_->waitForFocus(pid(), "AXTextArea") == field);
}

}  // namespace
}  // namespace quorvi::test
