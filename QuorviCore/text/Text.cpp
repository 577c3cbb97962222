#include "QuorviCore/text/Text.h"

#include <algorithm>

#include "QuorviCore/text/GraphemeIterator.h"
#include "QuorviCore/text/Icu.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi::text {

using icuText::fromUtf8;

namespace {

// Whether the decomposition at the offset is independent of the preceding text. True only at the
// start of a code point.
bool beginsDecomposition(std::string_view s, std::size_t offset) {
    return !isContinuation(s[offset]) && icuText::nfd().hasBoundaryBefore(icuText::next(s, offset));
}

bool isNormalizationBoundary(std::string_view s, std::size_t offset) {
    return offset == 0 || offset == s.size() || beginsDecomposition(s, offset);
}

}  // namespace

bool equal(std::string_view a, std::string_view b) {
    if (a == b) return true;
    // Only the part between the common start and the common end needs normalising.
    std::size_t start = sharedLeadingBytes(a, b);
    while (!(isNormalizationBoundary(a, start) && isNormalizationBoundary(b, start))) --start;
    a.remove_prefix(start);
    b.remove_prefix(start);
    std::size_t end = sharedTrailingBytes(a, b, std::min(a.size(), b.size()));
    while (
        !(isNormalizationBoundary(a, a.size() - end) && isNormalizationBoundary(b, b.size() - end)))
        --end;
    a.remove_suffix(end);
    b.remove_suffix(end);
    if (isAscii(a) && isAscii(b)) return a == b;
    // Decomposing changes the number of bytes by a factor of three at most, up or down.
    constexpr std::size_t largestFactor = 9;
    if (a.size() > largestFactor * b.size() || b.size() > largestFactor * a.size()) return false;
    return toNfc(a) == toNfc(b);
}

bool equalJoined(std::string_view prefix, std::string_view middle, std::string_view suffix,
                 std::string_view whole) {
    std::size_t start = sharedLeadingBytes(prefix, whole);
    const auto isCut = [&] {
        return start < prefix.size() && start < whole.size() &&
               beginsDecomposition(prefix, start) && beginsDecomposition(whole, start);
    };
    while (start > 0 && !isCut()) --start;
    prefix.remove_prefix(start);
    whole.remove_prefix(start);
    std::size_t end = sharedTrailingBytes(suffix, whole, std::min(suffix.size(), whole.size()));
    while (end > 0 && !beginsDecomposition(suffix, suffix.size() - end)) --end;
    suffix.remove_suffix(end);
    whole.remove_suffix(end);
    std::string joined;
    joined.reserve(prefix.size() + middle.size() + suffix.size());
    joined += prefix;
    joined += middle;
    joined += suffix;
    return equal(joined, whole);
}

bool isNfc(std::string_view s) {
    if (isAscii(s)) return true;
    if (!isValidUtf8(s)) return false;
    UErrorCode status = U_ZERO_ERROR;
    const icu::StringPiece piece(s.data(), static_cast<int32_t>(s.size()));
    return icuText::nfc().isNormalizedUTF8(piece, status) && U_SUCCESS(status);
}

std::string toNfc(std::string_view s) {
    if (isNfc(s)) return std::string(s);
    UErrorCode status = U_ZERO_ERROR;
    return icuText::toUtf8(icuText::nfc().normalize(fromUtf8(s), status));
}

std::string wellFormed(std::string_view s) {
    return isValidUtf8(s) ? std::string(s) : icuText::toUtf8(fromUtf8(s));
}

std::int64_t utf16Length(std::string_view s) {
    std::int64_t units = 0;
    for (std::size_t i = 0; i < s.size();) {
        for (; i < s.size() && isPairOfBytes(s, i); i += 2) ++units;
        const std::size_t run = asciiPrefix(s.substr(i));
        i += run;
        units += static_cast<std::int64_t>(run);
        if (run == 0 && i < s.size()) units += U16_LENGTH(icuText::next(s, i));
    }
    return units;
}

std::size_t characterCount(std::string_view s) {
    if (isAscii(s)) {
        std::size_t count = s.size();
        for (std::size_t at = s.find("\r\n"); at != s.npos; at = s.find("\r\n", at + 2)) --count;
        return count;
    }
    std::size_t count = 0;
    GraphemeIterator(s).forEachEnd([&](std::size_t) { return ++count, true; });
    return count;
}

std::string_view firstCharacters(std::string_view s, std::size_t count) {
    if (count == 0) return {};
    if (s.size() <= count) return s;
    std::size_t seen = 0;
    std::size_t cut = 0;
    GraphemeIterator(s).forEachEnd([&](std::size_t end) { return cut = end, ++seen < count; });
    return s.substr(0, cut);
}

std::string_view trimmed(std::string_view s) {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < s.size() && u_isUWhiteSpace(icuText::next(s, i));) begin = i;
    std::size_t end = s.size();
    for (std::size_t i = end; i > begin && u_isUWhiteSpace(icuText::previous(s, i));) end = i;
    return s.substr(begin, end - begin);
}

bool containsWhiteSpace(std::string_view s) {
    for (std::size_t i = 0; i < s.size();)
        if (u_isUWhiteSpace(icuText::next(s, i))) return true;
    return false;
}

std::string upperCased(std::string_view s) {
    return icuText::toUtf8(fromUtf8(s).toUpper(icu::Locale::getRoot()));
}

bool isValidUtf8(std::string_view s) {
    for (std::size_t i = 0;;) {
        i += asciiPrefix(s.substr(i));
        while (i < s.size() && isPairOfBytes(s, i)) i += 2;
        if (i == s.size()) return true;
        if (static_cast<unsigned char>(s[i]) < 0x80) continue;
        // One code point of another length, from a view that ICU's offsets can hold.
        const auto view = s.substr(i, U8_MAX_LENGTH);
        int32_t length = 0;
        UChar32 c;
        U8_NEXT(view.data(), length, static_cast<int32_t>(view.size()), c);
        if (c < 0) return false;
        i += static_cast<std::size_t>(length);
    }
}

}  // namespace quorvi::text
