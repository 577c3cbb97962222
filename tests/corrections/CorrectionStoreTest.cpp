#include "Quorvi/corrections/CorrectionStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "Quorvi/corrections/TarnelCorrections.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

constexpr auto rulesKey = "savedTextCorrections";
const auto locked = say::correctionsUnreadable();
const auto duplicate = say::correctionExists();
const auto existing = say::correctionControlledByRule();

class CorrectionStoreTest : public testing::Test {
protected:
    CorrectionStoreTest() { defaults.setBytes(rulesKey, bytesOf("[]")); }

    TextCorrection add(std::string original, std::string replacement) {
        store().save({.original = std::move(original), .replacement = std::move(replacement)});
        return store().rules().rules().front();
    }
    static Message failureOf(const std::function<void()>& change) {
        try {
            change();
        } catch (const QuorviError& error) {
            return error.sentence();
        }
        return {};
    }
    // Created on first use, so that tests can prepare the preferences.
    CorrectionStore& store() {
        if (!store_) store_.emplace(defaults, clock);
        return *store_;
    }
    std::string list() {
        std::string result;
        for (const auto& rule : store().rules().rules())
            result += rule.original + ">" + rule.replacement + (rule.isEnabled ? ";" : " off;");
        return result;
    }
    std::string storedJson() const {
        const auto bytes = defaults.bytes(rulesKey).value_or(Bytes{});
        return {bytes.begin(), bytes.end()};
    }

    VirtualScheduler clock;
    MemoryPreferences defaults;
    std::optional<CorrectionStore> store_;
};

TEST_F(CorrectionStoreTest, AFirstLaunchStoresAnExampleThatALaterOneLoads) {
    defaults.remove(rulesKey);
    EXPECT_EQ(store().rules().apply("a russet  miner."), "a russetmanor.");
    const CorrectionStore later(defaults, clock);
    EXPECT_EQ(later.rules().rules(), store().rules().rules());
    EXPECT_EQ(later.persistenceError(), std::nullopt);
}

TEST_F(CorrectionStoreTest, UnreadableRulesLockTheStoreAndAreNeverOverwritten) {
    const TextCorrection good{.original = "a", .replacement = "b"};
    const TextCorrection empty{.original = "c", .replacement = " "};
    const auto check = [&](const std::string& stored, MemoryPreferences& preferences) {
        SCOPED_TRACE(stored);
        int changes = 0;
        const auto watching = preferences.onChange([&] { ++changes; });
        CorrectionStore lockedStore(preferences, clock);
        EXPECT_EQ(lockedStore.persistenceError(), locked);
        EXPECT_EQ(failureOf([&] { lockedStore.save(good); }), locked);
        EXPECT_EQ(failureOf([&] { lockedStore.remove(good.id); }), locked);
        EXPECT_TRUE(lockedStore.learn(good, {}).empty());
        lockedStore.replaceFromSync({good});
        lockedStore.installTarnelCorrectionsIfNeeded();
        EXPECT_TRUE(lockedStore.rules().rules().empty());
        EXPECT_EQ(changes, 0);
    };
    for (const auto& json : {encodeCorrections({good, good}), encodeCorrections({good, empty})}) {
        defaults.setBytes(rulesKey, bytesOf(json));
        check(json, defaults);
    }
    defaults.setString(rulesKey, "[]");
    check("another type", defaults);
    MemoryPreferences unreadable;
    unreadable.setCouldBeRead(false);
    check("unknown, and no first launch", unreadable);
}

TEST_F(CorrectionStoreTest, SavingTrimsDatesAndPutsNewRulesInFrontAndEditsInPlace) {
    const auto miner = add(" russet miner\n", "\tMiner ");
    clock.advance(10s);
    EXPECT_EQ(add("oxygen", "oxygon").updatedAt, clock.date());
    EXPECT_EQ(list(), "oxygen>oxygon;russet miner>Miner;");

    EXPECT_EQ(failureOf([&] { add("Russet  MINER ", "x"); }), duplicate);
    EXPECT_EQ(failureOf([&] { add(" ", "x"); }), say::correctionIncomplete());
    EXPECT_EQ(failureOf([&] { add("x", std::string(161, 'x')); }), say::correctionTooLong());
    auto edited = miner;
    edited.replacement = "Manor";
    store().save(edited);
    EXPECT_EQ(store().rules().rules()[1].updatedAt, clock.date());
    store().setEnabled(miner.id, false);
    edited.original = "oxygen";
    EXPECT_EQ(failureOf([&] { store().save(edited); }), duplicate);
    store().setEnabled("none", true);
    EXPECT_EQ(list(), "oxygen>oxygon;russet miner>Manor off;");

    // Synchronisation may deliver two rules for a phrase.
    store().replaceFromSync({{.id = newUuid(), .original = "tea", .replacement = "T"},
                             {.original = "TEA", .replacement = "t", .isEnabled = false}});
    const auto second = store().rules().rules()[1].id;
    EXPECT_EQ(failureOf([&] { store().setEnabled(second, true); }), duplicate);
}

// The store encodes only changed rules; the stored list must still be complete.
TEST_F(CorrectionStoreTest, AfterAnyChangesTheStoredListIsThePublishedOne) {
    bool differed = false;
    const auto changes = store().onChange(
        [&] { differed = differed || storedJson() != encodeCorrections(store().rules().rules()); });
    std::mt19937 random(3);
    const auto phrase = [&] { return "word " + std::to_string(random() % 40); };
    for (int round = 0; round < 600; ++round) {
        auto rules = store().rules().rules();
        const auto at = rules.empty() ? 0 : random() % rules.size();
        const auto original = phrase();
        const auto isTaken = std::ranges::count(rules, original, &TextCorrection::original) > 0;
        switch (rules.empty() ? 0 : random() % 5) {
            case 0:
                EXPECT_EQ(failureOf([&] { add(original, phrase()); }),
                          isTaken ? duplicate : Message());
                break;
            case 1:
                store().remove(rules[at].id);
                break;
            case 2:
                store().setEnabled(rules[at].id, random() % 2 == 0);
                break;
            case 3:
                rules[at].replacement = "e\u0301 \xFF";
                store().save(rules[at]);
                break;
            default:
                std::ranges::shuffle(rules, random);
                if (!isTaken) rules[at].original = original;
                store().replaceFromSync(rules);
        }
        ASSERT_EQ(storedJson(), encodeCorrections(store().rules().rules())) << round;
    }
    EXPECT_FALSE(differed) << "a change was published before it was stored";
}

TEST_F(CorrectionStoreTest, SynchronisationReplacesTheListOnlyWhenItDiffers) {
    const auto rule = add("caf\u00E9", "Café");
    int told = 0;
    const auto changes = store().onChange([&] { ++told; });
    store().replaceFromSync({rule});
    EXPECT_EQ(told, 0);
    // Equivalent but different bytes, which another machine would take for a change.
    auto same = rule;
    same.original = "cafe\u0301";
    store().replaceFromSync({same});
    EXPECT_EQ(told, 1);
}

TEST_F(CorrectionStoreTest, LearnsANewRuleAndRetargetsTheOneThatWroteTheMistake) {
    const auto wrong = add("russet manor", "Russet Miner");
    const auto other = add("tea", "Russet Miner");
    store().setEnabled(other.id, false);
    std::string told;
    store().onLearned = [&](const auto& rule) { told += rule.original + ";"; };
    const TextCorrection suggestion{
        .original = "Russet Miner", .replacement = "Russet Manor", .learnedAutomatically = true};

    // Rules that are disabled, or have changed since they were applied, stay unchanged.
    auto outdated = wrong;
    outdated.learnedAutomatically = true;
    EXPECT_EQ(store().learn(suggestion, {outdated, store().rules().rules()[0]}).size(), 1u);
    store().remove(suggestion.id);

    const auto learned = store().learn(suggestion, {wrong});
    EXPECT_EQ(list(), "Russet Miner>Russet Manor;tea>Russet Miner off;russet manor>Russet Manor;");
    ASSERT_EQ(learned.size(), 2u);
    EXPECT_EQ(learned[0].id, suggestion.id);
    EXPECT_EQ(learned[1].id, wrong.id);
    EXPECT_TRUE(learned[1].learnedAutomatically);
    EXPECT_EQ(store().learningStatus(), say::remembered("Russet Miner → Russet Manor"));
    EXPECT_EQ(told, "Russet Miner;Russet Miner;");
}

TEST_F(CorrectionStoreTest, SaysWhyNothingWasLearned) {
    const auto rule = add("oxygen", "caf\u00E9");
    const TextCorrection same{.original = "OXYGEN", .replacement = "cafe\u0301"};
    const TextCorrection different{.original = "oxygen", .replacement = "oxygon"};
    const auto statusAfter = [&](const TextCorrection& suggestion) {
        store().setLearningStatus({});
        EXPECT_TRUE(store().learn(suggestion, {}).empty());
        return store().learningStatus();
    };
    EXPECT_EQ(statusAfter(same), say::correctionAlreadySaved());
    EXPECT_EQ(statusAfter(different), existing);
    store().setEnabled(rule.id, false);
    EXPECT_EQ(statusAfter(same), existing);

    // With learning off nothing is learned, also after a restart.
    store().onLearningChanged = [&] { EXPECT_FALSE(store().learnsAutomatically()); };
    store().setLearnsAutomatically(false);
    store().remove(rule.id);
    EXPECT_TRUE(statusAfter(different).isEmpty());
    EXPECT_EQ(list(), "");
    EXPECT_FALSE(CorrectionStore(defaults, clock).learnsAutomatically());
    store().onLearningChanged = nullptr;
    defaults.setString("learnCorrectionsAutomatically", "no");
    EXPECT_TRUE(CorrectionStore(defaults, clock).learnsAutomatically());
}

TEST_F(CorrectionStoreTest, TheBrandRulesComeOnceAndFindTheWordInGreek) {
    const auto brand = tarnelCorrections({});
    ASSERT_EQ(brand.size(), 2u);
    EXPECT_EQ(TextCorrections(brand).apply("το ΤΆΝΕΛ, και δα\u0301νελ. Τάνελα;"),
              "το tarnel, και tarnel. Τάνελα;");

    const auto own = add("ΔΆΝΕΛ", "mine");
    store().installTarnelCorrectionsIfNeeded();
    EXPECT_EQ(list(), brand[0].original + ">tarnel;ΔΆΝΕΛ>mine;");
    store().remove(brand[0].id);
    store().installTarnelCorrectionsIfNeeded();
    EXPECT_EQ(store().rules().rules(), std::vector{own}) << "what the user deleted stays away";
}

TEST_F(CorrectionStoreTest, KeepsTheLast24LearningEventsAndForgivesABrokenLog) {
    defaults.setBytes("correctionLearningDiagnostics", bytesOf(R"([{"code":"x"}])"));
    EXPECT_TRUE(store().learningEvents().empty());
    for (int i = 1; i <= 25; ++i) {
        store().recordLearningEvent("code " + std::to_string(i), "Éditeur", {{"chars", i}});
        clock.advance(100ms);
    }
    const auto events = CorrectionStore(defaults, clock).learningEvents();
    ASSERT_EQ(events.size(), 24u);
    EXPECT_EQ(events.front().code, "code 2");
    EXPECT_EQ(events.back(),
              (LearningEvent{{800'000'000.0 + 2.4}, "Éditeur", "code 25", {{"chars", 25}}}));
}

}  // namespace
}  // namespace quorvi::test
