#pragma once

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "tests/linux/support/SoundServer.h"

namespace quorvi::testing {

// PipeWire with its session manager and its service of PulseAudio's protocol, all of its own, with
// a mono speaker and a virtual microphone that hears what is played to mic_feed.
class PipeWireServer {
public:
    PipeWireServer() {
        const auto folder = folder_.path().string();
        bus_ = start({"dbus-daemon", "--session", "--nofork", "--nosyslog",
                      "--address=unix:path=" + folder + "/bus"});
        require([&] { return std::filesystem::exists(folder + "/bus"); }, "bus");
        core_ = start({"pipewire"});
        require([&] { return std::filesystem::exists(folder + "/pipewire-0"); }, "core");
        manager_ = start({"wireplumber"});
        pulse_ = start({"pipewire-pulse"});
        require([&] { return !pactl("info").empty(); }, "PulseAudio service");
        require([&] { return load("module-null-sink sink_name=speaker channels=1 rate=44100"); },
                "speaker");
        require([&] { return load("module-null-sink sink_name=mic_feed channels=1 rate=44100"); },
                "feed");
        require([&] { return load("module-remap-source master=mic_feed.monitor source_name=mic"); },
                "microphone");
        pactl("set-default-sink speaker");
        pactl("set-default-source mic");
        require([&] { return pactl("get-default-source").starts_with("mic\n"); }, "default source");
    }

    std::string address() const { return "unix:" + folder_.path().string() + "/pulse/native"; }
    std::string pactl(const std::string& arguments) const {
        return output("pactl -s " + address() + " " + arguments);
    }
    Process play(const Samples& samples, const std::string& sink = "mic_feed") const {
        const auto file = folder_.path() / "played.raw";
        std::ofstream(file, std::ios::binary)
            .write(reinterpret_cast<const char*>(samples.data()),
                   static_cast<std::streamsize>(samples.size() * sizeof(std::int16_t)));
        return Process({"pacat", "-p", "-s", address(), "-d", sink, "--raw", "--rate=44100",
                        "--channels=1", "--format=s16le", file.string()});
    }

private:
    Process start(std::vector<std::string> command) const {
        const auto folder = folder_.path().string();
        return Process(
            std::move(command),
            {"-u", "PULSE_SERVER", "-u", "PULSE_RUNTIME_PATH", "XDG_RUNTIME_DIR=" + folder,
             "PIPEWIRE_RUNTIME_DIR=" + folder, "HOME=" + folder,
             "XDG_CONFIG_HOME=" + folder + "/config", "XDG_STATE_HOME=" + folder + "/state",
             "DBUS_SESSION_BUS_ADDRESS=unix:path=" + folder + "/bus"});
    }
    bool load(const std::string& module) const { return !pactl("load-module " + module).empty(); }
    template <class Check>
    static void require(Check check, const std::string& what) {
        if (!eventually(check))
            throw std::runtime_error("PipeWire's " + what + " did not come up.");
    }

    TemporaryFolder folder_;
    Process bus_, core_, manager_, pulse_;
};

}  // namespace quorvi::testing
