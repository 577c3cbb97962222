#include "QuorviCore/text/Folding.h"

#include <algorithm>

#include "QuorviCore/text/Icu.h"
#include "QuorviCore/text/Marks.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi::text {

std::string caseFolded(std::string_view s) {
    if (isAscii(s)) {
        std::string result(s);
        std::ranges::transform(result, result.begin(), asciiLower);
        return result;
    }
    return icuText::toUtf8(icuText::fromUtf8(s).foldCase());
}

std::string withoutDiacritics(std::string_view s) {
    if (isAscii(s)) return std::string(s);
    UErrorCode status = U_ZERO_ERROR;
    const auto few = withoutExcessMarks(s);
    const auto decomposed = icuText::nfd().normalize(icuText::fromUtf8(few), status);
    icu::UnicodeString bare;
    for (int32_t i = 0; i < decomposed.length(); i = decomposed.moveIndex32(i, 1)) {
        const UChar32 c = decomposed.char32At(i);
        if ((U_GET_GC_MASK(c) & U_GC_M_MASK) == 0) bare.append(c);
    }
    const auto result = icuText::nfc().normalize(bare, status);
    icuText::check(status);
    return icuText::toUtf8(result);
}

}  // namespace quorvi::text
