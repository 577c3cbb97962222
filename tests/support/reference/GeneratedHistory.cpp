#include "tests/support/reference/GeneratedHistory.h"

#include <array>

#include "tests/support/Texts.h"

namespace quorvi::test {

GeneratedHistory::GeneratedHistory(std::size_t count, Date newest, std::uint32_t seed)
    : random_(seed) {
    records_.reserve(count);
    double date = newest.secondsSinceReferenceDate;
    while (records_.size() < count) {
        records_.push_back(record({date}));
        date -= records_.size() % 70 == 0 ? 40'000 + below(100'000) : 60 + below(900);
    }
}

std::string GeneratedHistory::sentence(bool inGreek) {
    static const auto latin = split(
        "the of quarterly meeting please Send draft tomorrow Café numbers report and a to "
        "customer schedule review thanks regards invoice budget it we should because document "
        "interface dictation is don't Monday at question answer naïve");
    static const auto greek = split(
        "και το συνάντηση αύριο παρακαλώ έγγραφο είναι Ευχαριστώ πελάτης ερώτηση στις για μας "
        "αναφορά λογαριασμός");
    std::string text;
    for (unsigned n = 30 + choose(21); n > 0; --n) {
        text += inGreek ? greek[choose(greek.size())] : latin[choose(latin.size())];
        text += n == 1 ? "." : n % 12 == 0 ? ". " : n % 5 == 0 ? ", " : " ";
    }
    return text;
}

DictationRecord GeneratedHistory::record(Date date) {
    static constexpr std::array apps{"Mail",    "Text Editor", "Firefox",  "Terminal",
                                     "Slack",   "Writer",      "Notes",    "Chromium",
                                     "Κείμενα", "mail",        "Evolution"};
    static constexpr std::array models{TranscriptionModel::transcribe,
                                       TranscriptionModel::transcribe, TranscriptionModel::fourO,
                                       TranscriptionModel::mini};
    Uuid id;
    for (auto& byte : id.bytes) byte = static_cast<std::uint8_t>(random_());
    const bool inGreek = choose(6) == 0;
    const bool keepText = choose(20) != 0;
    const auto estimate = choose(30) == 0
                              ? std::nullopt
                              : std::optional(DictationCostEstimate::of(models[choose(4)]));
    const std::string text = sentence(inGreek);
    return DictationRecord::make(id, date, text, 4 + below(30), apps[choose(apps.size())],
                                 inGreek ? "greek" : "automatic", keepText, estimate);
}

}  // namespace quorvi::test
