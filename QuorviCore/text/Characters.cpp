#include "QuorviCore/text/Characters.h"

#include <algorithm>

#include "QuorviCore/text/GraphemeIterator.h"
#include "QuorviCore/text/Icu.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi::text {

namespace {

int breakClass(UChar32 c) {
    return u_getIntPropertyValue(c, UCHAR_GRAPHEME_CLUSTER_BREAK);
}

// A control, such as one of direction, stands alone.
bool isBoundaryBetween(UChar32 before, UChar32 after) {
    const int left = breakClass(before), right = breakClass(after);
    return left == U_GCB_CONTROL || right == U_GCB_CONTROL ||
           (left == U_GCB_OTHER && right == U_GCB_OTHER);
}

// Whether the adjacent code points alone make the offset a boundary; otherwise only the full rules
// can tell.
bool isPlainBoundary(std::string_view s, std::size_t offset) {
    if (offset == 0 || offset == s.size()) return true;
    const char before = s[offset - 1];
    const char after = s[offset];
    if (isContinuation(after)) return false;
    if ((static_cast<unsigned char>(before) | static_cast<unsigned char>(after)) < 0x80)
        return before != '\r' || after != '\n';
    std::size_t i = offset;
    const UChar32 last = icuText::previous(s, i);
    i = offset;
    return isBoundaryBetween(last, icuText::next(s, i));
}

// The end of a letter with its marks, in a script where marks join no letters; `i` is behind the
// letter. Nothing where only the full rules can tell.
std::optional<std::size_t> endOfMarks(std::string_view s, UChar32 letter, std::size_t i) {
    constexpr UChar32 firstIndic = 0x900;
    if (letter >= firstIndic || breakClass(letter) != U_GCB_OTHER) return std::nullopt;
    for (std::size_t end = i; end < s.size(); end = i) {
        const UChar32 c = icuText::next(s, i);
        if (breakClass(c) == U_GCB_EXTEND) continue;
        if (c < firstIndic && breakClass(c) == U_GCB_OTHER) return end;
        return std::nullopt;
    }
    return i;
}

}  // namespace

std::optional<std::size_t> offsetOfUtf16(std::string_view s, std::int64_t units) {
    if (units < 0) return std::nullopt;
    std::size_t i = 0;
    std::int64_t left = units;
    while (left > 0 && i < s.size()) {
        for (; left > 0 && i < s.size() && isPairOfBytes(s, i); i += 2) --left;
        const auto reach = std::min(s.size() - i, static_cast<std::size_t>(left));
        const std::size_t run = asciiPrefix(s.substr(i, reach));
        i += run;
        left -= static_cast<std::int64_t>(run);
        if (run == 0 && left > 0 && i < s.size()) left -= U16_LENGTH(icuText::next(s, i));
    }
    return left == 0 ? std::optional(i) : std::nullopt;
}

bool isCharacterBoundary(std::string_view s, std::size_t offset) {
    return isPlainBoundary(s, offset) || GraphemeIterator(s).isBoundary(offset);
}

std::size_t previousCharacter(std::string_view s, std::size_t offset) {
    std::size_t i = offset;
    icuText::previous(s, i);
    return isPlainBoundary(s, i) ? i : GraphemeIterator(s).preceding(offset);
}

std::size_t nextCharacter(std::string_view s, std::size_t offset) {
    std::size_t i = offset;
    const UChar32 first = icuText::next(s, i);
    if (isPlainBoundary(s, i)) return i;
    if (const auto end = endOfMarks(s, first, i)) return *end;
    return GraphemeIterator(s).following(offset);
}

std::size_t sharedStart(std::string_view a, std::string_view b) {
    std::size_t i = sharedLeadingBytes(a, b);
    const auto splits = [&i](std::string_view s) { return i < s.size() && isContinuation(s[i]); };
    while (i > 0 && (splits(a) || splits(b))) --i;
    for (;;) {
        if (!isCharacterBoundary(a, i))
            i = GraphemeIterator(a).preceding(i);
        else if (!isCharacterBoundary(b, i))
            i = GraphemeIterator(b).preceding(i);
        else
            return i;
    }
}

std::size_t sharedEnd(std::string_view a, std::string_view b, std::size_t reserved) {
    std::size_t n = sharedTrailingBytes(a, b, std::min(a.size(), b.size()) - reserved);
    while (n > 0 && isContinuation(a[a.size() - n])) --n;
    for (;;) {
        if (!isCharacterBoundary(a, a.size() - n))
            n = a.size() - GraphemeIterator(a).following(a.size() - n);
        else if (!isCharacterBoundary(b, b.size() - n))
            n = b.size() - GraphemeIterator(b).following(b.size() - n);
        else
            return n;
    }
}

bool isLetterOrNumber(std::string_view s, std::size_t offset) {
    return (U_GET_GC_MASK(icuText::next(s, offset)) & (U_GC_L_MASK | U_GC_N_MASK)) != 0;
}

bool isWordCharacter(std::string_view s, std::size_t offset) {
    return s[offset] == '_' || isLetterOrNumber(s, offset);
}

bool containsLetter(std::string_view s) {
    for (std::size_t i = 0; i < s.size();)
        if (u_isalpha(icuText::next(s, i))) return true;
    return false;
}

bool containsLineBreak(std::string_view s) {
    for (std::size_t i = 0; i < s.size();) {
        const UChar32 c = icuText::next(s, i);
        if ((c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029) return true;
    }
    return false;
}

}  // namespace quorvi::text
