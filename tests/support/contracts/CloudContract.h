#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/cloud/CloudDesk.h"

// What every cloud database promises, checked against the fake and the real ones. Instantiated with
// rigs, which supply the machines with an empty cloud: two of one account, and a stranger's of
// another account, on the same server if there is one.
namespace quorvi::test {

struct CloudRig : CloudDesk {
    virtual std::array<CloudDatabase*, 3> databases() = 0;
};
using MakeCloudRig = std::unique_ptr<CloudRig> (*)();
template <class Rig>
std::unique_ptr<CloudRig> makeCloudRig() {
    return std::make_unique<Rig>();
}

class CloudContract : public testing::TestWithParam<MakeCloudRig>, protected CloudDesk {
protected:
    static constexpr auto zone = "Notes";

    // What a machine has fetched, and the token for what comes next.
    struct Copy {
        std::map<std::string, CloudRecord> records;
        std::map<std::string, int> seen;  // how often each record came
        std::set<std::string> texts;      // of all versions that came
        std::string token;
        int pages = 0;
    };

    bool runUntil(const std::function<bool()>& condition) override {
        return rig->runUntil(condition);
    }
    void makeZone(CloudDatabase& database, const std::string& name = zone) {
        get(database.saveZone(name, {}));
    }
    std::vector<CloudSaveResult> save(CloudDatabase& database, std::vector<CloudRecord> records) {
        return get(database.saveRecords(std::move(records), {}));
    }
    // Saves one record, which must succeed. Returns it with its new tag.
    CloudRecord saved(CloudDatabase& database, CloudRecord one) {
        auto results = save(database, {std::move(one)});
        EXPECT_EQ(results.size(), 1u);
        if (results.empty()) return {};
        EXPECT_FALSE(results[0].error) << results[0].error->what();
        return results[0].record;
    }
    // Brings the copy up to date.
    void fetch(CloudDatabase& database, Copy& copy, const std::string& from = zone) {
        for (bool more = true; more;) {
            auto page = get(database.recordChanges(from, copy.token, {}));
            ++copy.pages;
            for (auto& one : page.modified) {
                ++copy.seen[one.id.name];
                copy.texts.insert(textOfRecord(one));
                copy.records.insert_or_assign(one.id.name, std::move(one));
            }
            for (const auto& id : page.deleted) copy.records.erase(id.name);
            copy.token = std::move(page.token);
            more = page.more;
            ASSERT_LT(copy.pages, 10'000) << "the pages never end";
        }
    }
    static std::string textOfRecord(const CloudRecord& one) {
        return one.payload ? std::string(textOf(*one.payload)) : "(none)";
    }

    const std::unique_ptr<CloudRig> rig = GetParam()();
    CloudDatabase& first = *rig->databases()[0];
    CloudDatabase& second = *rig->databases()[1];
    CloudDatabase& stranger = *rig->databases()[2];
};

TEST_P(CloudContract, KnowsItsAccountAndKeepsOthersOut) {
    for (auto* one : {&first, &second, &stranger})
        EXPECT_EQ(get(one->accountStatus({})), CloudAccountStatus::available);
    const auto user = get(first.userRecordName({}));
    EXPECT_FALSE(user.empty());
    EXPECT_EQ(get(second.userRecordName({})), user);
    EXPECT_NE(get(stranger.userRecordName({})), user);

    makeZone(first);
    saved(first, noteRecord("letter", "private"));
    EXPECT_TRUE(get(stranger.zoneChanges("", {})).modified.empty());
    EXPECT_EQ(code(stranger.recordChanges(zone, "", {})), cloudErrorCode::zoneNotFound);
    // The stranger's zone of the same name is another one.
    makeZone(stranger);
    EXPECT_EQ(code(stranger.fetchRecord({zone, "letter"}, {})), cloudErrorCode::unknownItem);
    saved(stranger, noteRecord("letter", "of another"));
    get(stranger.deleteZone(zone, {}));
    Copy copy;
    fetch(second, copy);
    EXPECT_EQ(textOfRecord(copy.records["letter"]), "private");
}

TEST_P(CloudContract, MakesAndDeletesZonesAndTellsOfThem) {
    using Names = std::vector<std::string>;
    auto changes = get(second.zoneChanges("", {}));
    EXPECT_EQ(changes.modified, Names{});

    makeZone(first);
    makeZone(first);
    makeZone(first, "Ζώνη 'x\" / \\ 😀");
    changes = get(second.zoneChanges(changes.token, {}));
    std::sort(changes.modified.begin(), changes.modified.end());
    EXPECT_EQ(changes.modified, (Names{zone, "Ζώνη 'x\" / \\ 😀"}));
    EXPECT_EQ(changes.deleted, Names{});
    changes = get(second.zoneChanges(changes.token, {}));
    EXPECT_EQ(changes.modified, Names{}) << "nothing has happened since";

    saved(first, noteRecord("a", "1"));
    changes = get(second.zoneChanges(changes.token, {}));
    EXPECT_EQ(changes.modified, Names{zone});

    get(first.deleteZone(zone, {}));
    changes = get(second.zoneChanges(changes.token, {}));
    EXPECT_EQ(changes.modified, Names{});
    EXPECT_EQ(changes.deleted, Names{zone});
    const auto refused = save(second, {noteRecord("b", "2")});
    ASSERT_TRUE(refused.size() == 1 && refused[0].error);
    EXPECT_EQ(refused[0].error->code(), cloudErrorCode::zoneNotFound);
}

TEST_P(CloudContract, KeepsRecordsByteForByteUnderAnyName) {
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte) everyByte.push_back(static_cast<char>(byte));
    std::vector<CloudRecord> records;
    for (const auto* name : {"history:6F9619FF-8B86-D011-B42D-00CF4FC964FF", "Name", "name", "a/b",
                             "..", ".", " ", "tab\tand\nline", "'; drop table records; --",
                             "\"quoted\" \\ %s $1", "Ωμέγα 😀", "caf\u00E9", "cafe\u0301", "*?[x]"})
        records.push_back(noteRecord(name, everyByte + name));
    records.push_back(noteRecord(std::string(255, 'n'), ""));
    records.push_back(noteRecord("big", std::string(1 << 20, '\0') + "end"));
    records.push_back({{zone, "no payload"}, "Täg", std::nullopt, ""});

    makeZone(first);
    const auto results = save(first, records);
    ASSERT_EQ(results.size(), records.size());
    Copy copy;
    fetch(second, copy);
    EXPECT_EQ(copy.records.size(), records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        auto expected = records[i];
        EXPECT_FALSE(results[i].error) << expected.id.name;
        EXPECT_FALSE(results[i].record.changeTag.empty());
        expected.changeTag = results[i].record.changeTag;
        EXPECT_EQ(results[i].record, expected);
        EXPECT_TRUE(copy.records[expected.id.name] == expected) << expected.id.name;
        EXPECT_TRUE(get(second.fetchRecord(expected.id, {})) == expected);
    }
}

TEST_P(CloudContract, RefusesASaveThatDoesNotNameTheVersionItReplaces) {
    makeZone(first);
    const auto one = saved(first, noteRecord("x", "1"));
    const auto two = saved(second, noteRecord("x", "2", one.changeTag));
    EXPECT_NE(two.changeTag, one.changeTag);

    // In one batch: an outdated tag, no tag for an existing record, a tag of none, and a valid
    // save.
    const auto results =
        save(first, {noteRecord("x", "stale", one.changeTag), noteRecord("x", "new"),
                     noteRecord("y", "gone", one.changeTag), noteRecord("z", "good")});
    ASSERT_EQ(results.size(), 4u);
    for (int i : {0, 1}) {
        ASSERT_TRUE(results[i].error) << i;
        EXPECT_EQ(results[i].error->code(), cloudErrorCode::serverRecordChanged);
        ASSERT_TRUE(results[i].error->serverRecord());
        EXPECT_TRUE(*results[i].error->serverRecord() == two);
        EXPECT_EQ(results[i].record.id, two.id);
    }
    ASSERT_TRUE(results[2].error);
    EXPECT_EQ(results[2].error->code(), cloudErrorCode::unknownItem);
    EXPECT_FALSE(results[3].error);
    EXPECT_EQ(textOfRecord(get(second.fetchRecord({zone, "x"}, {}))), "2");

    saved(first, noteRecord("x", "3", two.changeTag));
    EXPECT_EQ(textOfRecord(get(second.fetchRecord({zone, "x"}, {}))), "3");
}

// Two saves of one record at the same time: with a server one of them wins. Without one both may
// succeed, and then each machine fetches the other's version, perhaps before its own.
TEST_P(CloudContract, LosesNeitherOfTwoSavesAtOnce) {
    makeZone(first);
    const auto base = saved(first, noteRecord("x", "base"));
    get(second.fetchRecord(base.id, {}));
    Copy ofFirst, ofSecond;
    fetch(first, ofFirst);
    fetch(second, ofSecond);

    using Saving = Running<std::vector<CloudSaveResult>>;
    Saving one(first.saveRecords({noteRecord("x", "one", base.changeTag)}, {}));
    Saving two(second.saveRecords({noteRecord("x", "two", base.changeTag)}, {}));
    ASSERT_TRUE(ends(one) && ends(two));
    ASSERT_TRUE(one.value() && two.value()) << one.failure() << two.failure();
    const auto &resultOne = one.value()->at(0), &resultTwo = two.value()->at(0);
    EXPECT_TRUE(!resultOne.error || !resultTwo.error);
    for (const auto* result : {&resultOne, &resultTwo})
        if (result->error) {
            EXPECT_EQ(result->error->code(), cloudErrorCode::serverRecordChanged);
            EXPECT_TRUE(result->error->serverRecord());
        }
    if (!resultOne.error) {
        fetch(second, ofSecond);
        EXPECT_TRUE(ofSecond.texts.contains("one"));
    }
    if (!resultTwo.error) {
        fetch(first, ofFirst);
        EXPECT_TRUE(ofFirst.texts.contains("two"));
    }
}

TEST_P(CloudContract, FetchesEachChangeOnceFromAToken) {
    makeZone(first);
    makeZone(first, "Other");
    std::vector<CloudRecord> records;
    for (int i = 0; i < 5; ++i) records.push_back(noteRecord("r" + std::to_string(i), "old"));
    const auto results = save(first, records);
    saved(first, noteRecord("elsewhere", "x", "", "Other"));

    Copy copy;
    fetch(second, copy);
    using Seen = std::map<std::string, int>;
    EXPECT_EQ(copy.seen, (Seen{{"r0", 1}, {"r1", 1}, {"r2", 1}, {"r3", 1}, {"r4", 1}}));

    copy.seen.clear();
    fetch(second, copy);
    EXPECT_EQ(copy.seen, Seen{});

    // After two saves of one record its last version comes, and perhaps the one before.
    auto twice = saved(first, noteRecord("r1", "newer", results.at(1).record.changeTag));
    twice = saved(first, noteRecord("r1", "newest", twice.changeTag));
    saved(first, noteRecord("r5", "added"));
    fetch(second, copy);
    EXPECT_EQ(copy.seen.size(), 2u);
    EXPECT_TRUE(copy.records["r1"] == twice);
    EXPECT_EQ(textOfRecord(copy.records["r5"]), "added");

    // A machine that starts over gets every record once, in its latest version.
    Copy anew;
    fetch(second, anew);
    EXPECT_EQ(anew.seen, (Seen{{"r0", 1}, {"r1", 1}, {"r2", 1}, {"r3", 1}, {"r4", 1}, {"r5", 1}}));
    EXPECT_TRUE(anew.records == copy.records);
}

TEST_P(CloudContract, RefusesATokenOfAZoneThatWasMadeAgainAndAnyOther) {
    makeZone(first);
    const auto before = saved(first, noteRecord("x", "before"));
    Copy copy;
    fetch(second, copy);
    const auto zones = get(second.zoneChanges("", {}));

    get(first.deleteZone(zone, {}));
    makeZone(first);
    saved(first, noteRecord("y", "after"));
    EXPECT_EQ(code(second.recordChanges(zone, copy.token, {})), cloudErrorCode::changeTokenExpired);
    for (const auto* token : {"nonsense", "\xFF\x01", "999999999999999999999999"}) {
        EXPECT_EQ(code(second.recordChanges(zone, token, {})), cloudErrorCode::changeTokenExpired);
        EXPECT_EQ(code(second.zoneChanges(token, {})), cloudErrorCode::changeTokenExpired);
    }
    EXPECT_EQ(get(second.zoneChanges(zones.token, {})).modified, std::vector<std::string>{zone});
    Copy anew;
    fetch(second, anew);
    EXPECT_EQ(anew.records.size(), 1u);
    EXPECT_TRUE(anew.records.contains("y"));
    const auto refused = save(second, {noteRecord("x", "old tag", before.changeTag)});
    ASSERT_TRUE(refused.size() == 1 && refused[0].error);
    EXPECT_EQ(refused[0].error->code(), cloudErrorCode::unknownItem);
    saved(second, noteRecord("x", "new"));
}

TEST_P(CloudContract, PushesToTheOtherMachine) {
    makeZone(first);
    get(second.zoneChanges("", {}));
    get(second.saveSubscription("changes", {}));
    int told = 0;
    auto subscription = second.onRemoteChange([&] { ++told; });
    Copy copy;
    fetch(second, copy);
    for (int i = 0; i < 3; ++i) {
        const auto before = told;
        saved(first, noteRecord("r" + std::to_string(i), "pushed"));
        EXPECT_TRUE(rig->runUntil([&] { return told > before; })) << "no push " << i;
        fetch(second, copy);
        EXPECT_TRUE(copy.records.contains("r" + std::to_string(i)));
    }
}

TEST_P(CloudContract, CarriesABigBatchInPages) {
    makeZone(first);
    std::vector<CloudRecord> records;
    for (int i = 0; i < 4000; ++i)
        records.push_back(noteRecord("item:" + std::to_string(i), std::string(600, '.')));
    std::map<std::string, CloudRecord> all;
    for (auto& result : save(first, std::move(records))) {
        ASSERT_FALSE(result.error) << result.error->what();
        all.emplace(result.record.id.name, std::move(result.record));
    }
    Copy copy;
    fetch(second, copy);
    EXPECT_GT(copy.pages, 1);
    EXPECT_TRUE(copy.records == all);
    EXPECT_TRUE(std::all_of(copy.seen.begin(), copy.seen.end(),
                            [](const auto& one) { return one.second == 1; }));
}

TEST_P(CloudContract, StopsWhenAskedAndGoesOnAfterwards) {
    makeZone(first);
    std::stop_source stopped;
    stopped.request_stop();
    Running<CloudRecordChanges> before(first.recordChanges(zone, "", stopped.get_token()));
    ASSERT_TRUE(ends(before));
    EXPECT_TRUE(before.cancelled());

    std::stop_source stop;
    std::vector<CloudRecord> records;
    for (int i = 0; i < 200; ++i) records.push_back(noteRecord(std::to_string(i), "x"));
    Running<std::vector<CloudSaveResult>> saving(first.saveRecords(records, stop.get_token()));
    Running<CloudRecordChanges> fetching(first.recordChanges(zone, "", stop.get_token()));
    {
        // Destroyed while it runs: it must not touch anything any more.
        Running<CloudRecordChanges> dropped(first.recordChanges(zone, "", {}));
    }
    stop.request_stop();
    ASSERT_TRUE(ends(saving) && ends(fetching));
    EXPECT_TRUE(saving.cancelled() || saving.value()) << saving.failure();
    EXPECT_TRUE(fetching.cancelled() || fetching.value()) << fetching.failure();
    // A stopped save may have happened or not, but no record is half saved.
    saved(first, noteRecord("afterwards", "y"));
    Copy copy;
    fetch(second, copy);
    EXPECT_EQ(textOfRecord(copy.records["afterwards"]), "y");
    for (const auto& [name, one] : copy.records)
        EXPECT_EQ(textOfRecord(one), name == "afterwards" ? "y" : "x");
}

}  // namespace quorvi::test
