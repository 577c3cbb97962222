#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "QuorviCore/history/DictationRecords.h"

namespace quorvi::test {

// The dictations of years, the same at every run: newest first, about seventy a day with quiet days
// between, some forty words each, every sixth in Greek, every twentieth without its text.
class GeneratedHistory {
public:
    explicit GeneratedHistory(std::size_t count, Date newest = {800'000'000},
                              std::uint32_t seed = 7);

    std::vector<DictationRecord> take() { return std::move(records_); }

private:
    double below(unsigned limit) { return random_() % limit + random_() / 4294967296.0; }
    unsigned choose(std::size_t size) { return random_() % static_cast<unsigned>(size); }

    std::string sentence(bool inGreek);

    DictationRecord record(Date date);

    std::mt19937 random_;
    std::vector<DictationRecord> records_;
};

}  // namespace quorvi::test
