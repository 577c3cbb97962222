#include "tests/support/sound/SoundServer.h"

#include <algorithm>

#include "tests/support/Waiting.h"

namespace quorvi::test {

Process SoundService::play(const Samples& samples, const std::string& sink) const {
    const auto file =
        folder_.write("played-" + sink + ".raw",
                      {reinterpret_cast<const char*>(samples.data()), samples.size() * 2});
    return Process({"pacat", "-p", "-s", address(), "-d", sink, "--raw", "--rate=44100",
                    "--channels=1", "--format=s16le", file});
}

void SoundServer::start() {
    const auto folder = folder_.path().string();
    std::string script =
        "load-module module-native-protocol-unix auth-anonymous=1 socket=" + folder + "/native\n" +
        "load-module module-null-sink sink_name=speaker rate=44100 channels=2\n"
        "set-default-sink speaker\n";
    if (hasMicrophone_)
        script +=
            "load-module module-null-sink sink_name=mic_feed rate=44100 channels=1\n"
            "load-module module-remap-source master=mic_feed.monitor source_name=mic\n"
            "set-default-source mic\n";
    server_ =
        Process({"pulseaudio", "-n", "-F", folder_.write("default.pa", script), "--daemonize=no",
                 "--exit-idle-time=-1", "--use-pid-file=no", "--realtime=no", "--high-priority=no"},
                // One server only may have its name on the session bus.
                {"PULSE_RUNTIME_PATH=" + folder, "PULSE_STATE_PATH=" + folder,
                 "DBUS_SESSION_BUS_ADDRESS=disabled:"});
    require([this] { return !pactl("info").empty(); }, "sound server");
    if (hasMicrophone_) listen("mic");
    listen("speaker.monitor");
}

void SoundServer::listen(const std::string& source) {
    listeners_.push_back(Process(
        {"sh", "-c",
         "exec parec -s " + address() + " -d " + source + " --latency-msec=10 --raw >/dev/null"}));
    require(
        [&] {
            const auto list = pactl("list short source-outputs");
            return static_cast<std::size_t>(std::ranges::count(list, '\n')) >= listeners_.size();
        },
        "listener");
}

PipeWireServer::PipeWireServer() : SoundService("pulse/native") {
    const auto folder = folder_.path().string();
    bus_ = start({"dbus-daemon", "--session", "--nofork", "--nosyslog",
                  "--address=unix:path=" + folder + "/bus"});
    require([&] { return std::filesystem::exists(folder + "/bus"); }, "bus");
    core_ = start({"pipewire"});
    require([&] { return std::filesystem::exists(folder + "/pipewire-0"); }, "PipeWire");
    manager_ = start({"wireplumber"});
    pulse_ = start({"pipewire-pulse"});
    require([&] { return !pactl("info").empty(); }, "PulseAudio service");
    for (const std::string module : {"module-null-sink sink_name=speaker channels=1 rate=44100",
                                     "module-null-sink sink_name=mic_feed channels=1 rate=44100",
                                     "module-remap-source master=mic_feed.monitor source_name=mic"})
        require([&] { return !pactl("load-module " + module).empty(); }, module);
    pactl("set-default-sink speaker");
    pactl("set-default-source mic");
    require([&] { return pactl("get-default-source").starts_with("mic\n"); }, "default source");
}

Process PipeWireServer::start(std::vector<std::string> command) const {
    const auto folder = folder_.path().string();
    return Process(std::move(command),
                   {"PULSE_SERVER", "PULSE_RUNTIME_PATH", "XDG_RUNTIME_DIR=" + folder,
                    "PIPEWIRE_RUNTIME_DIR=" + folder,
                    "DBUS_SESSION_BUS_ADDRESS=unix:path=" + folder + "/bus"});
}

void SoundService::require(const std::function<bool()>& check, const std::string& what) {
    if (!eventually(check)) throw std::runtime_error("The test's " + what + " did not come up.");
}

}  // namespace quorvi::test
