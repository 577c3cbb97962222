#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/support/FullDisk.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestFolder.h"

// What every store of the user's data promises on a real disk. A rig is one opened store, whose
// content is a number:
//   explicit Rig(const std::filesystem::path& folder);
//   bool isOpen();           false if the store could not read what it found
//   void put(int number);    changes the content; called with 1, 2, 3 …
//   bool save();             waits until the content is on the disk; false if it can't be saved
//   int number();            the content; 0 in a new store, -1 if parts of two contents are mixed
//   static constexpr auto file;                                         the name of its main file
//   static std::vector<std::string> damaged(const std::string& whole);  contents it can't read
namespace quorvi::test {

template <class Rig>
class DurabilityContract : public testing::Test {
protected:
    std::filesystem::path file() const { return folder / Rig::file; }
    std::set<std::string> names() const {
        std::set<std::string> all;
        for (const auto& one : std::filesystem::directory_iterator(folder))
            all.insert(one.path().filename());
        return all;
    }
    void keep(int number) const {
        Rig store(folder);
        store.put(number);
        EXPECT_TRUE(store.save());
    }
    void expectNumber(int number) const {
        Rig store(folder);
        EXPECT_TRUE(store.isOpen());
        EXPECT_EQ(store.number(), number);
    }
    // The store can't read its file, and neither changes nor replaces it.
    void expectUnreadable() const {
        Rig store(folder);
        EXPECT_FALSE(store.isOpen());
        store.put(2);
        store.save();
    }

    const TestFolder parent;
    const std::filesystem::path folder = parent.path() / "share" / "Quorvi";
};
TYPED_TEST_SUITE_P(DurabilityContract);

TYPED_TEST_P(DurabilityContract, HoldsWhatWasSavedWhenTheProgramIsKilledAtAnyMoment) {
    std::mt19937 random(7);
    int saved = 0;
    int found = 0;
    for (int round = 0; round < 40 && !this->HasFailure(); ++round) {
        ForkedProcess program([&](const ForkedProcess::Report& report) {
            TypeParam store(this->folder);
            for (int number = store.number() + 1;; ++number) {
                store.put(number);
                // The numbers between are written in the background, or with the next.
                if (number % 3 != 0) continue;
                if (!store.save()) return;
                report(number);
            }
        });
        for (auto reports = random() % 4; reports > 0; --reports) {
            saved = program.nextReport();
            ASSERT_GT(saved, 0);
        }
        ::usleep(random() % 4000);
        program.kill();
        while (const int more = program.nextReport()) saved = more;

        TypeParam again(this->folder);
        ASSERT_TRUE(again.isOpen()) << "round " << round;
        ASSERT_GE(again.number(), saved) << "round " << round;
        ASSERT_LE(again.number(), std::max(saved, found) + 3) << "round " << round;
        found = again.number();
    }
    EXPECT_GT(saved, 60);
}

TYPED_TEST_P(DurabilityContract, KeepsTheOldContentWhenTheDiskIsFullAndSavesOnceThereIsRoom) {
    const auto crashed = this->parent.path() / "crashed";
    {
        TypeParam store(this->folder);
        store.put(1);
        ASSERT_TRUE(store.save());
        const auto names = this->names();
        {
            const FullDisk full;
            store.put(2);
            EXPECT_FALSE(store.save());
            EXPECT_FALSE(store.save()) << "with nothing new";
        }
        EXPECT_EQ(this->names(), names) << "a draft that failed is removed";
        std::filesystem::copy(this->folder, crashed, std::filesystem::copy_options::recursive);
        EXPECT_EQ(store.number(), 2);
        store.put(3);
        EXPECT_TRUE(store.save());
    }
    this->expectNumber(3);
    EXPECT_EQ(TypeParam(crashed).number(), 1);
}

TYPED_TEST_P(DurabilityContract, IsReadableByItsUserOnly) {
    const auto mask = ::umask(0);
    std::filesystem::create_directories(this->folder);
    this->keep(1);
    this->keep(2);
    ::umask(mask);
    const auto mode = [](const std::filesystem::path& path) {
        struct stat status{};
        EXPECT_EQ(::stat(path.c_str(), &status), 0);
        return status.st_mode & 07777;
    };
    EXPECT_EQ(mode(this->folder), 0700U);
    for (const auto& name : this->names()) EXPECT_EQ(mode(this->folder / name), 0600U) << name;
}

TYPED_TEST_P(DurabilityContract, LeavesAloneWhatItCannotRead) {
    this->keep(1);
    const auto whole = contentOf(this->file());
    for (const auto& content : TypeParam::damaged(whole)) {
        std::ofstream(this->file(), std::ios::binary) << content;
        this->expectUnreadable();
        EXPECT_EQ(contentOf(this->file()), content);
    }
    inAProcessOfItsOwn([&] {
        obeyPermissions();
        std::ofstream(this->file(), std::ios::binary) << whole;
        ::chmod(this->file().c_str(), 0000);
        this->expectUnreadable();
        ::chmod(this->file().c_str(), 0600);
        EXPECT_EQ(contentOf(this->file()), whole);
    });
    this->expectNumber(1);
    std::filesystem::remove(this->file());
    std::filesystem::create_directory(this->file());
    this->expectUnreadable();
    EXPECT_TRUE(std::filesystem::is_empty(this->file()));
}

TYPED_TEST_P(DurabilityContract, IsSavedOnceItsFolderCanBeMade) {
    inAProcessOfItsOwn([&] {
        obeyPermissions();
        ::chmod(this->parent.path().c_str(), 0500);
        TypeParam store(this->folder);
        EXPECT_TRUE(store.isOpen()) << "there is nothing yet";
        store.put(1);
        EXPECT_FALSE(store.save());
        ::chmod(this->parent.path().c_str(), 0700);
        store.put(2);
        EXPECT_TRUE(store.save());
    });
    this->expectNumber(2);
}

REGISTER_TYPED_TEST_SUITE_P(DurabilityContract, HoldsWhatWasSavedWhenTheProgramIsKilledAtAnyMoment,
                            KeepsTheOldContentWhenTheDiskIsFullAndSavesOnceThereIsRoom,
                            IsReadableByItsUserOnly, LeavesAloneWhatItCannotRead,
                            IsSavedOnceItsFolderCanBeMade);

}  // namespace quorvi::test
