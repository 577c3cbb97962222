#include "QuorviCore/text/Marks.h"

#include "QuorviCore/text/Icu.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi::text {

std::string withoutExcessMarks(std::string_view s) {
    constexpr std::size_t mostMarks = 30;
    std::string result;
    if (isAscii(s)) return result.assign(s);
    result.reserve(s.size());
    std::size_t marks = 0;
    for (std::size_t i = 0; i < s.size();) {
        const std::size_t begin = i;
        const UChar32 c = icuText::next(s, i);
        marks = (U_GET_GC_MASK(c) & U_GC_M_MASK) != 0 ? marks + 1 : 0;
        if (marks <= mostMarks) result += s.substr(begin, i - begin);
    }
    return result;
}

}  // namespace quorvi::text
