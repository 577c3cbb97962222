#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/Process.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {

using Samples = std::vector<std::int16_t>;  // 16-bit mono at 44.1 kHz

// A server that speaks PulseAudio's protocol, of the test's own.
class SoundService {
public:
    std::string address() const { return "unix:" + (folder_.path() / socket_).string(); }
    std::string pactl(const std::string& arguments) const {
        return shell("pactl -s " + address() + " " + arguments);
    }
    // Plays into a sink; the process ends when everything has been played.
    Process play(const Samples& samples, const std::string& sink = "mic_feed") const {
        const auto file =
            folder_.write("played-" + sink + ".raw",
                          {reinterpret_cast<const char*>(samples.data()), samples.size() * 2});
        return Process({"pacat", "-p", "-s", address(), "-d", sink, "--raw", "--rate=44100",
                        "--channels=1", "--format=s16le", file});
    }

protected:
    explicit SoundService(std::string socket) : socket_(std::move(socket)) {}
    static void require(const std::function<bool()>& check, const std::string& what) {
        if (!eventually(check))
            throw std::runtime_error("The test's " + what + " did not come up.");
    }

    TestFolder folder_;

private:
    std::string socket_;
};

// PulseAudio for tests that stop, freeze or rearrange it: with a speaker and a virtual microphone
// that hears what is played to mic_feed, or without the latter.
class SoundServer : public SoundService {
public:
    enum class Microphone { present, absent };

    explicit SoundServer(Microphone microphone = Microphone::present)
        : SoundService("native"), hasMicrophone_(microphone == Microphone::present) {
        start();
    }

    void start() {
        const auto folder = folder_.path().string();
        std::string script =
            "load-module module-native-protocol-unix auth-anonymous=1 socket=" + folder +
            "/native\n" +
            "load-module module-null-sink sink_name=speaker rate=44100 channels=2\n"
            "set-default-sink speaker\n";
        if (hasMicrophone_)
            script +=
                "load-module module-null-sink sink_name=mic_feed rate=44100 channels=1\n"
                "load-module module-remap-source master=mic_feed.monitor source_name=mic\n"
                "set-default-source mic\n";
        server_ = Process(
            {"pulseaudio", "-n", "-F", folder_.write("default.pa", script), "--daemonize=no",
             "--exit-idle-time=-1", "--use-pid-file=no", "--realtime=no", "--high-priority=no"},
            // One server only may have its name on the session bus.
            {"PULSE_RUNTIME_PATH=" + folder, "PULSE_STATE_PATH=" + folder,
             "DBUS_SESSION_BUS_ADDRESS=disabled:"});
        require([this] { return !pactl("info").empty(); }, "sound server");
        if (hasMicrophone_) listen("mic");
        listen("speaker.monitor");
    }
    void kill() {
        listeners_.clear();
        server_.kill();
    }
    void freeze() const { server_.freeze(); }
    void thaw() const { server_.thaw(); }

private:
    // A null sink works in blocks of 2 s unless somebody asks for less.
    void listen(const std::string& source) {
        listeners_.push_back(Process({"sh", "-c",
                                      "exec parec -s " + address() + " -d " + source +
                                          " --latency-msec=10 --raw >/dev/null"}));
        require(
            [&] {
                const auto list = pactl("list short source-outputs");
                return static_cast<std::size_t>(std::ranges::count(list, '\n')) >=
                       listeners_.size();
            },
            "listener");
    }

    bool hasMicrophone_;
    Process server_;
    std::vector<Process> listeners_;
};

// PipeWire with its session manager and its service of PulseAudio's protocol, with a mono speaker
// and a virtual microphone.
class PipeWireServer : public SoundService {
public:
    PipeWireServer() : SoundService("pulse/native") {
        const auto folder = folder_.path().string();
        bus_ = start({"dbus-daemon", "--session", "--nofork", "--nosyslog",
                      "--address=unix:path=" + folder + "/bus"});
        require([&] { return std::filesystem::exists(folder + "/bus"); }, "bus");
        core_ = start({"pipewire"});
        require([&] { return std::filesystem::exists(folder + "/pipewire-0"); }, "PipeWire");
        manager_ = start({"wireplumber"});
        pulse_ = start({"pipewire-pulse"});
        require([&] { return !pactl("info").empty(); }, "PulseAudio service");
        for (const std::string module :
             {"module-null-sink sink_name=speaker channels=1 rate=44100",
              "module-null-sink sink_name=mic_feed channels=1 rate=44100",
              "module-remap-source master=mic_feed.monitor source_name=mic"})
            require([&] { return !pactl("load-module " + module).empty(); }, module);
        pactl("set-default-sink speaker");
        pactl("set-default-source mic");
        require([&] { return pactl("get-default-source").starts_with("mic\n"); }, "default source");
    }

private:
    Process start(std::vector<std::string> command) const {
        const auto folder = folder_.path().string();
        return Process(std::move(command),
                       {"PULSE_SERVER", "PULSE_RUNTIME_PATH", "XDG_RUNTIME_DIR=" + folder,
                        "PIPEWIRE_RUNTIME_DIR=" + folder,
                        "DBUS_SESSION_BUS_ADDRESS=unix:path=" + folder + "/bus"});
    }

    Process bus_, core_, manager_, pulse_;
};

}  // namespace quorvi::test
