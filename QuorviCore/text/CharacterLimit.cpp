#include "QuorviCore/text/GraphemeIterator.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi::text {

namespace {

using icuText::next;

// Counts code points that can begin a user-perceived character. Implements the segmentation rules
// for marks, joined emoji and flags; the others (Hangul, Indic scripts, line ends) can only make
// the count smaller.
class CharacterBound {
public:
    void add(UChar32 c) {
        const int32_t kind = u_getIntPropertyValue(c, UCHAR_GRAPHEME_CLUSTER_BREAK);
        if (!joins(c, kind)) ++count_;
        const bool continues = (kind == U_GCB_EXTEND || kind == U_GCB_ZWJ) && last_ != U_GCB_ZWJ;
        if (!continues) isPictograph_ = u_hasBinaryProperty(c, UCHAR_EXTENDED_PICTOGRAPHIC) != 0;
        isOpenFlag_ = kind == U_GCB_REGIONAL_INDICATOR && !isOpenFlag_;
        last_ = kind;
    }
    std::size_t count() const { return count_; }

private:
    bool joins(UChar32 c, int32_t kind) const {
        if (kind == U_GCB_EXTEND || kind == U_GCB_ZWJ || kind == U_GCB_SPACING_MARK)
            return last_ != U_GCB_CONTROL && last_ != U_GCB_CR && last_ != U_GCB_LF;
        if (kind == U_GCB_REGIONAL_INDICATOR) return isOpenFlag_;
        return last_ == U_GCB_ZWJ && isPictograph_ &&
               u_hasBinaryProperty(c, UCHAR_EXTENDED_PICTOGRAPHIC);
    }

    std::size_t count_ = 0;
    int32_t last_ = U_GCB_CONTROL;  // as at the start of the text
    bool isPictograph_ = false;     // and only marks and one joiner since
    bool isOpenFlag_ = false;
};

}  // namespace

bool hasMoreCharacters(std::string_view s, std::size_t limit) {
    if (s.size() <= limit) return false;
    if (isAscii(s)) return characterCount(s) > limit;
    CharacterBound bound;
    for (std::size_t i = 0; i < s.size() && bound.count() <= limit;) bound.add(next(s, i));
    if (bound.count() <= limit) return false;
    std::size_t count = 0;
    GraphemeIterator(s).forEachEnd([&](std::size_t) { return ++count <= limit; });
    return count > limit;
}

}  // namespace quorvi::text
