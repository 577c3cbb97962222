#include "Quorvi/platform/linux/PulsePermissions.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "Quorvi/platform/linux/LoopScheduler.h"
#include "tests/linux/support/SoundServer.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;
using testing::SoundServer;
using testing::TemporaryFolder;

constexpr auto limit = 20s;

TEST(PulsePermissions, TheMicrophoneComesAndGoesByEvents) {
    SoundServer server;
    LoopScheduler scheduler;
    PulseConnection connection(scheduler, server.address());
    PulsePermissions permissions(connection, scheduler);
    EXPECT_EQ(permissions.microphone(), MicrophoneAuthorization::notDetermined);
    const auto becomes = [&](MicrophoneAuthorization expected) {
        return scheduler.runUntil([&] { return permissions.microphone() == expected; }, limit);
    };
    EXPECT_TRUE(becomes(MicrophoneAuthorization::authorized));
    server.pactl("unload-module module-remap-source");
    EXPECT_TRUE(becomes(MicrophoneAuthorization::denied));
    server.pactl("load-module module-remap-source master=mic_feed.monitor source_name=other");
    EXPECT_TRUE(becomes(MicrophoneAuthorization::authorized));
    server.kill();
    EXPECT_TRUE(becomes(MicrophoneAuthorization::denied));
    server.start();
    EXPECT_TRUE(becomes(MicrophoneAuthorization::authorized));
}

TEST(PulsePermissions, ARequestIsAnsweredAlsoByAServerThatIsAwayOrFrozen) {
    SoundServer server(SoundServer::Microphone::absent);
    LoopScheduler scheduler;
    PulseConnection connection(scheduler, server.address());
    PulsePermissions permissions(connection, scheduler);
    int answers = 0;
    const auto answered = [&] {
        const int before = answers;
        permissions.requestMicrophone([&] { ++answers; });
        return scheduler.runUntil([&] { return answers > before; }, limit);
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

// Settings programs that write down how they were called.
class Desktop {
public:
    Desktop(const std::string& name, const std::vector<std::string>& programs) {
        for (const auto& program : programs) {
            const auto path = folder_.path() / program;
            std::ofstream(path) << "#!/bin/sh\necho \"${0##*/} $*\" >" << file().string()
                                << ".new\n/bin/mv " << file().string() << ".new " << file().string()
                                << "\n";
            std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        }
        ::setenv("PATH", (folder_.path().string() + ":/nowhere").c_str(), 1);
        ::setenv("XDG_CURRENT_DESKTOP", name.c_str(), 1);
    }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    ~Desktop() {
        ::setenv("PATH", path_.c_str(), 1);
        ::setenv("XDG_CURRENT_DESKTOP", desktop_.c_str(), 1);
    }

    std::string opened() const {
        testing::eventually([this] { return std::filesystem::exists(file()); });
        std::ifstream stream(file());
        std::string line;
        std::getline(stream, line);
        return line;
    }

private:
    std::filesystem::path file() const { return folder_.path() / "called"; }

    TemporaryFolder folder_;
    std::string path_ = ::getenv("PATH");
    std::string desktop_ = ::getenv("XDG_CURRENT_DESKTOP") ? ::getenv("XDG_CURRENT_DESKTOP") : "";
};

TEST(PulsePermissions, TheDesktopsOwnSettingsAreOpened) {
    struct Row {
        std::string desktop;
        std::vector<std::string> installed;
        PrivacyPane pane;
        std::string opened;
    };
    LoopScheduler scheduler;
    PulseConnection connection(scheduler, "unix:/nowhere");
    PulsePermissions permissions(connection, scheduler);
    const std::vector<Row> rows{
        {"ubuntu:GNOME",
         {"pavucontrol", "gnome-control-center"},
         PrivacyPane::microphone,
         "gnome-control-center sound"},
        {"KDE",
         {"pavucontrol", "systemsettings"},
         PrivacyPane::microphone,
         "systemsettings kcm_pulseaudio"},
        {"KDE", {"kcmshell5"}, PrivacyPane::accessibility, "kcmshell5 kcm_access"},
        {"GNOME",
         {"gnome-control-center"},
         PrivacyPane::accessibility,
         "gnome-control-center universal-access"},
        {"OPENBOX",
         {"mate-volume-control", "pavucontrol"},
         PrivacyPane::microphone,
         "pavucontrol --tab=4"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.desktop + " " + row.opened);
        const Desktop desktop(row.desktop, row.installed);
        permissions.openPrivacyPane(row.pane);
        EXPECT_EQ(desktop.opened(), row.opened);
    }
    const Desktop bare("GNOME", {});
    permissions.openPrivacyPane(PrivacyPane::microphone);
}

}  // namespace
}  // namespace quorvi
