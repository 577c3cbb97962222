#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/Process.h"

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
    Process play(const Samples& samples, const std::string& sink = "mic_feed") const;

protected:
    explicit SoundService(std::string socket) : socket_(std::move(socket)) {}
    static void require(const std::function<bool()>& check, const std::string& what);

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

    void start();
    void kill() {
        listeners_.clear();
        server_.kill();
    }
    void freeze() const { server_.freeze(); }
    void thaw() const { server_.thaw(); }

private:
    // A null sink works in blocks of 2 s unless somebody asks for less.
    void listen(const std::string& source);

    bool hasMicrophone_;
    Process server_;
    std::vector<Process> listeners_;
};

// PipeWire with its session manager and its service of PulseAudio's protocol, with a mono speaker
// and a virtual microphone.
class PipeWireServer : public SoundService {
public:
    PipeWireServer();

private:
    Process start(std::vector<std::string> command) const;

    Process bus_, core_, manager_, pulse_;
};

}  // namespace quorvi::test
