#include <gtest/gtest.h>

#include "Quorvi/platform/linux/folder/FolderCloudDatabase.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "tests/support/TestFolder.h"
#include "tests/support/contracts/CloudContract.h"

namespace quorvi::test {
namespace {

struct FolderRig : CloudRig {
    std::array<CloudDatabase*, 3> databases() override { return {&first_, &second_, &stranger_}; }
    bool runUntil(const std::function<bool()>& done) override { return until(loop_, done); }

    FolderCloudDatabase::Place place(const char* folder, const char* device) {
        return {home_.path() / folder, home_.path() / "devices" / device};
    }

    TestFolder home_;
    LoopScheduler loop_;
    SerialExecutor executors_[3]{SerialExecutor("first"), SerialExecutor("second"),
                                 SerialExecutor("stranger")};
    FolderCloudDatabase first_{loop_, executors_[0], place("shared", "first")};
    FolderCloudDatabase second_{loop_, executors_[1], place("shared", "second")};
    FolderCloudDatabase stranger_{loop_, executors_[2], place("elsewhere", "stranger")};
};

INSTANTIATE_TEST_SUITE_P(Folder, CloudContract, testing::Values(makeCloudRig<FolderRig>));

}  // namespace
}  // namespace quorvi::test
