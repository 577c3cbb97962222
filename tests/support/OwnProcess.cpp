#include "tests/support/OwnProcess.h"

#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <utility>

namespace quorvi::test {

ForkedProcess::ForkedProcess(const std::function<void(const Report&)>& work) {
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    pid_ = ::fork();
    if (pid_ == 0) {
        work([&ends](int number) {
            if (::write(ends[1], &number, sizeof number) != sizeof number) ::_exit(1);
        });
        ::_exit(0);
    }
    ::close(ends[1]);
    reports_ = ends[0];
}

ForkedProcess::~ForkedProcess() {
    kill();
    ::close(reports_);
}

int ForkedProcess::nextReport() const {
    int number = 0;
    return ::read(reports_, &number, sizeof number) == sizeof number ? number : 0;
}

void ForkedProcess::kill() {
    if (pid_ < 0) return;
    ::kill(pid_, SIGKILL);
    wait();
}

int ForkedProcess::wait() {
    int status = 0;
    ::waitpid(std::exchange(pid_, -1), &status, 0);
    return status;
}

void inAProcessOfItsOwn(const std::function<void()>& checks) {
    std::fflush(nullptr);
    ForkedProcess child([&](const auto&) {
        try {
            checks();
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
        }
        std::fflush(nullptr);
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    });
    EXPECT_EQ(child.wait(), 0);
}

void obeyPermissions() {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct none[2]{};
    ASSERT_EQ(syscall(SYS_capset, &header, none), 0);
}

}  // namespace quorvi::test
