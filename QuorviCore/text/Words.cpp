#include "QuorviCore/text/Words.h"

#include "QuorviCore/text/Icu.h"

namespace quorvi::text {

namespace {

template <class Visit>
void forEachWord(std::string_view s, Visit visit) {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < s.size();) {
        const std::size_t at = i;
        if (!u_isUWhiteSpace(icuText::next(s, i))) continue;
        if (at > begin) visit(s.substr(begin, at - begin));
        begin = i;
    }
    if (s.size() > begin) visit(s.substr(begin));
}

}  // namespace

std::vector<std::string_view> words(std::string_view s) {
    std::vector<std::string_view> result;
    forEachWord(s, [&](std::string_view word) { result.push_back(word); });
    return result;
}

std::string withSingleSpaces(std::string_view s) {
    std::string result;
    result.reserve(s.size());
    forEachWord(s, [&](std::string_view word) {
        if (!result.empty()) result += ' ';
        result += word;
    });
    return result;
}

}  // namespace quorvi::text
