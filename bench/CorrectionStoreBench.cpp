// The store of rules: loading, saving and learning with 10,000 rules, and one check of a long field
// by the observer.

#include <rapidjson/document.h>

#include <functional>
#include <random>

#include "Quorvi/corrections/CorrectionObserver.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "bench/Figure.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi::bench {
namespace {

constexpr std::size_t many = 10'000;
constexpr auto rulesKey = "savedTextCorrections";

std::size_t sink = 0;

template <class F>
double timeOf(const F& work) {
    const double start = millisecondsNow();
    work();
    return millisecondsNow() - start;
}

template <class F>
double medianOf(int runs, const F& work) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) times.push_back(timeOf(work));
    return median(times);
}

// Phrases of one to three invented words, every tenth one in Greek.
std::vector<TextCorrection> spokenRules() {
    static const char* const latin[] = {"ba", "co", "din", "fel", "gor", "ha", "lin", "mo"};
    static const char* const greek[] = {"κα", "λο", "μέ", "νι", "πο", "ρα", "σι", "το"};
    std::mt19937 random(7);
    std::vector<TextCorrection> rules;
    while (rules.size() < many) {
        const auto& syllables = rules.size() % 10 == 0 ? greek : latin;
        std::string phrase;
        for (auto words = 1 + random() % 3; words > 0; --words) {
            if (!phrase.empty()) phrase += ' ';
            for (int n = 0; n < 4; ++n) phrase += syllables[random() % 8];
        }
        phrase += std::to_string(rules.size());
        rules.push_back(
            {.original = phrase, .replacement = "<" + phrase + ">", .updatedAt = {7e8 + 0.1}});
    }
    return rules;
}

// Rules of maximum length, with complex grapheme clusters.
std::vector<TextCorrection> emojiRules(std::size_t count) {
    static const char* const emoji[] = {"👍🏽", "👨‍👩‍👧", "🇬🇷", "é", "🙂"};
    std::mt19937 random(7);
    std::vector<TextCorrection> rules;
    while (rules.size() < count) {
        std::string phrase;
        for (std::size_t n = 0; n < TextCorrection::phraseLimit; ++n)
            phrase += n % 2 == 0 ? emoji[random() % 5] : "🙂";
        rules.push_back({.original = phrase, .replacement = phrase});
    }
    return rules;
}

MemoryPreferences preferencesWith(const std::vector<TextCorrection>& rules) {
    const auto json = encodeCorrections(rules);
    MemoryPreferences preferences;
    preferences.setBytes(rulesKey, Bytes(json.begin(), json.end()));
    return preferences;
}

// The reference is the parser alone, the lower bound of loading.
void measureLoading(const char* name, const std::vector<TextCorrection>& rules) {
    test::VirtualScheduler clock;
    auto preferences = preferencesWith(rules);
    const auto json = encodeCorrections(rules);
    const double loading = medianOf(11, [&] {
        const CorrectionStore store(preferences, clock);
        if (store.persistenceError()) std::abort();
        sink += store.rules().rules().size();
    });
    const double parsing = medianOf(11, [&] {
        rapidjson::Document document;
        document.Parse(json.data(), json.size());
        sink += document.Size();
    });
    figure(name, loading, "ms", parsing);
}

// The reference encodes the whole list and computes every match key at each save.
void measureSaving(const std::vector<TextCorrection>& rules) {
    test::VirtualScheduler clock;
    auto preferences = preferencesWith(rules);
    CorrectionStore store(preferences, clock);
    int n = 0;
    const double adding = medianOf(31, [&] {
        store.save({.original = "new phrase " + std::to_string(++n), .replacement = "new"});
    });
    const double editing = medianOf(31, [&] {
        auto rule = store.rules().rules()[many / 2];
        rule.replacement = "edit " + std::to_string(++n);
        store.save(std::move(rule));
    });
    const double directly = medianOf(11, [&] {
        for (const auto& rule : rules) sink += TextCorrection::matchKey(rule.original).size();
        const auto json = encodeCorrections(rules);
        preferences.setBytes("direct", Bytes(json.begin(), json.end()));
        sink += TextCorrections(rules).rules().size();
    });
    figure("rule_save_10000", adding, "ms", directly);
    figure("rule_edit_10000", editing, "ms", directly);
    figure("rule_learn_10000",
           medianOf(31,
                    [&] {
                        TextCorrection rule{.original = "taught " + std::to_string(++n),
                                            .replacement = "taught"};
                        sink += store.learn(rule, {}).size();
                    }),
           "ms");
    figure("learning_event", medianOf(200, [&] { store.recordLearningEvent("code", "Editor"); }),
           "ms");
}

// The main thread's work for one check, without the read.
void measureObserving() {
    test::VirtualScheduler clock;
    test::TurnExecutor queries(clock);
    MemoryPreferences preferences;
    CorrectionStore store(preferences, clock);
    const std::string before(50'000, 'x');
    std::string field = before + " call the oxygen team " + before;
    CorrectionObserver observer(
        clock, queries, [&field](const auto&, bool) { return field; }, [](pid_t) { return true; });
    const auto context = CorrectionContext::make(before + before.substr(0, 49'000), {50'000, 0},
                                                 " call the oxygen team ");
    if (!context) std::abort();
    field = context->expectedField();
    observer.start(*context, {.pid = 1, .appName = "Editor"}, store, {}, false, [] { return 0U; });
    figure("observe_100000",
           medianOf(100,
                    [&] {
                        auto sampling = observer.sample();
                        sampling.start();
                        clock.settle();
                    }),
           "ms");
}

}  // namespace
}  // namespace quorvi::bench

int main() {
    using namespace quorvi::bench;
    const auto rules = spokenRules();
    measureLoading("rules_load_10000", rules);
    measureLoading("rules_load_10000_emoji", emojiRules(many));
    measureSaving(rules);
    measureObserving();
    return sink == 0;
}
