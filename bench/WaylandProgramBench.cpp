// The wake-ups of the whole program on sway; details go to standard error.
#include "bench/ProgramRun.h"

int main() {
    using namespace quorvi::bench;
    quorvi::test::TrayHost tray;
    const Home home(0, 0);
    const Program program(tray, home);
    program.settle();
    figure("wayland_idle_wakeups", wakeUps("idle", program.pid(), 64s), "per second");
}
