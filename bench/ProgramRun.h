#pragma once

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

// What benchmarks of the whole program share.
namespace quorvi::bench {

using namespace std::chrono_literals;
using test::Process;

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

inline void wait(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

inline void expect(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "ProgramBench: %s\n", what);
    std::exit(1);
}

inline std::string quorvi(const std::string& command) {
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

inline void reportThreads(const char* what, const std::map<int, ThreadUse>& before,
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

inline double wakeUps(const char* what, pid_t pid, std::chrono::seconds time) {
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

}  // namespace quorvi::bench
