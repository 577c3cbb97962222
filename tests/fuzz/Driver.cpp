// Runs a fuzz target on every file of a corpus and on inputs derived from them, the same at every
// run. For tests without a fuzzing engine.
//
//   TARGET CORPUS [COUNT [SEED]]

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Random = std::mt19937;

void run(const std::string& input) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

std::size_t below(Random& random, std::size_t limit) {
    return limit == 0 ? 0 : random() % limit;
}

// Pieces that parsers are likely to treat specially.
std::string interesting(Random& random) {
    static const char* const pieces[] = {
        "null",    "true",         "-0",     "1e400",        "1e-400",  "9223372036854775808",
        "-1",      "\"\"",         "[[[[[[", "{}",           "\\ud83d", "\\ude42",
        "\\u0000", "\xED\xA0\x80", "\xC0",   "\xEF\xBB\xBF", ",",       ":",
        "\"",      "\"text\":1,",  "1.5",    "NaN",          "\t",      "}"};
    return pieces[below(random, std::size(pieces))];
}

void mutate(std::string& input, const std::vector<std::string>& corpus, Random& random) {
    const auto at = below(random, input.size() + 1);
    const auto length = below(random, 1 + std::min<std::size_t>(input.size() - at, 24));
    switch (below(random, 6)) {
        case 0:
            input.erase(at, length);
            break;
        case 1:
            input.insert(at, input.substr(below(random, input.size() + 1), 24));
            break;
        case 2:
            input.replace(at, length, interesting(random));
            break;
        case 3:
            input.insert(at, interesting(random));
            break;
        case 4:
            if (at < input.size()) input[at] = static_cast<char>(random());
            break;
        default: {
            const auto& other = corpus[below(random, corpus.size())];
            input = input.substr(0, at) + other.substr(below(random, other.size() + 1));
        }
    }
    if (input.size() > 20'000) input.resize(20'000);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    const int count = argc > 2 ? std::atoi(argv[2]) : 20'000;
    Random random(argc > 3 ? static_cast<unsigned>(std::atoi(argv[3])) : 1);
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
        files.push_back(entry.path());
    std::ranges::sort(files);
    std::vector<std::string> corpus;
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        corpus.emplace_back(std::istreambuf_iterator<char>(stream),
                            std::istreambuf_iterator<char>());
        run(corpus.back());
    }
    if (corpus.empty()) return 2;
    for (int i = 0; i < count; ++i) {
        auto input = corpus[below(random, corpus.size())];
        for (auto steps = 1 + below(random, 4); steps > 0; --steps) mutate(input, corpus, random);
        run(input);
    }
    std::printf("%zu files and %d inputs made from them were read.\n", corpus.size(), count);
}
