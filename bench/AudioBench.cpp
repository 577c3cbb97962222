// Needs the virtual microphone of scripts/desktop-session; plays noise into it.
#include <sys/resource.h>

#include <filesystem>
#include <optional>
#include <vector>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/pulse/PulseAudioInput.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/async/TaskScope.h"
#include "bench/Figure.h"
#include "tests/support/Process.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;
using bench::millisecondsNow;

constexpr auto limit = 20s;
constexpr int rounds = 30;

double processorMilliseconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto ms = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_usec) / 1e3;
    };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
}

struct Run {
    double toFirstSample = 0;
    double toFile = 0;
    double lost = 0;  // ms of sound between the first sample and the stop that are not in the file
    double load = 0;  // % of a core
};

Task<void> recordOnce(LoopScheduler& scheduler, AudioInput& input, std::filesystem::path file,
                      Duration length, std::optional<Run>& result, std::stop_token stop) {
    Run run;
    auto capture = input.makeCapture();
    const double asked = millisecondsNow();
    auto running = capture->record(file, {}, stop);
    co_await running;
    const double began = millisecondsNow();
    const double early = capture->currentTime() * 1e3;
    run.toFirstSample = began - asked;
    const double before = processorMilliseconds();
    auto pause = sleepFor(scheduler, length, stop);
    co_await pause;
    const double stopped = millisecondsNow();
    run.load = 100 * (processorMilliseconds() - before) / (stopped - began);
    capture->stop();
    auto complete = capture->finished();
    co_await complete;
    run.toFile = millisecondsNow() - stopped;
    run.lost = early + (stopped - began) - capture->currentTime() * 1e3;
    std::filesystem::remove(file);
    result = run;
}

Run record(LoopScheduler& scheduler, AudioInput& input, Duration length) {
    std::optional<Run> result;
    TaskScope scope(scheduler);
    scope.start([&](std::stop_token stop) {
        return recordOnce(scheduler, input,
                          std::filesystem::temp_directory_path() / "quorvi-audio-bench.m4a", length,
                          result, stop);
    });
    scheduler.runUntil([&] { return result.has_value(); }, limit);
    return result.value();
}

void measure() {
    const test::Process noise(
        {"pacat", "-p", "-d", "mic_feed", "--raw", "--rate=44100", "--channels=1", "/dev/urandom"});
    LoopScheduler scheduler;
    PulseConnection connection(scheduler);
    PulseAudioInput input(connection, scheduler);
    scheduler.runUntil([&] { return connection.hasMicrophone().has_value(); }, limit);
    std::vector<double> first, file, lost;
    for (int i = 0; i < rounds; ++i) {
        input.prepare();
        scheduler.runFor(50ms + i * 1ms);  // at any phase of the device's blocks
        const auto run = record(scheduler, input, 300ms);
        first.push_back(run.toFirstSample);
        file.push_back(run.toFile);
        lost.push_back(run.lost);
    }
    bench::figure("press_to_sample_device", bench::median(first), "ms");
    bench::figure("press_to_sample_device_p95", bench::percentile(first, 0.95), "ms");
    bench::figure("stop_to_file", bench::median(file), "ms");
    bench::figure("stop_to_file_p95", bench::percentile(file, 0.95), "ms");
    bench::figure("recording_end_lost", bench::median(lost), "ms");
    bench::figure("recorder_cpu", record(scheduler, input, 8s).load, "%");
}

}  // namespace
}  // namespace quorvi

int main() {
    quorvi::measure();
    return 0;
}
