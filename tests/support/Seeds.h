#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <exception>
#include <string>
#include <utility>

namespace quorvi::test {

inline unsigned fromEnvironment(const char* name, unsigned otherwise) {
    const char* value = std::getenv(name);
    return value ? static_cast<unsigned>(std::strtoul(value, nullptr, 10)) : otherwise;
}

// Runs `work` with one seed after the other until one fails, which is then named. The two variables
// of the environment say with which one to begin and how many there are to be.
template <class Work>
void forEachSeed(const char* firstName, const char* countName, unsigned standardCount, Work work) {
    const auto first = fromEnvironment(firstName, 1);
    const auto count = fromEnvironment(countName, standardCount);
    for (auto seed = first; seed < first + count && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(std::string(firstName) + "=" + std::to_string(seed));
        try {
            work(seed);
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
        }
    }
}

// For histories of several machines.
template <class Work>
void forEachSyncSeed(unsigned standardCount, Work work) {
    forEachSeed("QUORVI_SYNC_FIRST_SEED", "QUORVI_SYNC_SEEDS", standardCount, std::move(work));
}

}  // namespace quorvi::test
