#include "tests/support/sound/MicrophoneUser.h"

namespace quorvi::test {

Running<void>& MicrophoneUser::begin(const std::filesystem::path& file, std::stop_token stop) {
    ends.clear();
    recording.reset();
    capture = input.makeCapture();
    capture->onEnded = [this](CaptureEnd end) { ends.push_back(end); };
    return recording.emplace(capture->record(file, {}, std::move(stop)));
}

bool MicrophoneUser::stop() {
    capture->stop();
    const Running<void> finishing(capture->finished());
    return succeeds(finishing);
}

bool MicrophoneUser::succeeds(const Running<void>& running) {
    await(scheduler, running);
    error = running.failure();
    return running.value().has_value();
}

}  // namespace quorvi::test
