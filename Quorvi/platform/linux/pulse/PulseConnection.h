#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"

struct pa_context;

namespace quorvi {

// The program's one connection to the sound server (PulseAudio, or PipeWire's service of the same
// protocol). It connects at once, knows the microphones at any time so that a recording starts
// without asking, and connects again when the server comes back: its socket's appearance is an
// event, but bind() creates a socket before listen() makes it answer, and a server may be remote,
// so attempts also follow each other at doubling pauses of at most 30 s. It never starts a server.
//
// Made and destroyed on the main thread; lives as long as the adapters that use it and their
// captures and clips.
class PulseConnection {
public:
    // `server` in the notation of PULSE_SERVER; empty means the user's own.
    explicit PulseConnection(Scheduler& scheduler, std::string server = {});
    ~PulseConnection();

    // Main thread. Whether there is a microphone, as last known; nothing before the first answer.
    std::optional<bool> hasMicrophone() const;
    // Main thread. hasMicrophone() may have changed.
    Observable& changed();
    // Main thread. Asks the server anew and reports on the main thread; a connection that is down
    // is tried at once.
    void refresh(std::function<void()> answered);

    // Any thread. Runs a job on the sound thread; the functions below are for that thread only.
    void run(std::function<void()> job);

    [[nodiscard]] Timer after(Duration delay, std::function<void()> work);

    // Null while there is no connection.
    pa_context* context() const;

    // Reports, perhaps at once, whether there is a connection whose microphones are known. Without
    // one, it is tried at once and reported when that has succeeded or failed.
    void whenReady(std::function<void(bool)> answer);

    // The source to record from: the default one or, when that is a speaker's monitor, another.
    std::optional<std::string> microphone() const;
    // Whether the source plays back what a speaker plays.
    bool isMonitor(const std::string& source) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi
