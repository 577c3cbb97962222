#include "Quorvi/platform/linux/remote/RemoteDesktopPoster.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "Quorvi/insertion/PasteKeyboard.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/TestFolder.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/StandInPortal.h"

namespace quorvi::test {
namespace {

using State = KeyConsent::State;
using Way = RemoteDesktopPoster::Way;

class RemoteDesktopPosterTest : public testing::Test {
protected:
    RemoteDesktopPosterTest() { restart(); }

    void restart(Way way = Way::portal) {
        poster.reset();
        poster.emplace(scheduler, [way] { return way; }, file, [this] { return program; });
    }
    bool becomes(State state) {
        return until(scheduler, [&] { return poster->state() == state; });
    }
    void allow() {
        poster->setWanted(true);
        ASSERT_TRUE(becomes(State::on));
    }
    bool prepare() {
        Running preparing(poster->prepare({}));
        EXPECT_TRUE(await(scheduler, preparing));
        return poster->isAvailable();
    }
    // The keys that the desktop got for a paste, once its session has ended.
    std::string paste() {
        if (!prepare()) return "unavailable";
        EXPECT_EQ(portal->sessions, 1);
        poster->post(PasteKeyboard::pasteEvents(*poster), 1);
        EXPECT_TRUE(until(scheduler, [&] { return portal->sessions == 0; }));
        return portal->keys();
    }

    const TestFolder folder;
    const std::filesystem::path file = folder.path() / "Quorvi/key-consent";
    std::optional<StandInPortal> portal{std::in_place};
    LoopScheduler scheduler;
    std::string program = "editor";
    std::optional<RemoteDesktopPoster> poster;
};

TEST_F(RemoteDesktopPosterTest, AsksOnceAndPressesKeysOnlyInASessionOfThatPaste) {
    EXPECT_EQ(paste(), "unavailable") << "nobody has allowed it";
    allow();
    EXPECT_TRUE(until(scheduler, [&] { return portal->sessions == 0; }));
    EXPECT_EQ(contentOf(file), "token-1");
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0600));
    EXPECT_EQ(paste(), "29+ 47+ 47- 29- ");
    restart();
    ASSERT_TRUE(becomes(State::on));
    portal->renews = true;
    program = "gnome-terminal";
    EXPECT_EQ(paste(), "29+ 42+ 47+ 47- 42- 29- ");
    EXPECT_EQ(contentOf(file), "token-2");
    EXPECT_EQ(paste(), "29+ 42+ 47+ 47- 42- 29- ");
    EXPECT_EQ(portal->questions, 1);
    poster->setWanted(false);
    EXPECT_TRUE(becomes(State::off));
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(portal->remembered().empty());
}

TEST_F(RemoteDesktopPosterTest, PressesNothingWhenItIsRefusedAndDoesNotAskAgain) {
    portal->grants = false;
    poster->setWanted(true);
    EXPECT_TRUE(becomes(State::refused));
    EXPECT_EQ(paste(), "unavailable");
    portal->grants = true;
    allow();
    portal->forgetAll();  // as by the desktop's settings
    EXPECT_EQ(paste(), "unavailable");
    EXPECT_TRUE(becomes(State::refused));
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(portal->questions, 2);
}

TEST_F(RemoteDesktopPosterTest, OutlivesAPortalThatDiesWhileAKeyIsDown) {
    allow();
    ASSERT_TRUE(prepare());
    portal->dies = true;
    poster->post(PasteKeyboard::pasteEvents(*poster), 1);
    EXPECT_TRUE(until(scheduler, [&] { return !portal->dies && portal->sessions == 0; }))
        << "the session, and with it the key, has ended";
    EXPECT_EQ(paste(), "unavailable");
    EXPECT_EQ(portal->keys(), "29+ ");
    EXPECT_EQ(poster->state(), State::on);
    portal.emplace();
    portal->remember(contentOf(file));
    EXPECT_EQ(paste(), "29+ 47+ 47- 29- ");
}

TEST_F(RemoteDesktopPosterTest, TakesALeaveWithoutATokenOnlyWhereTheDesktopAsksNothing) {
    restart(Way::mutter);
    allow();
    EXPECT_EQ(contentOf(file), "");
    EXPECT_FALSE(prepare()) << "there is no Mutter";
    restart();
    EXPECT_EQ(paste(), "unavailable");
    EXPECT_EQ(portal->questions, 0);
}

}  // namespace
}  // namespace quorvi::test
