// Runs a parser's target on every file of a corpus and on inputs derived from them, the same at
// every run. For tests without a fuzzing engine.
//
//   parser_fuzz PARSER CORPUS [COUNT [SEED]]

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "tests/support/TestFolder.h"

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

// Pieces that parsers are likely to treat specially.
constexpr std::string_view interesting[] = {
    "null",    "true",         "-0",     "1e400",        "1e-400",  "9223372036854775808",
    "-1",      "\"\"",         "[[[[[[", "{}",           "\\ud83d", "\\ude42",
    "\\u0000", "\xED\xA0\x80", "\xC0",   "\xEF\xBB\xBF", ",",       ":",
    "\"",      "\"text\":1,",  "1.5",    "NaN",          "\t",      "}"};

void run(const std::string& input) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

// Replaces a piece of the input, which may be empty, by another one.
void mutate(std::string& input, const std::vector<std::string>& corpus, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    const auto at = below(input.size() + 1);
    const auto length = below(2) * below(25);
    const auto& other = corpus[below(corpus.size())];
    switch (below(5)) {
        case 0:
            input.erase(at, length);
            break;
        case 1:
            input.insert(at, input.substr(below(input.size() + 1), 24));
            break;
        case 2:
            input.replace(at, length, interesting[below(std::size(interesting))]);
            break;
        case 3:
            if (at < input.size()) input[at] = static_cast<char>(random());
            break;
        default:
            input = input.substr(0, at) + other.substr(below(other.size() + 1));
    }
    if (input.size() > 20'000) input.resize(20'000);
}

}  // namespace

int main(int argc, char** argv) {
    LLVMFuzzerInitialize(&argc, &argv);
    if (argc < 2) return 2;
    const int count = argc > 2 ? std::atoi(argv[2]) : 20'000;
    std::mt19937 random(argc > 3 ? static_cast<unsigned>(std::atoi(argv[3])) : 1);
    std::vector<std::string> corpus;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
        corpus.push_back(quorvi::test::contentOf(entry.path()));
    if (corpus.empty()) return 2;
    std::ranges::sort(corpus);
    std::ranges::for_each(corpus, run);
    for (int i = 0; i < count; ++i) {
        auto input = corpus[random() % corpus.size()];
        for (auto steps = 1 + random() % 4; steps > 0; --steps) mutate(input, corpus, random);
        run(input);
    }
    std::printf("%zu files and %d inputs made from them were read.\n", corpus.size(), count);
}
