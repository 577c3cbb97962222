// Two programs of one user at once.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

class TwoProgramsTest : public testing::Test {
protected:
    Process start() { return Process({builtProgram("quorvi"), "--print-stages"}, {homeSetting()}); }
    // On a computer that has the same home folder, as far as a program can tell.
    Process startElsewhere() {
        return Process({"dbus-run-session", "--", builtProgram("quorvi"), "--print-stages"},
                       {homeSetting(), "DISPLAY=" + elsewhere_.display(), "AT_SPI_BUS_ADDRESS",
                        "XDG_RUNTIME_DIR=" + runtime_.path().string()});
    }
    std::string homeSetting() const { return "HOME=" + home_.path().string(); }
    fs::path data() const { return home_.path() / ".local/share/Quorvi"; }
    // The machines that have written into the shared folder.
    std::set<std::string> machines() const {
        std::set<std::string> all;
        for (const auto& one : fs::directory_iterator(data() / "cloud"))
            all.insert(one.path().filename());
        return all;
    }
    bool hasSynced() const {
        return contentOf(data() / "account-sync.json").find("lastSynced") != std::string::npos;
    }

    const TestFolder home_, runtime_;
    NestedServer elsewhere_;
};

TEST_F(TwoProgramsTest, TheSecondLeavesAtOnceAndTheFirstAsItIs) {
    auto first = start();
    first.readLine();
    ASSERT_TRUE(eventually([this] { return hasSynced(); }));
    const auto before = machines();
    ASSERT_EQ(before.size(), 1u);
    const auto history = contentOf(data() / "history.json");

    for (const bool isElsewhere : {false, true}) {
        auto second = isElsewhere ? startElsewhere() : start();
        EXPECT_EQ(second.readAll(), "");
        EXPECT_EQ(second.wait(), 0);
    }
    EXPECT_FALSE(first.hasEnded());
    EXPECT_EQ(machines(), before);
    EXPECT_EQ(contentOf(data() / "history.json"), history);

    // What does run beside it is another machine to the folder.
    Process check({builtProgram("quorvi"), "--cloud-release-check"}, {homeSetting()});
    check.readAll();
    EXPECT_EQ(check.wait(), 0);
    EXPECT_EQ(machines().size(), 2u);

    // A crash leaves nothing behind that would keep the next one out, on the other computer
    // neither.
    first.kill();
    for (const bool isElsewhere : {false, true}) {
        auto next = isElsewhere ? startElsewhere() : start();
        EXPECT_NE(next.readLine(), "");
        EXPECT_FALSE(next.hasEnded());
        next.kill();
    }
    EXPECT_EQ(machines().size(), 2u);
}

}  // namespace
}  // namespace quorvi::test
