// The program in the tray: start time, memory, wake-ups, and the cost of its indicator. In a
// private desktop with a tray; details go to standard error.

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "Quorvi/history/HistoryFile.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"
#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/history/TranscriptRetention.h"
#include "bench/Figure.h"
#include "bench/ProcessUse.h"
#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/TestUser.h"
#include "tests/support/desktop/TrayHost.h"
#include "tests/support/reference/GeneratedHistory.h"
#include "tests/support/sound/SpeechSamples.h"

namespace quorvi::bench {
namespace {

using namespace std::chrono_literals;
using test::Process;

constexpr std::size_t years = 200'000;  // dictations of ten years
constexpr std::size_t ruleCount = 10'000;

// The home folder of a user with data.
class Home {
public:
    Home(std::size_t records, std::size_t rules) {
        const auto data = folder_.path() / ".local/share/Quorvi";
        std::filesystem::create_directories(data);
        PosixFileStore files;
        if (records)
            HistoryFile(files, data / "history.json")
                .save(DictationRecords(test::GeneratedHistory(records).take()));
        LoopScheduler loop;
        SerialExecutor disk("disk");
        PropertyListPreferences preferences(
            files, folder_.path() / ".config/Quorvi/preferences.plist", disk, loop);
        preferences.setBoolean("hasLaunchedQuorvi", true);
        preferences.setInteger("transcriptRetention", rawValue(TranscriptRetention::forever));
        if (rules) {
            const auto json = encodeCorrections(invented(rules));
            preferences.setBytes("savedTextCorrections", Bytes(json.begin(), json.end()));
        }
        preferences.flush();
    }
    std::string setting() const { return "HOME=" + folder_.path().string(); }

private:
    static std::vector<TextCorrection> invented(std::size_t count) {
        std::vector<TextCorrection> rules;
        for (std::size_t n = 0; n < count; ++n) {
            const auto phrase = "spoken phrase " + std::to_string(n);
            rules.push_back({.original = phrase,
                             .replacement = (n % 10 == 0 ? "λέξη " : "word ") + phrase,
                             .updatedAt = {7e8}});
        }
        return rules;
    }

    test::TestFolder folder_;
};

void wait(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

void expect(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "ProgramBench: %s\n", what);
    std::exit(1);
}

std::string quorvi(const std::string& command) {
    return test::shell(test::builtProgram("quorvi") + " " + command);
}

// A run of the program; quits it with its command.
class Program {
public:
    Program(test::TrayHost& tray, const Home& home, std::vector<std::string> settings = {}) {
        tray.forgetItem();
        settings.push_back(home.setting());
        settings.push_back("QUORVI_SERVICE=http://127.0.0.1:9");
        const double start = millisecondsNow();
        process_ = Process({test::builtProgram("quorvi"), "--print-stages"}, settings);
        expect(tray.waitForItem(), "Quorvi did not reach the tray");
        toTray_ = millisecondsNow() - start;
    }
    ~Program() {
        quorvi("quit");
        process_.wait();
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    double toTray() const { return toTray_; }
    pid_t pid() const { return process_.pid(); }
    Process& process() { return process_; }

    // Returns when the program has been idle for seconds.
    void settle() const {
        wait(6s);  // it looks for a tray after five
        for (double used = processorSeconds(pid());;) {
            wait(4s);
            const double now = processorSeconds(pid());
            if (now - used < 0.02) return;
            used = now;
        }
    }

private:
    Process process_;
    double toTray_ = 0;
};

void reportThreads(const char* what, const std::map<int, ThreadUse>& before,
                   const std::map<int, ThreadUse>& after, double seconds) {
    std::fprintf(stderr, "%s, %.0f s:\n", what, seconds);
    for (const auto& [id, use] : after) {
        const auto former = before.find(id);
        const auto begin = former == before.end() ? ThreadUse{} : former->second;
        if (use.wakeUps != begin.wakeUps)
            std::fprintf(stderr, "  %-16s %5ld wake-ups, %.2f ms\n", use.name.c_str(),
                         use.wakeUps - begin.wakeUps,
                         (use.processorSeconds - begin.processorSeconds) * 1000);
    }
}

// Returns the program's wake-ups per second beyond its own timers. All activity within a moment
// counts as one wake-up. The timers are the permission poll and the synchronisation tick, which are
// combined every two seconds; every eighth tick is a pass, which writes to the disk and completes
// later.
constexpr auto timerPeriod = 2s;
constexpr auto passPeriod = 16s;

double wakeUps(const char* what, pid_t pid, std::chrono::seconds time) {
    constexpr auto step = 50ms;
    constexpr int moment = 6;  // steps
    const auto before = threadsOf(pid);
    long known = 0;
    for (const auto& [id, use] : before) known += use.wakeUps;
    int moments = 0;
    int quiet = moment;
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) {
        wait(step);
        long now = 0;
        for (const auto& [id, use] : threadsOf(pid)) now += use.wakeUps;
        if (now == known) {
            ++quiet;
            continue;
        }
        known = now;
        if (quiet >= moment) ++moments;
        quiet = 0;
    }
    reportThreads(what, before, threadsOf(pid), static_cast<double>(time.count()));
    std::fprintf(stderr, "  in %d moments\n", moments);
    const auto own = time / timerPeriod + time / passPeriod + 1;  // one may be at the edge
    return std::max(0.0, static_cast<double>(moments - own) / static_cast<double>(time.count()));
}

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
