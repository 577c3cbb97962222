#include <pthread.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>
#include <xcb/xinput.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventTap.h"
#include "bench/Figure.h"
#include "tests/support/desktop/KeyWindow.h"
#include "tests/support/desktop/TestUser.h"

// Cost of the input hook: processor time of its thread per event, system calls included, and time
// from the keyboard to the handler on the main thread. The reference is a client that only reads
// the same raw events. Needs a desktop.

namespace {

using namespace quorvi;

constexpr int events = 4000;

double threadMicroseconds(pid_t thread) {
    // The kernel's encoding of another thread's processor clock.
    const auto clock = static_cast<clockid_t>((~static_cast<unsigned>(thread) << 3) | 6U);
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

pid_t threadNamed(const std::string& name) {
    for (pid_t thread = getpid(); thread < getpid() + 1000; ++thread) {
        const auto path = "/proc/self/task/" + std::to_string(thread) + "/comm";
        char text[32] = {};
        auto* file = std::fopen(path.c_str(), "r");
        if (file == nullptr) continue;
        const auto length = std::fread(text, 1, sizeof text - 1, file);
        std::fclose(file);
        if (std::string(text, length) == name + "\n") return thread;
    }
    return 0;
}

// Reads raw key events and counts them.
class BareClient {
public:
    BareClient() {
        struct {
            xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
            std::uint32_t events =
                XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
        } mask;
        auto* c = connection_.get();
        const auto version = xcb_input_xi_query_version(c, 2, 2);
        ownXcb(xcb_input_xi_query_version_reply(c, version, nullptr));
        xcb_input_xi_select_events(c, connection_.root(), 1, &mask.head);
        connection_.synchronise();
        thread_ = std::thread([this] {
            thread = static_cast<pid_t>(syscall(SYS_gettid));
            while (count < events && ownXcb(xcb_wait_for_event(connection_.get()))) ++count;
            while (!done) std::this_thread::sleep_for(std::chrono::milliseconds(5));
        });
    }
    ~BareClient() {
        done = true;
        thread_.join();
    }

    std::atomic<pid_t> thread{0};
    std::atomic<int> count{0};
    std::atomic<bool> done{false};

private:
    X11Connection connection_;
    std::thread thread_;
};

// Processor time of the thread once it is idle.
double settledMicroseconds(pid_t thread) {
    auto before = threadMicroseconds(thread);
    for (;;) {
        std::this_thread::sleep_for(std::chrono::microseconds(300));
        const auto now = threadMicroseconds(thread);
        if (now == before) return now;
        before = now;
    }
}

}  // namespace

int main() {
    test::KeyWindow window;
    test::TestUser user;
    LoopScheduler scheduler;
    X11KeyEventTap tap(scheduler);
    int handled = 0;
    double handledAt = 0;
    const bool installed = tap.install([&](const TapEvent&) {
        handledAt = bench::millisecondsNow();
        ++handled;
        return TapVerdict::pass;
    });
    if (!window.show() || !installed) {
        std::fprintf(stderr, "TapBench: no desktop, or no input hook on it\n");
        return 1;
    }
    BareClient bare;
    while (bare.thread == 0) std::this_thread::yield();
    const auto tapThread = threadNamed("quorvi-input");

    std::vector<double> tapCosts, bareCosts, latencies;
    auto tapBefore = settledMicroseconds(tapThread);
    auto bareBefore = settledMicroseconds(bare.thread);
    for (int i = 0; i < events; ++i) {
        const auto posted = bench::millisecondsNow();
        i % 2 == 0 ? user.press(test::key::a) : user.release(test::key::a);
        if (!scheduler.runUntil([&] { return handled > i; }, std::chrono::seconds(10))) return 1;
        latencies.push_back((handledAt - posted) * 1000);
        while (bare.count <= i) std::this_thread::yield();
        const auto tapNow = settledMicroseconds(tapThread);
        const auto bareNow = settledMicroseconds(bare.thread);
        tapCosts.push_back(tapNow - tapBefore);
        bareCosts.push_back(bareNow - bareBefore);
        tapBefore = tapNow;
        bareBefore = bareNow;
    }
    bench::figure("tap_event_p99", bench::percentile(tapCosts, 0.99), "us",
                  bench::percentile(bareCosts, 0.99));
    bench::figure("tap_event_median", bench::median(tapCosts), "us", bench::median(bareCosts));
    bench::figure("tap_post_to_handler", bench::median(latencies), "us");
    return 0;
}
