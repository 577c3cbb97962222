// Correction rules on a transcript, compared with one regular expression per rule; and learning
// from an edit.

#include <functional>
#include <random>

#include "QuorviCore/corrections/CorrectionContext.h"
#include "QuorviCore/corrections/CorrectionLearning.h"
#include "QuorviCore/corrections/TextCorrections.h"
#include "QuorviCore/text/Tokens.h"
#include "bench/Figure.h"
#include "tests/support/reference/LiteralRules.h"

namespace quorvi::bench {
namespace {

// Pronounceable words from a large vocabulary, every tenth one in Greek.
class Speech {
public:
    std::string word() {
        static const char* const latin[] = {"ba",  "co", "din", "fel", "gor", "ha",  "lin", "mo",
                                            "ner", "pa", "rus", "set", "ta",  "vor", "wil", "zen"};
        static const char* const greek[] = {"κα", "λο", "μέ", "νι", "πο", "ρα", "σι", "το"};
        std::string result;
        const bool isGreek = random_() % 10 == 0;
        for (unsigned n = 3 + random_() % 2; n > 0; --n)
            result += isGreek ? greek[random_() % 8] : latin[random_() % 16];
        return result;
    }
    std::string words(std::size_t n, const std::vector<TextCorrection>& rules = {}) {
        std::string result;
        for (std::size_t i = 0; i < n; ++i) {
            if (!result.empty()) result += random_() % 9 == 0 ? ", " : " ";
            // Every twentieth word begins a phrase that has a rule.
            const bool fromRule = !rules.empty() && random_() % 20 == 0;
            result += fromRule ? rules[random_() % rules.size()].original : word();
        }
        return result + ".";
    }
    std::vector<TextCorrection> rules(std::size_t n) {
        std::vector<TextCorrection> result;
        while (result.size() < n) {
            std::string phrase = word();
            for (auto more = random_() % 3; more > 0; --more) phrase += " " + word();
            result.push_back({.original = phrase, .replacement = "<" + phrase + ">"});
        }
        return result;
    }

private:
    std::mt19937 random_{7};
};

double medianOf(int runs, const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const double start = millisecondsNow();
        work();
        times.push_back(millisecondsNow() - start);
    }
    return median(times);
}

// Milliseconds per call, for work too short for a single measurement.
double medianOfBatches(const std::function<void()>& work) {
    constexpr int batch = 50;
    return medianOf(60,
                    [&] {
                        for (int i = 0; i < batch; ++i) work();
                    }) /
           batch;
}

std::size_t sink = 0;

void measureRules() {
    Speech speech;
    const auto many = speech.rules(10'000);
    const std::vector<TextCorrection> some(many.begin(), many.begin() + 1'000);
    const std::vector<TextCorrection> few(many.begin(), many.begin() + 10);

    // The first preparation touches fresh memory, as it does in the application.
    std::vector<double> preparing;
    for (int i = 0; i < 15; ++i) {
        auto copy = many;
        const double start = millisecondsNow();
        const TextCorrections rules(std::move(copy));
        preparing.push_back(millisecondsNow() - start);
        sink += rules.rules().size();
    }

    std::vector<std::string> transcripts;
    for (int i = 0; i < 20; ++i) transcripts.push_back(speech.words(150, some));
    const auto applying = [&transcripts](const TextCorrections& rules) {
        return medianOfBatches([&, i = std::size_t{0}]() mutable {
            sink += rules.apply(transcripts[i++ % transcripts.size()]).size();
        });
    };
    const double at10000 = applying(TextCorrections(many));
    const double at1000 = applying(TextCorrections(some));
    const double at10 = applying(TextCorrections(few));

    test::LiteralRules kept(some);
    const double keptTime = medianOf(15, [&, i = std::size_t{0}]() mutable {
        sink += kept.applying(transcripts[i++ % transcripts.size()]).text.size();
    });
    const double literalTime = medianOf(3, [&, i = std::size_t{0}]() mutable {
        test::LiteralRules fresh(some);
        sink += fresh.applying(transcripts[i++ % transcripts.size()]).text.size();
    });
    const TextCorrections prepared(some);
    for (const auto& transcript : transcripts)
        if (prepared.apply(transcript) != kept.applying(transcript).text) std::abort();

    figure("rules_10000x150", at10000, "ms");
    figure("rules_vs_kept", at1000, "ms", keptTime);
    figure("rules_vs_literal", at1000, "ms", literalTime);
    figure("rules_growth", at10000 / at10, "x");
    figure("rules_prepare_10000", median(preparing), "ms");
    figure("rules_prepare_10000_first", preparing.front(), "ms");
}

void measureLearning() {
    Speech speech;
    std::string original;
    while (original.size() < 5'000) original += speech.word() + " ";
    original.resize(5'000, ' ');
    original.replace(2'500, 10, " tarnelox ");
    std::string edited = original;
    edited.replace(edited.find("tarnelox"), 8, "tarnelux");
    if (!CorrectionLearning::suggestion(original, edited, {})) std::abort();
    figure("learn_5000", medianOfBatches([&] {
               sink += CorrectionLearning::suggestion(original, edited, {}).has_value();
           }),
           "ms");

    const std::string greek = "Αυτό είναι ένα πεδίο. ";
    std::string greekField;
    while (greekField.size() < 150'000) greekField += greek;
    const auto verifying = [](const std::optional<std::string>& before, Utf16Range at,
                              std::size_t offset) {
        const std::string transcript = "a transcript of some words ";
        std::string after = *before;
        after.insert(offset, transcript);
        const double arrived = medianOfBatches([&] {
            sink += CorrectionContext::verified(before, at, transcript, after).has_value();
        });
        const double missing = medianOfBatches([&] {
            sink += CorrectionContext::verified(before, at, transcript, *before).has_value();
        });
        return std::pair(arrived, missing);
    };
    const auto ascii = verifying(std::string(100'000, 'x'), {50'000, 0}, 50'000);
    const auto mixed = verifying(greekField, {22 * 1'000, 0}, greek.size() * 1'000);
    figure("verify_100000", ascii.first, "ms");
    figure("verify_100000_not_yet", ascii.second, "ms");
    figure("verify_greek", mixed.first, "ms");
    figure("verify_greek_not_yet", mixed.second, "ms");
}

}  // namespace
}  // namespace quorvi::bench

int main() {
    quorvi::bench::measureRules();
    quorvi::bench::measureLearning();
    return quorvi::bench::sink == 0;
}
