#include "Quorvi/platform/linux/posix/PosixRecordingFiles.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string>

#include "QuorviCore/Error.h"
#include "tests/support/TestFolder.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

class PosixRecordingFilesTest : public testing::Test {
protected:
    // The sentence of the refusal, empty if there is none.
    std::string refusal() {
        try {
            files.prepare();
        } catch (const QuorviError& error) {
            return error.what();
        }
        return {};
    }
    const TestFolder root;
    const fs::path folder = root.path() / "recordings";
    PosixRecordingFiles files{folder};
};

TEST_F(PosixRecordingFilesTest, KeepsARecordingOutOfCoreDumpsAndSwap) {
    const Bytes audio(100'000, 7);
    const auto kept = files.keepInMemory(audio);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->read(), audio);
    EXPECT_FALSE(files.keepInMemory({}));
    // "dd": not dumped; "lo": locked, which the address sanitizer prevents.
#ifdef __SANITIZE_ADDRESS__
    const std::string flags[] = {" dd"};
#else
    const std::string flags[] = {" dd", " lo"};
#endif
    std::ifstream maps("/proc/self/smaps");
    std::string size;
    int found = 0;
    for (std::string line; std::getline(maps, line);) {
        if (line.starts_with("Size:")) size = line;
        // The recording's pages, 100 kB of them.
        found += line.starts_with("VmFlags:") && size.find(" 100 kB") != size.npos &&
                 std::ranges::all_of(
                     flags, [&](const auto& flag) { return line.find(flag) != line.npos; });
    }
    EXPECT_EQ(found, 1);
}

TEST_F(PosixRecordingFilesTest, ARecordingThatIsTakenOutHasNoNameAndIsReadWhole) {
    EXPECT_EQ(refusal(), "");
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    const auto file = files.newFile();
    EXPECT_NE(file, files.newFile());
    std::ofstream writer(file);
    const auto taken = files.takeOut(file);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_TRUE(taken->read().empty());
    const std::string sound(100'000, 's');
    writer << sound << std::flush;
    EXPECT_EQ(textOf(taken->read()), sound);
    EXPECT_THROW(files.takeOut(file), QuorviError);
}

TEST_F(PosixRecordingFilesTest, AFolderOfAnotherUserOrALinkIsRefusedAndLeftAlone) {
    const auto notOwn = say::recordingFolderNotOwn(folder.string()).english();
    const auto elsewhere = root.path() / "elsewhere";
    fs::create_directory(elsewhere);
    fs::create_directory_symlink(elsewhere, folder);
    std::ofstream(elsewhere / "kept.m4a") << "kept";
    EXPECT_EQ(refusal(), notOwn);
    files.removeLeftOver();
    EXPECT_TRUE(fs::exists(elsewhere / "kept.m4a"));
    fs::remove(folder);
    std::ofstream(folder) << "a file";
    EXPECT_EQ(refusal(), notOwn);
    fs::remove(folder);
    fs::create_directory(folder);
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(folder.c_str(), 12345, 12345), 0);
        EXPECT_EQ(refusal(), notOwn);
        ASSERT_EQ(::chown(folder.c_str(), 0, 0), 0);
    }
    fs::permissions(folder, fs::perms::all);
    EXPECT_EQ(refusal(), "");
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
}

TEST_F(PosixRecordingFilesTest, OnlyLeftOverRecordingsAreRemoved) {
    files.removeLeftOver();
    const auto former = root.path() / "former";
    for (const auto& place : {folder, former}) fs::create_directory(place);
    for (const char* name : {"old.m4a", "notes.txt", "m4a"}) std::ofstream(folder / name) << "x";
    std::ofstream(former / "old.m4a") << "x";
    PosixRecordingFiles(folder, former).removeLeftOver();
    EXPECT_FALSE(fs::exists(former));
    for (const char* name : {"old.m4a", "notes.txt", "m4a"})
        EXPECT_EQ(fs::exists(folder / name), name != std::string_view("old.m4a")) << name;
}

}  // namespace
}  // namespace quorvi::test
