#include "Quorvi/platform/linux/posix/PosixFileStore.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <array>
#include <chrono>
#include <set>

#include "tests/support/TestFolder.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

class PosixFileStoreTest : public testing::Test {
protected:
    void replace(const fs::path& name, std::string_view content, const fs::path& previous = {}) {
        const std::array parts{content.substr(0, 1), content.substr(1)};
        store.replace(name, parts, previous);
    }
    std::set<std::string> names() const {
        std::set<std::string> result;
        for (const auto& entry : fs::directory_iterator(folder))
            result.insert(entry.path().filename());
        return result;
    }

    const TestFolder parent;
    const fs::path folder = parent.path() / "a" / "b";
    const fs::path file = folder / "file";
    PosixFileStore store;
};

TEST_F(PosixFileStoreTest, KeepsTheGenerationBeforeTheLastChange) {
    EXPECT_EQ(store.read(file), std::nullopt);
    for (const auto* content : {"first", "second", "third", "third", "last"})
        replace(file, content, "file.previous");
    EXPECT_EQ(store.read(file), "last");
    EXPECT_EQ(store.read(folder / "file.previous"), "third");
    EXPECT_EQ(names(), (std::set<std::string>{"file", "file.previous"}));
}

TEST_F(PosixFileStoreTest, FollowsALink) {
    replace(folder / "real", "old");
    const auto link = parent.path() / "link";
    fs::create_symlink(folder / "real", link);
    replace(link, "new", "real.previous");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(contentOf(folder / "real"), "new");
    EXPECT_EQ(contentOf(folder / "real.previous"), "old");
}

TEST_F(PosixFileStoreTest, RemovesDraftsOfDeadWritersOnly) {
    replace(file, "old");
    for (const auto* name : {".file.draft-aaaaaa", ".file.draft-bbbbbb", "file.backup"})
        std::ofstream(folder / name) << "half";
    const int writer = ::open((folder / ".file.draft-bbbbbb").c_str(), O_RDWR);
    ASSERT_EQ(::flock(writer, LOCK_EX), 0);
    replace(file, "new");
    EXPECT_EQ(names(), (std::set<std::string>{"file", "file.backup", ".file.draft-bbbbbb"}));
    ::close(writer);
    replace(file, "newer");
    EXPECT_EQ(names(), (std::set<std::string>{"file", "file.backup"}));
}

TEST_F(PosixFileStoreTest, RefusesFoldersAndPipes) {
    fs::create_directories(folder / "folder");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const auto* name : {"folder", "pipe", "pipe/file"})
        EXPECT_THROW(store.read(folder / name), std::system_error) << name;
    EXPECT_THROW(replace(folder / "folder", "content"), std::system_error);
    EXPECT_THROW(replace(folder / "pipe/file", "content"), std::system_error);
    EXPECT_EQ(names(), (std::set<std::string>{"folder", "pipe"}));
}

}  // namespace
}  // namespace quorvi::test
