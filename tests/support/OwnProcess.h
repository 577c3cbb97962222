#pragma once

#include <sys/types.h>

#include <functional>

namespace quorvi::test {

// Another process that runs `work`, which may report numbers above 0. To be started while this
// process has one thread. Killed with its owner.
class ForkedProcess {
public:
    using Report = std::function<void(int)>;

    explicit ForkedProcess(const std::function<void(const Report&)>& work);
    ~ForkedProcess();
    ForkedProcess(const ForkedProcess&) = delete;
    ForkedProcess& operator=(const ForkedProcess&) = delete;

    // Waits for the next number; 0 if the process has ended.
    int nextReport() const;
    void kill();
    // Waits for the end; returns the status as waitpid() does.
    int wait();

private:
    pid_t pid_ = -1;
    int reports_ = -1;
};

// Runs checks in a process of their own, whose mounts and limits and user may be changed.
void inAProcessOfItsOwn(const std::function<void()>& checks);

// Gives up what lets root pass by the permissions of files.
void obeyPermissions();

}  // namespace quorvi::test
