#include "Quorvi/transfer/UserData.h"

#include <gtest/gtest.h>

#include "QuorviCore/transfer/ExportDocument.h"
#include "tests/fakes/FakeCloudDatabase.h"
#include "tests/support/Written.h"
#include "tests/sync/SyncMachine.h"

namespace quorvi::test {
namespace {

using Texts = std::vector<std::string>;

// Two machines of one user that don't know of each other.
class UserDataTest : public testing::Test {
protected:
    void settle() { clock.advance(5s); }
    static UserData dataOf(SyncMachine& machine, UserData::Access access) {
        return UserData({machine.files, machine.journals, machine.preferences, machine.scheduler,
                         "history.json", SyncMachine::archiveFile},
                        access);
    }
    static std::vector<SyncItem> exported(SyncMachine& machine) {
        const auto document =
            written(ExportEncoder(dataOf(machine, UserData::Access::reading).items()));
        return decodeExport(document, [](std::size_t, std::size_t) {});
    }
    static UserData::Counts import(SyncMachine& machine, const std::vector<SyncItem>& items) {
        auto data = dataOf(machine, UserData::Access::changing);
        const auto counts = data.merge(items);
        data.save();
        return counts;
    }
    void run(SyncMachine& machine) {
        machine.start();
        settle();
    }
    void quit(SyncMachine& machine) {
        settle();
        machine.quit();
    }
    void mend(SyncMachine& machine, const std::string& id, const std::string& replacement) {
        machine.corrections->save(
            {.id = id, .original = "quorvy", .replacement = replacement, .updatedAt = {1}});
    }

    VirtualScheduler clock;
    FakeCloudServer oneServer{clock}, otherServer{clock};
    FakeCloudDatabase oneCloud{clock, oneServer, "ada"}, otherCloud{clock, otherServer, "ada"};
    SyncMachine one{clock, oneCloud}, other{clock, otherCloud};
    const std::string rule = "00000000-0000-4000-8000-000000000001";
};

TEST_F(UserDataTest, MergesByStamps) {
    run(one);
    one.dictate("dropped", 40);
    one.dictate("deleted");
    one.dictate("kept");
    mend(one, rule, "old");
    one.model->setVocabulary("old");
    quit(one);
    const auto backup = exported(one);

    run(one);
    one.history->remove(one.history->records()[1].id);
    one.history->setRetention(TranscriptRetention::thirtyDays);
    mend(one, rule, "new");
    one.model->setMode(DictationMode::toggle);
    quit(one);
    const auto archive = one.files.files[SyncMachine::archiveFile];

    // A backup brings nothing back that was deleted, and no older version.
    import(one, backup);
    run(one);
    EXPECT_EQ(one.texts(), (Texts{"kept", "-"}));
    EXPECT_EQ(one.rules(), (Texts{"quorvy>new"}));
    EXPECT_EQ(one.model->mode(), DictationMode::toggle);
    quit(one);

    // Newer versions are taken over with their stamps, so that still newer ones beat them, and they
    // are sent.
    run(other);
    other.dictate("other");
    quit(other);
    auto items = exported(other);
    for (auto& item : items)
        if (item.id == "setting:vocabulary")
            item = SyncItem(item.id, LocalSnapshot::encode(std::string("newer")), 5'000'000'000'000,
                            "elsewhere", false);
    const auto counts = import(one, items);
    EXPECT_EQ(counts.dictations, 1u);
    EXPECT_EQ(counts.settings, 1u);
    const auto files = one.files.files;
    import(one, items);
    EXPECT_EQ(one.files.files, files) << "once more";
    run(one);
    EXPECT_EQ(one.model->vocabulary(), "newer");
    EXPECT_EQ(one.texts().front(), "other");
    const auto* item = one.sync->archive()->ledger().item("setting:vocabulary");
    ASSERT_TRUE(item);
    EXPECT_EQ(item->revision, 5'000'000'000'000);
    EXPECT_EQ(one.sync->pendingCount(), 0u);
    const auto sent = oneServer.record("ada", {"QuorviAccount", "setting:vocabulary"});
    ASSERT_TRUE(sent);
    EXPECT_EQ(SyncItem::decode(textOf(*sent->payload))->revision, 5'000'000'000'000);
}

TEST_F(UserDataTest, ChangesNothingAfterAnError) {
    run(one);
    one.dictate("one");
    quit(one);
    const auto backup = exported(one);
    run(other);
    other.dictate("two");
    quit(other);

    auto damaged = other.files.files;
    for (const auto* file : {"history.json", SyncMachine::archiveFile}) {
        other.files.files[file] = "{";
        EXPECT_THROW(import(other, backup), QuorviError);
        EXPECT_THROW(exported(other), QuorviError);
        EXPECT_EQ(other.files.files[file], "{");
        other.files.files = damaged;
    }
    other.files.full = true;
    EXPECT_THROW(import(other, backup), QuorviError);
    other.files.full = false;
    EXPECT_EQ(other.files.files, damaged);
    import(other, backup);
    run(other);
    EXPECT_EQ(other.texts().size(), 2u);
}

}  // namespace
}  // namespace quorvi::test
