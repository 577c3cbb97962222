#pragma once

#include <dirent.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

// Resources used by another process, from /proc.
namespace quorvi::bench {

struct ThreadUse {
    std::string name;
    long wakeUps = 0;  // voluntary context switches
    double processorSeconds = 0;
};

// By thread id; without threads that have ended.
inline std::map<int, ThreadUse> threadsOf(pid_t pid) {
    std::map<int, ThreadUse> threads;
    const auto folder = "/proc/" + std::to_string(pid) + "/task";
    std::error_code ended;
    for (const auto& task : std::filesystem::directory_iterator(folder, ended)) {
        ThreadUse use;
        std::ifstream comm(task.path() / "comm");
        std::getline(comm, use.name);
        double nanoseconds = 0;
        std::ifstream(task.path() / "schedstat") >> nanoseconds;
        use.processorSeconds = nanoseconds / 1e9;
        std::ifstream status(task.path() / "status");
        for (std::string key; status >> key;)
            if (key == "voluntary_ctxt_switches:") status >> use.wakeUps;
        threads.emplace(std::stoi(task.path().filename()), use);
    }
    return threads;
}

inline double processorSeconds(pid_t pid) {
    double sum = 0;
    for (const auto& [id, use] : threadsOf(pid)) sum += use.processorSeconds;
    return sum;
}

struct MemoryUse {
    double resident = 0;      // all in megabytes
    double proportional = 0;  // shared memory divided among its users
    double anonymous = 0;     // of the process alone
};

inline MemoryUse memoryOf(pid_t pid) {
    MemoryUse memory;
    std::ifstream smaps("/proc/" + std::to_string(pid) + "/smaps_rollup");
    std::string line, key;
    std::getline(smaps, line);
    for (double kilobytes = 0; smaps >> key >> kilobytes; std::getline(smaps, line)) {
        const double megabytes = kilobytes * 1024 / 1e6;
        if (key == "Rss:") memory.resident = megabytes;
        if (key == "Pss:") memory.proportional = megabytes;
        if (key == "Anonymous:") memory.anonymous = megabytes;
    }
    return memory;
}

}  // namespace quorvi::bench
