#include "QuorviCore/sync/SyncLedger.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>

#include "QuorviCore/history/HistoryArchive.h"
#include "tests/support/Seeds.h"
#include "tests/support/reference/LiteralSync.h"

namespace quorvi::test {
namespace {

// Returns the dictation with this number, always the same.
DictationRecord dictation(unsigned number, std::optional<SharedString> text = "said") {
    DictationRecord record{.id = {}, .date = {1000.5 + number}, .text = std::move(text)};
    record.id.bytes[15] = static_cast<std::uint8_t>(number);
    record.appName = "Mail";
    return record;
}

std::string payloadOf(unsigned number, std::optional<SharedString> text = "said") {
    return encodeRecord(dictation(number, std::move(text)));
}

SyncItem live(std::string_view payload, std::int64_t revision, std::string_view device = "A",
              bool redacted = false, std::string_view id = "history:1") {
    return {id, SharedString(payload), revision, device, redacted};
}

SyncItem tombstone(std::int64_t revision) {
    return {"history:1", std::nullopt, revision, "A", true};
}

// Returns a version of one value from any device. A device never issues a revision twice, but a
// server may turn any version into a tombstone with the same stamp.
SyncItem randomVersion(std::mt19937& random, std::string_view id = "history:1") {
    static constexpr std::array devices{"A", "B", "b", ""};
    const std::int64_t revision = 1 + random() % 4;
    const std::string device = devices[random() % devices.size()];
    const auto kind = random() % 8;
    if (kind == 0) return {id, std::nullopt, revision, device, true};
    const auto text = std::to_string(revision) + device;
    const auto hasText = (std::hash<std::string>()(text) & 1) != 0;
    auto payload = payloadOf(1, hasText ? std::optional(SharedString(text)) : std::nullopt);
    return {id, SharedString(payload), revision, device, kind == 1 || !hasText};
}

TEST(SyncItem, MergesInAnyOrderGiveTheSame) {
    const unsigned seed = fromEnvironment("QUORVI_SEED", 1);
    std::mt19937 random(seed);
    for (unsigned round = 0; round < fromEnvironment("QUORVI_ROUNDS", 20'000); ++round) {
        const auto a = randomVersion(random), b = randomVersion(random), c = randomVersion(random);
        const auto trace = a.encoded() + "\n" + b.encoded() + "\n" + c.encoded() + "\nseed " +
                           std::to_string(seed) + " round " + std::to_string(round);
        const auto ab = a.merging(b);
        ASSERT_EQ(ab, b.merging(a)) << trace;
        ASSERT_EQ(ab.merging(c), a.merging(b.merging(c))) << trace;
        ASSERT_EQ(ab.merging(b), ab) << trace;
        ASSERT_EQ(ab.merging(ab), ab) << trace;
        ASSERT_EQ(ab.deleted(), a.deleted() || b.deleted()) << trace;
        ASSERT_EQ(ab.redacted, a.redacted || b.redacted) << trace;
        if (ab.redacted && ab.payload) {
            ASSERT_FALSE(decodeRecord(ab.payload->string()).text) << trace;
        }
    }
}

TEST(SyncItem, JsonIsCanonicalAndReadInAnyForm) {
    const auto item = live("pay\"load", 42, "DEV", true, "setting:\"x\"\n");
    const std::string json =
        R"({"device":"DEV","id":"setting:\"x\"\n","payload":"cGF5ImxvYWQ=","redacted":true,"revision":42})";
    EXPECT_EQ(item.encoded(), json);
    EXPECT_EQ(SyncItem::decode(json), item);
    const SyncItem gone("history:é", std::nullopt, -7, "D", false);
    EXPECT_EQ(gone.encoded(), R"({"device":"D","id":"history:é","redacted":false,"revision":-7})");
    EXPECT_EQ(SyncItem::decode(gone.encoded()), gone);

    for (
        const auto* same :
        {R"({"device":"D","id":"history:é","payload":null,"redacted":false,"revision":-7})",
         R"( {"revision" : -7.0, "redacted":false, "other":[{}], "id":"history:\u00e9","device":"D"} )"})
        EXPECT_EQ(SyncItem::decode(same), gone) << same;
    const std::string large(100'000, 'x');
    EXPECT_EQ(SyncItem::decode(live(large, 1).encoded()), live(large, 1));
    EXPECT_EQ(SyncItem::decode(live("", 1).encoded()), live("", 1)) << "empty is not deleted";
    for (const auto* wrong : {
             R"()",
             R"([])",
             R"({"device":"D","id":"i","redacted":false})",
             R"({"device":"D","id":"i","redacted":false,"revision":1.5})",
             R"({"device":"D","id":"i","redacted":false,"revision":9223372036854775808})",
             R"({"device":"D","id":"i","redacted":0,"revision":1})",
             R"({"device":"D","id":"i","payload":"QQ","redacted":false,"revision":1})",
             R"({"device":"D","id":"i","payload":"Q Q=","redacted":false,"revision":1})",
             R"({"device":"D","id":"i","payload":7,"redacted":false,"revision":1})",
             R"({"device":"D","id":"i","redacted":false,"revision":1}x)",
             "{\"device\":\"D\",\"id\":\"\xFF\",\"redacted\":false,\"revision\":1}",
             "{\"device\":\"D\",\"id\":\"a\tb\",\"redacted\":false,\"revision\":1}",
             R"({"device":"D","id":"\udc00","redacted":false,"revision":1})",
         })
        EXPECT_EQ(SyncItem::decode(wrong), std::nullopt) << wrong;
}

TEST(SyncItem, NewestFirstKeepsTheOrderOfEquals) {
    std::vector items{live("1", 1, "B"), live("2", 9, "A"), live("3", 9, "B"), live("4", 1, "B")};
    sortNewestFirst(items);
    std::string order;
    for (const auto& item : items) order += item.payload->string();
    EXPECT_EQ(order, "3214");
}

TEST(SyncLedger, TheClockNeverGoesDownAndDoesNotOverflow) {
    SyncLedger ledger;
    EXPECT_EQ(ledger.clock(), 1);
    ledger.merge(live("new", 70, "Z"));
    ledger.merge(live("old", 100, "A"));
    EXPECT_EQ(ledger.clock(), 100);
    ledger.merge(tombstone(200));
    ledger.merge(live("loses", 300));
    EXPECT_EQ(ledger.clock(), 300);
    // At the end of what others accept, the own change counts, here and there.
    const auto known = live("1", SyncItem::latestRevision, "ZZ", false, "setting:x");
    ledger.merge(known);
    ledger.capture(SyncLedger::Payloads{{"setting:x", "2"}, {"setting:y", "1"}}, false, {1e300});
    EXPECT_EQ(ledger.clock(), SyncItem::latestRevision);
    const auto own = *ledger.item("setting:x");
    EXPECT_EQ(own.payload, "2");
    EXPECT_EQ(known.merging(own), own);
    EXPECT_EQ(own.revision, SyncItem::latestRevision);
    EXPECT_EQ(ledger.item("setting:y")->revision, SyncItem::latestRevision);
    ledger.merge(live("x", std::numeric_limits<std::int64_t>::max()));
    EXPECT_EQ(ledger.clock(), std::numeric_limits<std::int64_t>::max());
}

// Random local edits, versions from elsewhere and new baselines, compared with the literal ledger.
TEST(SyncLedger, AgreesWithTheLiteralLedgerInRandomHistories) {
    const unsigned first = fromEnvironment("QUORVI_SEED", 1);
    for (unsigned seed = first; seed < first + fromEnvironment("QUORVI_ROUNDS", 300); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        SyncLedger ledger;
        LiteralLedger literal{.device = ledger.device().string()};
        SyncLedger::Payloads local;
        std::map<std::string, bool> gone, redacted;
        std::int64_t clock = 1, time = 1;
        const auto randomId = [&random] {
            return std::array{"history:1", "history:2", "correction:1", "setting:x"}[random() % 4];
        };
        for (int step = 0; step < 60; ++step) {
            switch (random() % 6) {
                case 0:
                    local.erase(SharedString(randomId()));
                    break;
                case 1:
                    local[randomId()] = payloadOf(random() % 3);
                    break;
                case 2: {
                    const std::string_view id = randomId();
                    local[id] =
                        std::array{payloadOf(1, std::nullopt), std::string("{}")}[random() % 2];
                    break;
                }
                case 3: {
                    const auto seeding = random() % 8 == 0;
                    time += random() % 3;
                    const auto before = ledger.baseline();
                    std::vector<SharedString> changed;
                    const Date now = Date::fromUnixSeconds(static_cast<double>(time) / 1000);
                    const auto milliseconds = static_cast<std::int64_t>(now.unixSeconds() * 1000);
                    if (random() % 2) {
                        changed = ledger.capture(local, seeding, now);
                    } else {
                        // More than the differences may be passed.
                        LocalChanges named;
                        for (const auto& [id, payload] : local)
                            named.push_back(LocalChange::of(id, payload));
                        for (const auto& [id, payload] : before)
                            if (!local.contains(id))
                                named.push_back(LocalChange::of(id, std::nullopt));
                        std::ranges::shuffle(named, random);
                        changed = ledger.capture(named, seeding, now);
                    }
                    EXPECT_EQ(literal.capture(plain(local), seeding, milliseconds, changed).size(),
                              changed.size());
                    break;
                }
                case 4: {
                    const auto item = randomVersion(random, randomId());
                    const auto& held = ledger.merge(item);
                    EXPECT_EQ(&held, ledger.item(item.id));
                    literal.merge(LiteralItem::of(item));
                    break;
                }
                case 5:
                    static_cast<void>(ledger.rebaseline());
                    literal.baseline.clear();
                    for (const auto& [id, item] : literal.items)
                        if (item.payload) literal.baseline[id] = *item.payload;
                    break;
            }
            ASSERT_EQ(ledger.clock(), literal.clock);
            ASSERT_GE(ledger.clock(), clock);
            clock = ledger.clock();
            ASSERT_EQ(plain(ledger.baseline()), literal.baseline);
            ASSERT_EQ(ledger.hasBaseline(), !literal.baseline.empty());
            ASSERT_EQ(ledger.items().size(), literal.items.size());
            for (const auto& [id, item] : literal.items) {
                ASSERT_EQ(LiteralItem::of(*ledger.item(id)), item);
                ASSERT_TRUE(!gone[id] || !item.payload) << "a tombstone lasts";
                ASSERT_TRUE(!redacted[id] || item.redacted) << "redaction lasts";
                gone[id] = !item.payload;
                redacted[id] = item.redacted;
            }
        }
    }
}

}  // namespace
}  // namespace quorvi::test
