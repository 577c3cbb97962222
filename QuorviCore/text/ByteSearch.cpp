#include "QuorviCore/text/ByteSearch.h"

#include <algorithm>
#include <bit>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace quorvi::text {

namespace {

// Rough rarity of a byte in texts; a rarer byte excludes more positions. The first byte of a
// non-ASCII code point is the same for a whole alphabet, so it excludes the fewest.
std::size_t rarity(char c) {
    constexpr std::string_view commonestFirst = " etaoinshrdlcumwfgypbvk";
    if (static_cast<unsigned char>(c) >= 0xC0) return 0;
    return 1 + std::min(commonestFirst.find(c), commonestFirst.size());
}

}  // namespace

ByteSearch::ByteSearch(std::string_view needle) : needle_(needle), first_(0), second_(0) {
    for (std::size_t i = 1; i < needle.size(); ++i) {
        if (rarity(needle[i]) > rarity(needle[first_])) {
            second_ = first_;
            first_ = i;
        } else if (second_ == first_ || rarity(needle[i]) > rarity(needle[second_])) {
            second_ = i;
        }
    }
}

std::size_t ByteSearch::find(std::string_view haystack, std::size_t begin) const {
#ifdef __SSE2__
    if (begin > haystack.size() || haystack.size() - begin < needle_.size()) return haystack.npos;
    const char* text = haystack.data();
    const auto first = _mm_set1_epi8(needle_[first_]);
    const auto second = _mm_set1_epi8(needle_[second_]);
    const auto load = [text](std::size_t at) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
    };
    // A bit for each position from `at` on where both bytes match.
    const auto candidates = [&](std::size_t at) {
        const auto both = _mm_and_si128(_mm_cmpeq_epi8(load(at + first_), first),
                                        _mm_cmpeq_epi8(load(at + second_), second));
        return static_cast<unsigned>(_mm_movemask_epi8(both));
    };
    std::size_t at = begin;
    for (; at + needle_.size() + 16 <= haystack.size(); at += 16) {
        for (unsigned bits = candidates(at); bits != 0; bits &= bits - 1) {
            const std::size_t place = at + static_cast<std::size_t>(std::countr_zero(bits));
            if (std::memcmp(text + place, needle_.data(), needle_.size()) == 0) return place;
        }
    }
    return haystack.find(needle_, at);
#else
    return haystack.find(needle_, begin);
#endif
}

}  // namespace quorvi::text
