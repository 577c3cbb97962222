#include <gtest/gtest.h>

#include "tests/support/FullDisk.h"
#include "tests/support/sound/DecodedSound.h"
#include "tests/support/sound/MicrophoneUser.h"
#include "tests/support/sound/SoundServer.h"
#include "tests/support/sound/Sweep.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

const std::string microphoneFailed =
    "The microphone could not start. Check your macOS sound input.";

class PulseCaptureFaults : public testing::Test {
protected:
    void expectRefusal(MicrophoneUser& user) {
        std::filesystem::remove(file);
        EXPECT_FALSE(user.record(file));
        EXPECT_EQ(user.error, microphoneFailed);
        EXPECT_FALSE(std::filesystem::exists(file));
    }

    TestFolder folder;
    std::filesystem::path file = folder.path() / "recording.m4a";
};

TEST_F(PulseCaptureFaults, ALostMicrophoneEndsTheRecordingWholeAndNoSpeakerTakesItsPlace) {
    const struct {
        const char* name;
        std::function<void(SoundServer&)> lose;
    } rows[] = {
        {"removed", [](auto& server) { server.pactl("unload-module module-remap-source"); }},
        {"suspended", [](auto& server) { server.pactl("suspend-source mic 1"); }},
        {"killed server", [](auto& server) { server.kill(); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SoundServer server;
        MicrophoneUser user(server.address());
        ASSERT_TRUE(user.record(file)) << user.error;
        user.scheduler.runFor(200ms);
        row.lose(server);
        ASSERT_TRUE(user.waitForEnd());
        EXPECT_EQ(user.ends, std::vector{CaptureEnd::deviceLost});
        const double captured = user.capture->currentTime();
        user.scheduler.runFor(200ms);
        EXPECT_EQ(user.capture->currentTime(), captured);
        EXPECT_EQ(user.ends.size(), 1U);
        ASSERT_TRUE(user.stop()) << user.error;
        EXPECT_NEAR(DecodedSound(file).declaredSeconds, captured, 0.001);
        if (std::string(row.name) != "suspended") {
            ASSERT_TRUE(user.waitForMicrophone(false));
        }
        expectRefusal(user);
        if (std::string(row.name) != "killed server") continue;
        server.start();
        ASSERT_TRUE(user.waitForMicrophone(true));
        ASSERT_TRUE(user.record(file)) << user.error;
        ASSERT_TRUE(user.stop());
        std::filesystem::remove(file);
    }
}

TEST_F(PulseCaptureFaults, AMonitorIsNeverRecordedAndAnotherSourceIsFound) {
    SoundServer server(SoundServer::Microphone::absent);
    MicrophoneUser user(server.address());
    EXPECT_EQ(user.connection.hasMicrophone(), false);
    expectRefusal(user);
    server.pactl("load-module module-sine-source source_name=tone frequency=440");
    server.pactl("set-default-source speaker.monitor");
    ASSERT_TRUE(user.waitForMicrophone(true));
    ASSERT_TRUE(user.record(file)) << user.error;
    EXPECT_TRUE(user.waitForLevel(-60));
    ASSERT_TRUE(user.stop());
}

TEST_F(PulseCaptureFaults, AFrozenServerHangsNeitherTheStopNorTheStart) {
    SoundServer server;
    MicrophoneUser user(server.address());
    ASSERT_TRUE(user.record(file)) << user.error;
    user.scheduler.runFor(200ms);
    server.freeze();
    ASSERT_TRUE(user.stop()) << user.error;
    EXPECT_GT(DecodedSound(file).samples.size(), 1000U);
    expectRefusal(user);
    server.thaw();
    ASSERT_TRUE(user.record(file)) << user.error;
    ASSERT_TRUE(user.stop());
}

TEST_F(PulseCaptureFaults, ADiskThatFillsUpEndsTheRecordingWithAnEncodingError) {
    SoundServer server;
    MicrophoneUser user(server.address());
    const auto playing = server.play(Sweep::samples(20, 0.5));
    ASSERT_TRUE(user.waitForMicrophone(true));
    const FullDisk disk(16'000);
    ASSERT_TRUE(user.record(file)) << user.error;
    ASSERT_TRUE(user.waitForEnd());
    EXPECT_EQ(user.ends, std::vector{CaptureEnd::encodingError});
    EXPECT_FALSE(user.stop());
    EXPECT_EQ(user.error, "The recording could not be written: File too large.");
}

}  // namespace
}  // namespace quorvi::test
