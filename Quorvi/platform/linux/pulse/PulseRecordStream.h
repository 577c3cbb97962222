#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"

struct pa_operation;
struct pa_stream;

namespace quorvi {

// One recording stream from the microphone. Sound thread only; created there as a shared_ptr. No
// call blocks, and a silent server or device ends it after a fixed time.
class PulseRecordStream : public std::enable_shared_from_this<PulseRecordStream> {
public:
    struct Use {
        const char* name = nullptr;   // as the desktop's mixer shows it
        std::string microphone = {};  // the preferred one; see PulseConnection::microphone()
        int fragmentsPerSecond = 200;
    };
    struct Events {
        std::function<void(std::span<const std::int16_t>)> samples;
        // The stream has ended, by itself or by drain(). The last call.
        std::function<void()> ended;
    };

    PulseRecordStream(PulseConnection& connection, Use use, AudioSettings settings, Events events);
    ~PulseRecordStream();
    PulseRecordStream(const PulseRecordStream&) = delete;
    PulseRecordStream& operator=(const PulseRecordStream&) = delete;

    void begin();
    // Stops capturing, delivers what the server has captured so far, and ends.
    void drain();

private:
    struct Callbacks;

    void connect();
    void read();
    void pause();
    void expectData(Duration limit);
    void await(pa_operation* operation);
    void end();

    PulseConnection& connection_;
    Use use_;
    AudioSettings settings_;
    Events events_;
    pa_stream* stream_ = nullptr;
    pa_operation* awaited_ = nullptr;  // of drain()
    Timer limit_;
    TimePoint dataDue_{};
    bool draining_ = false;
    bool pausing_ = false;
    bool ended_ = false;
};

}  // namespace quorvi
