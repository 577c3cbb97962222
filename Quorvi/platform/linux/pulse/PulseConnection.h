#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/AudioCapture.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"

struct pa_context;

namespace quorvi {

// The program's only connection to the sound server (PulseAudio, or PipeWire's service with the
// same protocol). Connects at once and tracks the microphones, so that a recording starts without a
// query. Reconnects when the server's socket appears, and also at doubling intervals of up to 30 s:
// bind() creates a socket before listen() makes it answer, and a server may be remote. Never starts
// a server.
//
// Created and destroyed on the main thread; outlives the adapters that use it, their captures and
// their clips.
class PulseConnection {
public:
    // `server` in the notation of PULSE_SERVER; empty means the user's own.
    explicit PulseConnection(Scheduler& scheduler, std::string server = {});
    ~PulseConnection();

    // Main thread. Whether there is a microphone, as last known; nullopt before the first answer.
    std::optional<bool> hasMicrophone() const;
    // Main thread. Those that the user can choose, as last known; the one without a choice first.
    const std::vector<Microphone>& microphones() const;
    // Main thread. The microphones may have changed.
    Observable& changed();
    // Main thread. Queries the server and calls back on the main thread; reconnects at once if the
    // connection is down.
    void refresh(std::function<void()> answered);

    // Any thread. Runs a job on the sound thread; the functions below are for that thread only.
    void run(std::function<void()> job);

    [[nodiscard]] Timer after(Duration delay, std::function<void()> work);

    // Null while there is no connection.
    pa_context* context() const;

    // Calls back, perhaps at once, whether there is a connection whose microphones are known.
    // Without one it first tries to connect.
    void whenReady(std::function<void(bool)> answer);

    // The source to record from: the preferred one if it is there; otherwise the default one, or
    // another if that is a speaker's monitor.
    std::optional<std::string> microphone(const std::string& preferred) const;
    // Whether the source is a speaker's monitor.
    bool isMonitor(const std::string& source) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi
