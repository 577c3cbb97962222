#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/linux/support/Process.h"

namespace quorvi::testing {

// A folder that goes with the object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        auto name = (std::filesystem::temp_directory_path() / "quorvi-test-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

using Samples = std::vector<std::int16_t>;

// Asks until the check holds, at most 20 s.
template <class Check>
bool eventually(Check check) {
    for (int i = 0; i < 2000; ++i) {
        if (check()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

// A sound server of its own for tests that stop, freeze or rearrange one: PulseAudio with a
// speaker and a virtual microphone that hears what is played to it, or without the latter.
class SoundServer {
public:
    enum class Microphone { present, absent };

    explicit SoundServer(Microphone microphone = Microphone::present) : microphone_(microphone) {
        start();
    }
    ~SoundServer() { kill(); }

    std::string address() const { return "unix:" + socket().string(); }
    std::string pactl(const std::string& arguments) const {
        return output("pactl -s " + address() + " " + arguments);
    }

    void start() {
        std::ofstream script(folder_.path() / "default.pa");
        script << "load-module module-native-protocol-unix auth-anonymous=1 socket="
               << socket().string() << "\n"
               << "load-module module-null-sink sink_name=speaker rate=44100 channels=2\n";
        if (microphone_ == Microphone::present)
            script << "load-module module-null-sink sink_name=mic_feed rate=44100 channels=1\n"
                   << "load-module module-remap-source master=mic_feed.monitor source_name=mic\n"
                   << "set-default-source mic\n";
        script << "set-default-sink speaker\n";
        script.close();
        const auto folder = folder_.path().string();
        server_ = Process(
            {"pulseaudio", "-n", "-F", folder + "/default.pa", "--daemonize=no",
             "--exit-idle-time=-1", "--use-pid-file=no", "--realtime=no", "--high-priority=no"},
            // One server only may have its name on the session bus.
            {"PULSE_RUNTIME_PATH=" + folder, "PULSE_STATE_PATH=" + folder,
             "DBUS_SESSION_BUS_ADDRESS=disabled:"});
        require([this] { return !pactl("info").empty(); });
        if (microphone_ == Microphone::present) listen("mic", 1);
        listen("speaker.monitor", listeners_.size() + 1);
    }
    void kill() {
        listeners_.clear();
        server_.kill();
    }
    void freeze() const { server_.signal(SIGSTOP); }
    void thaw() const { server_.signal(SIGCONT); }

    // Plays into a sink; the process ends when everything has been played.
    Process play(const Samples& samples, const std::string& sink = "mic_feed") const {
        const auto file = folder_.path() / ("played-" + sink + ".raw");
        std::ofstream(file, std::ios::binary)
            .write(reinterpret_cast<const char*>(samples.data()),
                   static_cast<std::streamsize>(samples.size() * sizeof(std::int16_t)));
        return Process({"pacat", "-p", "-s", address(), "-d", sink, "--raw", "--rate=44100",
                        "--channels=1", "--format=s16le", file.string()});
    }

private:
    template <class Check>
    static void require(Check check) {
        if (!eventually(check))
            throw std::runtime_error("The test's sound server did not come up.");
    }

    std::filesystem::path socket() const { return folder_.path() / "native"; }

    // A null sink works in blocks of 2 s unless somebody asks for less.
    void listen(const std::string& source, std::size_t count) {
        listeners_.push_back(
            Process({"parec", "-s", address(), "-d", source, "--latency-msec=10", "--raw"}));
        require([&] {
            const auto list = pactl("list short source-outputs");
            return static_cast<std::size_t>(std::count(list.begin(), list.end(), '\n')) >= count;
        });
    }

    Microphone microphone_;
    TemporaryFolder folder_;
    Process server_;
    std::vector<Process> listeners_;
};

}  // namespace quorvi::testing
