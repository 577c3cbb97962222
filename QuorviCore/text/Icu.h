#pragma once

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <stdexcept>
#include <string>
#include <string_view>

// Helpers over ICU. Private to this folder.
namespace quorvi::text::icuText {

inline void check(UErrorCode status) {
    if (U_FAILURE(status)) throw std::runtime_error("The Unicode data could not be loaded.");
}

inline const icu::Normalizer2& nfc() {
    static const icu::Normalizer2* instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        const auto* n = icu::Normalizer2::getNFCInstance(status);
        check(status);
        return n;
    }();
    return *instance;
}

inline const icu::Normalizer2& nfd() {
    static const icu::Normalizer2* instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        const auto* n = icu::Normalizer2::getNFDInstance(status);
        check(status);
        return n;
    }();
    return *instance;
}

inline icu::UnicodeString fromUtf8(std::string_view s) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(s.data(), static_cast<int32_t>(s.size())));
}

inline std::string toUtf8(const icu::UnicodeString& s) {
    std::string result;
    s.toUTF8String(result);
    return result;
}

// Returns the code point that starts at `i`, and moves `i` past it.
inline UChar32 next(std::string_view s, std::size_t& i) {
    auto at = static_cast<int32_t>(i);
    UChar32 c;
    U8_NEXT_OR_FFFD(s.data(), at, static_cast<int32_t>(s.size()), c);
    i = static_cast<std::size_t>(at);
    return c;
}

// Returns the code point that ends at `i`, and moves `i` before it.
inline UChar32 previous(std::string_view s, std::size_t& i) {
    for (std::size_t length = 1; length <= 4 && length <= i; ++length) {
        std::size_t end = i - length;
        if (U8_IS_TRAIL(s[end])) continue;
        const UChar32 c = next(s, end);
        if (end != i) break;
        i -= length;
        return c;
    }
    --i;  // a byte of a malformed sequence
    return 0xFFFD;
}

}  // namespace quorvi::text::icuText
