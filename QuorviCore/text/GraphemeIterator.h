#pragma once

#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <memory>

#include "QuorviCore/text/Icu.h"

namespace quorvi::text {

// Finds the boundaries between user-perceived characters of a UTF-8 text, by the full rules.
// Borrows the break iterator of the thread, so only one may exist per thread. Private to this
// folder.
class GraphemeIterator {
public:
    explicit GraphemeIterator(std::string_view s) : rules_(shared()) {
        UErrorCode status = U_ZERO_ERROR;
        utext_openUTF8(&view_, s.data(), static_cast<int64_t>(s.size()), &status);
        rules_.setText(&view_, status);
        icuText::check(status);
    }
    ~GraphemeIterator() { utext_close(&view_); }
    GraphemeIterator(const GraphemeIterator&) = delete;
    GraphemeIterator& operator=(const GraphemeIterator&) = delete;

    bool isBoundary(std::size_t offset) { return rules_.isBoundary(static_cast<int32_t>(offset)); }
    std::size_t preceding(std::size_t offset) {
        return static_cast<std::size_t>(rules_.preceding(static_cast<int32_t>(offset)));
    }
    std::size_t following(std::size_t offset) {
        return static_cast<std::size_t>(rules_.following(static_cast<int32_t>(offset)));
    }

    // Calls visit(end offset) for each character until it returns false.
    template <class Visit>
    void forEachEnd(Visit visit) {
        for (int32_t end = rules_.next(); end != icu::BreakIterator::DONE; end = rules_.next())
            if (!visit(static_cast<std::size_t>(end))) break;
    }

private:
    static icu::BreakIterator& shared() {
        thread_local const std::unique_ptr<icu::BreakIterator> iterator = [] {
            UErrorCode status = U_ZERO_ERROR;
            std::unique_ptr<icu::BreakIterator> it(
                icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
            icuText::check(status);
            return it;
        }();
        return *iterator;
    }

    UText view_ = UTEXT_INITIALIZER;
    icu::BreakIterator& rules_;
};

}  // namespace quorvi::text
