#include "Quorvi/platform/linux/pulse/PulseStreamRelease.h"

#include <pulse/stream.h>

namespace quorvi {

namespace {

void madeTooLate(pa_stream* stream, void*) {
    const auto state = pa_stream_get_state(stream);
    if (state == PA_STREAM_CREATING) return;
    pa_stream_set_state_callback(stream, nullptr, nullptr);
    if (state == PA_STREAM_READY) pa_stream_disconnect(stream);
    pa_stream_unref(stream);
}

}  // namespace

void releaseStream(pa_stream* stream) {
    pa_stream_set_read_callback(stream, nullptr, nullptr);
    pa_stream_set_state_callback(stream, &madeTooLate, nullptr);
    madeTooLate(stream, nullptr);
}

}  // namespace quorvi
