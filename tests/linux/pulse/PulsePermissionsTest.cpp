#include "Quorvi/platform/linux/pulse/PulsePermissions.h"

#include <gtest/gtest.h>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/xdg/SettingsProgram.h"
#include "tests/support/Waiting.h"
#include "tests/support/sound/SoundServer.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

TEST(PulsePermissions, ARequestIsAnsweredAlsoByAServerThatIsAwayOrFrozen) {
    SoundServer server(SoundServer::Microphone::absent);
    LoopScheduler scheduler;
    PulseConnection connection(scheduler, server.address());
    PulsePermissions permissions(connection, scheduler);
    int answers = 0;
    const auto answered = [&] {
        const int before = answers;
        permissions.requestMicrophone([&] { ++answers; });
        return until(scheduler, [&] { return answers > before; });
    };
    EXPECT_TRUE(answered());
    EXPECT_EQ(permissions.microphone(), MicrophoneAuthorization::denied);
    server.pactl("load-module module-sine-source source_name=tone");
    EXPECT_TRUE(answered());
    EXPECT_EQ(permissions.microphone(), MicrophoneAuthorization::authorized);
    server.freeze();
    EXPECT_TRUE(answered());
    server.thaw();
    server.kill();
    EXPECT_TRUE(answered());
    EXPECT_EQ(permissions.microphone(), MicrophoneAuthorization::denied);
    scheduler.runFor(200ms);
    EXPECT_EQ(answers, 4);
}

// Settings programs that write down how they were called, in a PATH of their own.
class Desktop {
public:
    Desktop(const std::string& name, const std::vector<std::string>& programs) {
        const auto called = (folder_.path() / "called").string();
        for (const auto& program : programs) {
            const auto path =
                folder_.write(program, "#!/bin/sh\necho \"${0##*/} $*\" >" + called +
                                           ".new\n/bin/mv " + called + ".new " + called + "\n");
            std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        }
        ::setenv("PATH", (folder_.path().string() + ":/nowhere").c_str(), 1);
        ::setenv("XDG_CURRENT_DESKTOP", name.c_str(), 1);
    }
    ~Desktop() { ::setenv("PATH", path_.c_str(), 1); }
    std::string opened() const {
        eventually([this] { return std::filesystem::exists(folder_.path() / "called"); });
        return contentOf(folder_.path() / "called");
    }

private:
    TestFolder folder_;
    std::string path_ = ::getenv("PATH");
};

TEST(PulsePermissions, TheDesktopsOwnSettingsAreOpened) {
    LoopScheduler scheduler;
    PulseConnection connection(scheduler, "unix:/nowhere");
    PulsePermissions permissions(connection, scheduler);
    const auto opened = [&](const char* name, const std::vector<std::string>& programs,
                            PrivacyPane pane) {
        const Desktop desktop(name, programs);
        EXPECT_TRUE(hasSettingsProgram(pane, name, ::getenv("PATH")));
        permissions.openPrivacyPane(pane);
        return desktop.opened();
    };
    using enum PrivacyPane;
    EXPECT_EQ(opened("ubuntu:GNOME", {"pavucontrol", "gnome-control-center"}, microphone),
              "gnome-control-center sound\n");
    EXPECT_EQ(opened("KDE", {"pavucontrol", "systemsettings"}, microphone),
              "systemsettings kcm_pulseaudio\n");
    EXPECT_EQ(opened("KDE", {"kcmshell5"}, accessibility), "kcmshell5 kcm_access\n");
    EXPECT_FALSE(hasSettingsProgram(accessibility, "KDE", "/nowhere"));
    EXPECT_EQ(opened("OPENBOX", {"mate-volume-control", "pavucontrol"}, microphone),
              "pavucontrol --tab=4\n");
}

}  // namespace
}  // namespace quorvi::test
