#pragma once

#include <signal.h>
#include <sys/resource.h>

namespace quorvi::test {

// While it lives, this process can't write more than a few bytes into any file: the same failure in
// the middle of a write as on a disk that is full, also for root.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes = 16) : handler_(::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit little{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &little);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        ::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*handler_)(int);
    rlimit before_{};
};

}  // namespace quorvi::test
