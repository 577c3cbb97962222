#include "QuorviCore/text/Transliteration.h"

#include <unicode/translit.h>
#include <unicode/uscript.h>

#include <memory>
#include <mutex>

#include "QuorviCore/text/Icu.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi::text {

namespace {

// The rules leave text in the Latin script unchanged, including punctuation and marks.
bool isLatinOnly(std::string_view s) {
    for (std::size_t i = asciiPrefix(s); i < s.size();) {
        UErrorCode status = U_ZERO_ERROR;
        const UScriptCode script = uscript_getScript(icuText::next(s, i), &status);
        if (script != USCRIPT_LATIN && script != USCRIPT_COMMON && script != USCRIPT_INHERITED)
            return false;
    }
    return true;
}

}  // namespace

std::string toLatin(std::string_view s) {
    if (isLatinOnly(s)) return std::string(s);
    // A transliterator may not be shared between threads without a lock.
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    static const std::unique_ptr<icu::Transliterator> rules = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::Transliterator> made(
            icu::Transliterator::createInstance("Any-Latin", UTRANS_FORWARD, status));
        if (U_FAILURE(status)) made.reset();
        return made;
    }();
    if (!rules) return std::string(s);
    auto text = icuText::fromUtf8(s);
    rules->transliterate(text);
    return icuText::toUtf8(text);
}

}  // namespace quorvi::text
