#include "tests/support/Texts.h"

#include <iterator>
#include <sstream>

namespace quorvi::test {

std::vector<std::string> split(const std::string& words) {
    std::istringstream stream(words);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string repeated(std::string_view s, int times) {
    std::string result;
    while (times-- > 0) result += s;
    return result;
}

std::string utf8(const icu::UnicodeString& s) {
    std::string result;
    return s.toUTF8String(result);
}

std::string HostileTexts::operator()(unsigned most) {
    std::string text;
    for (auto n = (*random_)() % most; n > 0; --n) text += chosen_[(*random_)() % 8];
    return text;
}

}  // namespace quorvi::test
