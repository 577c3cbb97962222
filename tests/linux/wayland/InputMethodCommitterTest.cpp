#include "Quorvi/platform/linux/wayland/commit/InputMethodCommitter.h"

#include <gtest/gtest.h>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/wayland/probe/WaylandProbe.h"
#include "tests/support/desktop/EditorUser.h"

namespace quorvi::test {
namespace {

using Delivery = CommitField::Delivery;

class InputMethodCommitterTest : public testing::Test, protected EditorUser {
protected:
    std::unique_ptr<CommitField> focusedField() {
        return resultOf(committer.focusedField(std::chrono::seconds(20), {}));
    }
    template <class T>
    T resultOf(Task<T> task) {
        std::optional<T> result;
        const auto collect = [&]() -> Task<void> { result = co_await task; };
        auto collecting = collect();
        collecting.start();
        EXPECT_TRUE(until(scheduler, [&] { return result.has_value(); }));
        return std::move(result).value_or(T{});
    }

    LoopScheduler scheduler;
    WaylandInput input;
    InputMethodCommitter committer{scheduler, input};
};

TEST_F(InputMethodCommitterTest, ALongTextArrivesWholeAndNothingAfterTheFieldHasGone) {
    ASSERT_TRUE(openMousepad());
    auto field = focusedField();
    ASSERT_TRUE(field);
    EXPECT_EQ(field->kind(), CommitField::Kind::text);
    std::string text = "x";
    while (text.size() < 20'000) text += "ä😀\n\tе́";
    EXPECT_EQ(resultOf(field->commit(text)), Delivery::sent);
    EXPECT_TRUE(eventually([&] { return fieldText() == text; })) << fieldText().size();
    editor.kill();
    EXPECT_TRUE(eventually([] { return shell("swaymsg -t get_tree").find("Mousepad") == -1UL; }));
    EXPECT_EQ(resultOf(field->commit("lost")), Delivery::nothing);
}

TEST_F(InputMethodCommitterTest, TheSeatIsFreeForAnotherInputMethodUnlessAFieldIsHeld) {
    ASSERT_TRUE(openMousepad());
    auto field = focusedField();
    EXPECT_TRUE(field && waylandInputMethodIsTaken());
    field.reset();
    EXPECT_TRUE(eventually([] { return !waylandInputMethodIsTaken(); }));
    WaylandConnection connection;
    InputMethod other(connection);
    other.enter();
    connection.synchronise();
    EXPECT_FALSE(other.isUnavailable() || focusedField());
    WaylandConnection late;
    InputMethod refused(late);
    refused.enter();
    refused.grab([](std::uint32_t, bool) { return true; });
    refused.leave();
    EXPECT_TRUE(late.synchronise()) << "the compositor ended the connection";
}

TEST_F(InputMethodCommitterTest, PasswordsAndTerminalsSaySo) {
    const std::pair<Command, CommitField::Kind> programs[] = {
        {chromium("<input type=password autofocus>", folder), CommitField::Kind::secret},
        {{"foot", "cat"}, CommitField::Kind::terminal}};
    for (const auto& [program, kind] : programs) {
        editor = Process(program);
        ASSERT_TRUE(user.bringToFront(editor.pid()));
        EXPECT_TRUE(eventually([&] {  // a browser has its address bar at first
            const auto field = focusedField();
            return field && field->kind() == kind;
        })) << program[0];
    }
}

}  // namespace
}  // namespace quorvi::test
