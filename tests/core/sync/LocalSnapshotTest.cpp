#include "QuorviCore/sync/LocalSnapshot.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/propertylist/PropertyList.h"
#include "tests/support/Seeds.h"
#include "tests/support/reference/LiteralSync.h"

namespace quorvi::test {
namespace {

// Stores that change at random, with few ids and values, so that all cases happen often.
class Stores {
public:
    explicit Stores(unsigned seed) : random_(seed) {}

    LocalSnapshot now() const { return {records_, rules_, settings_}; }

    void change() {
        switch (below(12)) {
            case 0:
            case 1:
            case 2:
                records_ = records_.prepending(record());
                break;
            case 3:
                records_ = records_.without(idOf(below(40)));
                break;
            case 4:
                records_ = records_.withoutTextBefore({below(200) * 1.0});
                break;
            case 5:
                records_ = records_.newestFirst();
                break;
            case 6:
                for (auto n = below(400); n > 0; --n) records_ = records_.prepending(record());
                if (records_.size() > 900) records_ = records_.between({50}, {150});
                break;
            case 7:
                // Equal records in other chunks.
                records_ = DictationRecords(std::vector(records_.begin(), records_.end()));
                break;
            case 8:
            case 9:
                changeRules();
                break;
            case 10:
                settings_.erase(key());
                break;
            default:
                settings_[key()] = setting();
                break;
        }
    }

private:
    unsigned below(unsigned limit) { return random_() % limit; }
    static Uuid idOf(unsigned number) {
        Uuid id;
        id.bytes[3] = static_cast<std::uint8_t>(number);
        return id;
    }
    DictationRecord record() {
        DictationRecord record{.id = below(3) ? Uuid::random() : idOf(below(40))};
        record.date = {below(200) * 1.0};
        if (below(4)) record.text = std::string("text ") + static_cast<char>('a' + below(3));
        if (below(50) == 0) record.audioSeconds = std::numeric_limits<double>::infinity();
        return record;
    }
    void changeRules() {
        auto rules = rules_.rules();
        const auto at = [&] { return rules.begin() + below(static_cast<unsigned>(rules.size())); };
        const auto kind = below(4);
        if (kind == 0 && !rules.empty()) {
            rules.erase(at());
        } else if (kind == 1 && !rules.empty()) {
            // Composed and decomposed: equal for the user, but not byte for byte.
            auto& original = at()->original;
            original = original == "caf\u00e9" ? "cafe\u0301" : "caf\u00e9";
        } else {
            rules.insert(rules.empty() ? rules.end() : at(),
                         {.id = idOf(below(12)).string(),
                          .original = "a" + std::to_string(below(5)),
                          .replacement = "b",
                          .updatedAt = {below(30) ? below(3) * 1.0
                                                  : std::numeric_limits<double>::quiet_NaN()}});
        }
        rules_ = TextCorrections(std::move(rules));
    }
    std::string key() { return std::string("key") + static_cast<char>('0' + below(3)); }
    SettingValue setting() {
        const auto kind = below(4);
        if (kind == 0) return std::string("text ") + static_cast<char>('0' + below(2));
        if (kind == 1) return below(2) == 0;
        if (kind == 2) return std::int64_t{below(2)};
        return Bytes{static_cast<std::uint8_t>(below(2))};
    }

    std::mt19937 random_;
    DictationRecords records_;
    TextCorrections rules_;
    SettingValues settings_;
};

SyncLedger::Payloads literalPayloads(const LocalSnapshot& now) {
    SyncLedger::Payloads all;
    std::map<std::string, std::pair<double, std::string>> chosen;
    const auto offer = [&](const std::string& id, double date, const auto& encode) {
        try {
            const std::pair<double, std::string> value{date, encode()};
            const auto [at, isNew] = chosen.try_emplace(id, value);
            if (!isNew && value > at->second) at->second = value;
        } catch (const std::exception&) {
        }
    };
    for (const auto& record : now.records())
        offer("history:" + record.id.string(), record.date.secondsSinceReferenceDate,
              [&] { return encodeRecord(record); });
    for (const auto& rule : now.rules().rules())
        offer("correction:" + rule.id, rule.updatedAt.secondsSinceReferenceDate,
              [&] { return encodeCorrection(rule); });
    for (const auto& [id, value] : chosen) all[id] = value.second;
    for (const auto& [key, value] : now.settings())
        all["setting:" + key] = LocalSnapshot::encode(value);
    return all;
}

TEST(LocalSnapshot, ChangesSinceAgreesWithAFullComparison) {
    const auto first = fromEnvironment("QUORVI_SEED", 1);
    std::size_t changed = 0;
    for (unsigned seed = first; seed < first + 12 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        Stores stores(seed);
        SyncLedger ledger, whole;
        LocalSnapshot captured;
        for (int step = 0; step < 60 && !HasFailure(); ++step) {
            for (auto changes = random() % 3; changes > 0; --changes) stores.change();
            const auto now = stores.now();
            const auto payloads = literalPayloads(now);

            const auto changes =
                random() % 4 ? now.changesSince(captured, ledger) : now.changesFrom(ledger);
            ASSERT_LE(changes.size(), now.distanceFrom(captured) + now.settings().size() +
                                          captured.settings().size());
            for (const auto& change : changes)
                ASSERT_EQ(change, LocalChange::of(change.id, change.payload)) << change.id.view();
            const auto ids = ledger.capture(changes, false, {0});
            auto sorted = whole.capture(payloads, false, {0});
            changed += ids.size();
            captured = now;
            ASSERT_EQ(plain(ledger.baseline()), plain(payloads));
            ASSERT_EQ(SharedStringSet(ids.begin(), ids.end()),
                      SharedStringSet(sorted.begin(), sorted.end()));
            // After a deletion from elsewhere, the local copy makes no new version.
            if (random() % 8 == 0 && !ids.empty()) {
                const auto& id = ids[random() % ids.size()];
                for (auto* one : {&ledger, &whole}) one->merge({id, std::nullopt, 1, "Z", true});
            }
            for (const auto& [id, item] : whole.items()) {
                const auto* fast = ledger.item(id);
                ASSERT_TRUE(fast && fast->payload == item.payload &&
                            fast->redacted == item.redacted)
                    << id.view();
            }
        }
    }
    EXPECT_GT(changed, 5'000u) << "hardly anything changed";
}

TEST(LocalSnapshot, ComparesOnlyChangedParts) {
    std::vector<DictationRecord> many(5'000);
    const DictationRecords records(many);
    const LocalSnapshot before(records, {}, {{"a", true}});
    EXPECT_TRUE(before.isSharedWith(LocalSnapshot(records, {}, {{"a", true}})));
    EXPECT_FALSE(before.isSharedWith(LocalSnapshot(records, {}, {{"a", false}})));
    const LocalSnapshot after(records.prepending(DictationRecord{}), {}, {{"a", true}});
    EXPECT_LE(after.distanceFrom(before), 2 * DictationRecords::chunkSize + 2);
    const auto changes = after.changesSince(before, SyncLedger());
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0].id, LocalSnapshot::historyId(after.records()[0].id));
    EXPECT_EQ(changes[0].payload, encodeRecord(after.records()[0]));
}

TEST(LocalSnapshot, ASettingIsAPropertyListWithItsValue) {
    const PropertyList list{PropertyList::Dictionary{{"value", {std::string("text")}}}};
    EXPECT_EQ(LocalSnapshot::encode(std::string("text")), list.toBinary());
}

}  // namespace
}  // namespace quorvi::test
