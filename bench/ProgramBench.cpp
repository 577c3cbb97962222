// The program in the tray: start time, memory, wake-ups, and the cost of its indicator. In a
// private desktop with a tray; details go to standard error.
#include "bench/ProgramRun.h"

namespace quorvi::bench {
namespace {

constexpr std::size_t years = 200'000;  // dictations of ten years
constexpr std::size_t ruleCount = 10'000;

void reportMemory(const char* what, pid_t pid) {
    const auto memory = memoryOf(pid);
    std::fprintf(stderr, "%s: resident %.1f MB, proportional %.1f MB, anonymous %.1f MB\n", what,
                 memory.resident, memory.proportional, memory.anonymous);
}

// Resident memory, with a reference if there is one; proportional and anonymous memory.
void memoryFigures(const std::string& name, pid_t pid, std::optional<double> reference = {}) {
    const auto memory = memoryOf(pid);
    figure(name, memory.resident, "MB", reference);
    figure(name + "_pss", memory.proportional, "MB");
    figure(name + "_anonymous", memory.anonymous, "MB");
}

// The same for a program with a tray icon only.
struct Bare {
    explicit Bare(test::TrayHost& tray) {
        tray.forgetItem();
        const double start = millisecondsNow();
        process = Process({test::builtProgram("bare_tray")});
        expect(tray.waitForItem(), "the bare program did not reach the tray");
        toTray = millisecondsNow() - start;
    }
    Process process;
    double toTray = 0;
};

// The first run writes the synchronisation state for later ones.
void runFirst(test::TrayHost& tray, const Home& home) {
    const Program first(tray, home);
    std::fprintf(stderr, "first start: %.0f ms\n", first.toTray());
    first.settle();
    reportMemory("first run", first.pid());
}

void measureMemory(test::TrayHost& tray, std::size_t records, const char* name) {
    const Home home(records, 0);
    runFirst(tray, home);
    const Program program(tray, home);
    program.settle();
    memoryFigures(name, program.pid());
}

void measureStart(test::TrayHost& tray) {
    const Home home(years, ruleCount);
    runFirst(tray, home);
    std::vector<double> starts, bare;
    for (int round = 0; round < 9; ++round) {
        bare.push_back(Bare(tray).toTray);
        const Program program(tray, home);
        starts.push_back(program.toTray());
    }
    figure("start_to_tray", median(starts), "ms", median(bare));
    figure("start_to_tray_slowest", percentile(starts, 1), "ms", percentile(bare, 1));
}

// Asks the window manager to close it, as its button does.
void closeWindow() {
    test::shell(
        "id=$(xdotool search --onlyvisible --name '^Quorvi$' | head -n 1); "
        "xdotool windowactivate --sync $id key --window 0 alt+F4");
    expect(test::eventually([] {
               return test::shell("xdotool search --onlyvisible --name '^Quorvi$'").empty();
           }),
           "the window did not close");
}

void measureIdle(test::TrayHost& tray) {
    const Home home(0, 0);
    const Program program(tray, home);
    program.settle();
    double bare = 0;
    {
        const Bare other(tray);
        wait(2s);
        bare = memoryOf(other.process.pid()).resident;
    }
    memoryFigures("idle_memory", program.pid(), bare);
    figure("idle_wakeups", wakeUps("idle", program.pid(), 64s), "per second");

    quorvi("show");
    expect(test::eventually([] {
               return !test::shell("xdotool search --onlyvisible --name '^Quorvi$'").empty();
           }),
           "the window did not open");
    wait(3s);
    reportMemory("window open", program.pid());
    closeWindow();
    program.settle();
    memoryFigures("idle_memory_window_closed", program.pid(), bare);
    figure("idle_wakeups_window_closed", wakeUps("window closed", program.pid(), 32s),
           "per second");
}

// Continuous speech.
class Speaker {
public:
    Speaker() {
        const auto file = test::outputOf({"mktemp", "--suffix=.wav"});
        file_ = file.substr(0, file.find('\n'));
        test::outputOf({"espeak-ng", "-v", "en-us+f2", "-s", "130", "-w", file_,
                        "the weather is nice today and we should send the quarterly report to the "
                        "customer before the meeting on monday"});
        playing_ =
            Process({"sh", "-c", "while paplay -d \"$QUORVI_MIC_FEED\" " + file_ + "; do :; done"});
    }

private:
    std::string file_;
    Process playing_;
};

struct RecordingCost {
    double interface = 0, all = 0;  // percent of a core
};

RecordingCost record(Program& program, const char* what) {
    quorvi("start");
    expect(test::eventually([] { return quorvi("status").starts_with("recording"); }),
           "no recording began");
    wait(2s);
    constexpr auto time = 20s;
    const auto before = threadsOf(program.pid());
    wait(time);
    const auto after = threadsOf(program.pid());
    expect(quorvi("status").starts_with("recording"), "the recording ended");
    quorvi("cancel");
    reportThreads(what, before, after, 20);
    RecordingCost cost;
    for (const auto& [id, use] : after) {
        const double used =
            use.processorSeconds - (before.contains(id) ? before.at(id).processorSeconds : 0);
        cost.all += 100 * used / 20;
        if (id == program.pid() || use.name == "QXcbEventQueue") cost.interface += 100 * used / 20;
    }
    return cost;
}

void measureIndicator(test::TrayHost& tray) {
    const Home home(0, 0);
    test::TestFolder folder;
    test::TestUser user;
    Program program(tray, home, {"QUORVI_API_KEY=sk-test"});
    Process editor(test::mousepad(folder.write("note.txt", "")));
    user.bringToFront(editor.pid());
    expect(test::eventually([] { return quorvi("status").ends_with("\nready\n"); }),
           "Quorvi did not become ready");
    program.settle();
    const auto quiet = record(program, "recording silence");
    const Speaker speaker;
    const auto loud = record(program, "recording speech");
    figure("indicator_cpu", loud.interface, "percent", quiet.interface);
    figure("indicator_recording_cpu", loud.all, "percent", quiet.all);
    program.settle();
    figure("indicator_hidden_wakeups", wakeUps("indicator hidden again", program.pid(), 32s),
           "per second");
}

}  // namespace
}  // namespace quorvi::bench

int main(int argc, char** argv) {
    using namespace quorvi::bench;
    const std::string only = argc > 1 ? argv[1] : "";
    quorvi::test::TrayHost tray;
    if (only.empty() || only == "idle") measureIdle(tray);
    if (only.empty() || only == "indicator") measureIndicator(tray);
    if (only.empty() || only == "start") measureStart(tray);
    if (only.empty() || only == "memory") {
        measureMemory(tray, 20'000, "idle_memory_20000");
        measureMemory(tray, years, "idle_memory_200000");
    }
}
