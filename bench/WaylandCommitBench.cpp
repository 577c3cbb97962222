// 500 characters given to a field of a real text editor (mousepad) on sway, as the input method
// does it; the reference types them with wtype.
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/wayland/commit/InputMethodCommitter.h"
#include "bench/Figure.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/TestUser.h"

namespace quorvi::bench {
namespace {

using namespace std::chrono_literals;

class Bench {
public:
    Bench() {
        while (text_.size() < 500) text_ += "abcdefghi ";
        field_ = reader_.waitForFocus(editor_.pid(), "AXTextArea");
        if (!field_) fail("the editor shows no field");
    }

    void run() {
        std::vector<double> committed, typed;
        timeOf([this] { commit(); });  // warm-up
        for (int round = 0; round < 15; ++round) committed.push_back(timeOf([this] { commit(); }));
        for (int round = 0; round < 5; ++round)
            typed.push_back(timeOf([this] {
                if (std::system(("wtype '" + text_ + "'").c_str()) != 0) fail("no wtype");
            }));
        figure("wayland_commit_500", median(committed), "ms", median(typed));
    }

private:
    [[noreturn]] static void fail(const char* problem) {
        std::fprintf(stderr, "%s\n", problem);
        std::exit(1);
    }

    // From an empty field to the text in it.
    double timeOf(const std::function<void()>& give) {
        user_.chord({test::key::leftControl}, test::key::a);
        user_.tap(test::key::remove);
        until([this] { return reader_.value(*field_) == ""; });
        const auto begin = millisecondsNow();
        give();
        until([this] { return reader_.value(*field_) == text_; });
        return millisecondsNow() - begin;
    }

    void commit() {
        bool isSent = false;
        const auto give = [&]() -> Task<void> {
            auto looking = committer_.focusedField(5s, {});
            const auto field = co_await looking;
            if (!field) fail("the field takes no text");
            auto committing = field->commit(text_);
            isSent = co_await committing == CommitField::Delivery::sent;
        };
        auto giving = give();
        giving.start();
        until([&] { return isSent; });
    }

    void until(const std::function<bool()>& condition) {
        const auto tick = scheduler_.every(1ms, [] {});
        if (!scheduler_.runUntil(condition, 30s)) fail("the editor did not answer");
    }

    std::string text_;
    test::TestFolder folder_;
    LoopScheduler scheduler_;
    WaylandInput input_;
    InputMethodCommitter committer_{scheduler_, input_};
    AtspiAccessibility accessibility_{[] { return true; }};
    test::FieldReader reader_{accessibility_};
    test::TestUser user_;
    test::Process editor_{test::mousepad(folder_.write("note.txt", ""))};
    std::optional<AXElement> field_;
};

}  // namespace
}  // namespace quorvi::bench

int main() {
    quorvi::bench::Bench().run();
}
