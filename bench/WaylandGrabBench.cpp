// A key that the user types into another window (foot) on sway while the shortcut is held: from the
// keyboard to what runs in the terminal, through the program that has the keyboard then. The
// reference is the same without the shortcut.
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/wayland/input/WaylandInput.h"
#include "Quorvi/platform/linux/wayland/sway/SwayKeyEventTap.h"
#include "bench/Figure.h"
#include "tests/support/Process.h"
#include "tests/support/TestFolder.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/TestUser.h"

namespace {

using namespace quorvi;

constexpr KeyCode f8 = 100;
constexpr int rounds = 500;

void expect(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "WaylandGrabBench: %s\n", what);
    std::exit(1);
}

// A terminal whose program passes on what is typed.
class Terminal {
public:
    Terminal() {
        mkfifo(pipe_.c_str(), 0600);
        program_ = test::Process({"foot", "sh", "-c", "stty raw -echo; exec cat >" + pipe_});
        typed_ = open(pipe_.c_str(), O_RDONLY);
    }
    ~Terminal() { close(typed_); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    pid_t pid() const { return program_.pid(); }
    bool hasNext(int patience) const {
        pollfd descriptor{typed_, POLLIN, 0};
        char letter = 0;
        return poll(&descriptor, 1, patience) == 1 && read(typed_, &letter, 1) == 1;
    }

private:
    test::TestFolder folder_;
    const std::string pipe_ = (folder_.path() / "typed").string();
    test::Process program_;
    int typed_ = -1;
};

std::vector<double> millisecondsOfKeys(const Terminal& terminal, test::TestUser& user) {
    std::vector<double> times;
    while (terminal.hasNext(200)) continue;
    for (int round = 0; round < rounds; ++round) {
        const auto typed = bench::millisecondsNow();
        user.press(test::key::a);
        expect(terminal.hasNext(5'000), "a key was lost");
        times.push_back(bench::millisecondsNow() - typed);
        user.release(test::key::a);
    }
    return times;
}

}  // namespace

int main() {
    test::TestUser user;
    const Terminal terminal;
    expect(user.bringToFront(terminal.pid()), "the terminal has not got the focus");
    LoopScheduler scheduler;
    WaylandInput input;
    SwayKeyEventTap tap(scheduler, input);
    tap.setSwallowed({{f8, 0}});
    bool seesOthers = false;
    tap.install([&](const TapEvent& event) {
        seesOthers = seesOthers || event.keyCode != f8;
        return TapVerdict::pass;
    });
    expect(test::until(scheduler, [&] { return tap.isValid(); }), "sway keeps the shortcut");
    const auto free = millisecondsOfKeys(terminal, user);
    user.press(test::key::f8);
    const auto isSeen = [&] {
        user.tap(test::key::a);
        return seesOthers;
    };
    expect(test::until(scheduler, isSeen), "the shortcut is not held");
    const auto held = millisecondsOfKeys(terminal, user);
    user.release(test::key::f8);
    bench::figure("wayland_grab_latency_p99", bench::percentile(held, 0.99), "ms",
                  bench::percentile(free, 0.99));
    bench::figure("wayland_grab_latency", bench::median(held), "ms", bench::median(free));
    return 0;
}
