// Strings in the cold memory, with its real file.

#include "QuorviCore/base/ColdMemory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <thread>
#include <vector>

#include "Quorvi/platform/linux/posix/ColdFile.h"
#include "tests/support/TestFolder.h"

namespace quorvi {
namespace {

std::string textNumber(std::size_t n) {
    return std::to_string(n) + std::string(n % 700, 'x');
}

// What the files without a name in the folder take on the disk.
std::int64_t bytesOnDisk(const std::filesystem::path& folder) {
    std::int64_t bytes = 0;
    for (const auto& each : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code closed;
        const auto target = std::filesystem::read_symlink(each.path(), closed).string();
        struct stat status{};
        if (target.starts_with(folder.string()) && ::stat(each.path().c_str(), &status) == 0)
            bytes += status.st_blocks * 512;
    }
    return bytes;
}

// How much of these files is in this process's memory.
std::int64_t bytesResident(const std::filesystem::path& folder) {
    std::int64_t bytes = 0;
    bool isOfTheFolder = false;
    std::ifstream smaps("/proc/self/smaps");
    for (std::string line; std::getline(smaps, line);) {
        if (line.find('-') < line.find(':'))
            isOfTheFolder = line.find(folder.string()) != line.npos;
        else if (isOfTheFolder && line.starts_with("Rss:"))
            bytes += std::stoll(line.substr(4)) * 1024;
    }
    return bytes;
}

TEST(ColdMemory, KeepsStringsOutOfTheProcessAndFreesTheirPlaceOnTheDisk) {
    constexpr std::size_t count = 50'000;
    const test::TestFolder folder;
    EXPECT_EQ(ColdStrings().keep("without a file"), "without a file");
    static auto& pages = *new ColdFile(folder.path());
    ColdMemory::use(pages);
    {
        ColdStrings cold;
        std::vector<SharedString> few;
        for (int n = 0; n < 100; ++n) few.push_back(cold.keep(std::string(20'000, 'z')));
        ColdMemory::giveBack();
        EXPECT_EQ(bytesOnDisk(folder.path()), 0);
        EXPECT_EQ(few.front(), few.back());
    }

    // While one thread writes, others read what it has written.
    std::vector<SharedString> kept[2];
    const auto fill = [](std::vector<SharedString>& strings) {
        ColdStrings cold;
        for (std::size_t n = 0; n < count; ++n) {
            strings.push_back(cold.keep(textNumber(n)));
            const auto copy = strings[n / 2];
            ASSERT_EQ(copy, textNumber(n / 2));
        }
    };
    std::thread other(fill, std::ref(kept[0]));
    fill(kept[1]);
    other.join();
    ColdMemory::giveBack();
    EXPECT_EQ(bytesResident(folder.path()), 0);
    for (const auto& strings : kept)
        for (std::size_t n = 0; n < count; ++n) ASSERT_EQ(strings[n], textNumber(n));
    EXPECT_GT(bytesResident(folder.path()), 30'000'000);
    ColdMemory::giveBack();
    EXPECT_EQ(bytesResident(folder.path()), 0);
    EXPECT_EQ(ColdStrings().keep(""), "");
    EXPECT_EQ(ColdStrings().keep(std::string(1 << 20, 'y')), std::string(1 << 20, 'y'));

    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    EXPECT_GT(bytesOnDisk(folder.path()), 30'000'000);
    kept[0].clear();
    kept[1].resize(100);
    EXPECT_EQ(kept[1][99], textNumber(99));
    EXPECT_LT(bytesOnDisk(folder.path()), 1'000'000);
}

}  // namespace
}  // namespace quorvi
