#include "QuorviCore/text/Text.h"

#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <memory>
#include <stdexcept>

namespace quorvi::text {

namespace {

const icu::Normalizer2& nfc() {
    static const icu::Normalizer2* instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        const auto* n = icu::Normalizer2::getNFCInstance(status);
        if (U_FAILURE(status)) throw std::runtime_error("The Unicode data could not be loaded.");
        return n;
    }();
    return *instance;
}

icu::UnicodeString toUnicode(std::string_view s) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(s.data(), static_cast<int32_t>(s.size())));
}

bool isAscii(std::string_view s) {
    for (unsigned char c : s)
        if (c >= 0x80) return false;
    return true;
}

// Calls visit(end offset in bytes) at every character boundary after the start, until it says stop.
template <class Visit>
void forEachCharacterEnd(std::string_view s, Visit visit) {
    thread_local std::unique_ptr<icu::BreakIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::BreakIterator> it(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        if (U_FAILURE(status)) throw std::runtime_error("The Unicode data could not be loaded.");
        return it;
    }();
    UErrorCode status = U_ZERO_ERROR;
    UText view = UTEXT_INITIALIZER;
    utext_openUTF8(&view, s.data(), static_cast<int64_t>(s.size()), &status);
    iterator->setText(&view, status);
    if (U_SUCCESS(status)) {
        for (int32_t end = iterator->next(); end != icu::BreakIterator::DONE; end = iterator->next())
            if (!visit(static_cast<std::size_t>(end))) break;
    }
    utext_close(&view);
}

}  // namespace

bool equal(std::string_view a, std::string_view b) {
    if (a == b) return true;
    if (isAscii(a) && isAscii(b)) return false;
    return toNfc(a) == toNfc(b);
}

std::string toNfc(std::string_view s) {
    if (isAscii(s)) return std::string(s);
    UErrorCode status = U_ZERO_ERROR;
    std::string result;
    nfc().normalize(toUnicode(s), status).toUTF8String(result);
    return result;
}

std::int64_t utf16Length(std::string_view s) {
    std::int64_t units = 0;
    const auto size = static_cast<int32_t>(s.size());
    for (int32_t i = 0; i < size;) {
        UChar32 c;
        U8_NEXT_OR_FFFD(s.data(), i, size, c);
        units += U16_LENGTH(c);
    }
    return units;
}

std::size_t characterCount(std::string_view s) {
    std::size_t count = 0;
    forEachCharacterEnd(s, [&](std::size_t) { return ++count, true; });
    return count;
}

std::string_view firstCharacters(std::string_view s, std::size_t count) {
    if (count == 0) return {};
    if (s.size() <= count) return s;
    std::size_t seen = 0;
    std::size_t cut = 0;
    forEachCharacterEnd(s, [&](std::size_t end) { return cut = end, ++seen < count; });
    return s.substr(0, cut);
}

std::string_view trimmed(std::string_view s) {
    const auto size = static_cast<int32_t>(s.size());
    int32_t begin = 0;
    while (begin < size) {
        int32_t next = begin;
        UChar32 c;
        U8_NEXT_OR_FFFD(s.data(), next, size, c);
        if (!u_isUWhiteSpace(c)) break;
        begin = next;
    }
    int32_t end = size;
    while (end > begin) {
        int32_t previous = end;
        UChar32 c;
        do {
            --previous;
        } while (previous > begin && U8_IS_TRAIL(s[static_cast<std::size_t>(previous)]));
        int32_t after = previous;
        U8_NEXT_OR_FFFD(s.data(), after, end, c);
        if (!u_isUWhiteSpace(c)) break;
        end = previous;
    }
    return s.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

bool containsWhiteSpace(std::string_view s) {
    const auto size = static_cast<int32_t>(s.size());
    for (int32_t i = 0; i < size;) {
        UChar32 c;
        U8_NEXT_OR_FFFD(s.data(), i, size, c);
        if (u_isUWhiteSpace(c)) return true;
    }
    return false;
}

std::string upperCased(std::string_view s) {
    std::string result;
    toUnicode(s).toUpper(icu::Locale::getRoot()).toUTF8String(result);
    return result;
}

bool isValidUtf8(std::string_view s) {
    const auto size = static_cast<int32_t>(s.size());
    for (int32_t i = 0; i < size;) {
        UChar32 c;
        U8_NEXT(s.data(), i, size, c);
        if (c < 0) return false;
    }
    return true;
}

}  // namespace quorvi::text
