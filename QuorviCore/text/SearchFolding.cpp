#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "QuorviCore/text/Folding.h"
#include "QuorviCore/text/Icu.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi::text {

namespace {

// Folded forms of the code points below `limit`. They fold independently of their neighbours: marks
// vanish, and the rest never composes.
class FoldedForms {
public:
    static constexpr UChar32 limit = 0x1100;  // the first letters that compose with one another

    struct Form {
        std::array<char, 7> bytes{};
        unsigned char size = 0;
    };

    static const FoldedForms& shared() {
        static const FoldedForms forms;
        return forms;
    }
    const Form& of(UChar32 c) const { return forms_[static_cast<std::size_t>(c)]; }

private:
    FoldedForms() : forms_(limit) {
        for (UChar32 c = 0; c < limit; ++c) {
            std::string one;
            icu::UnicodeString(c).toUTF8String(one);
            const std::string folded = caseFolded(withoutDiacritics(one));
            auto& form = forms_[static_cast<std::size_t>(c)];
            form.size = static_cast<unsigned char>(folded.size());
            std::memcpy(form.bytes.data(), folded.data(), folded.size());
        }
    }

    std::vector<Form> forms_;
};

}  // namespace

std::string searchFolded(std::string_view s) {
    const auto& forms = FoldedForms::shared();
    std::string result;
    result.reserve(s.size());
    for (std::size_t i = 0; i < s.size();) {
        const std::size_t run = asciiPrefix(s.substr(i));
        const std::size_t end = result.size();
        result.resize(end + run);
        std::transform(s.begin() + static_cast<std::ptrdiff_t>(i),
                       s.begin() + static_cast<std::ptrdiff_t>(i + run),
                       result.begin() + static_cast<std::ptrdiff_t>(end), asciiLower);
        i += run;
        for (; i < s.size() && static_cast<unsigned char>(s[i]) >= 0x80;) {
            const UChar32 c = icuText::next(s, i);
            if (c >= FoldedForms::limit && !(c >= 0x2000 && c < 0x2100 ? u_ispunct(c) : false))
                return caseFolded(withoutDiacritics(s));
            if (c >= FoldedForms::limit) {
                icu::UnicodeString(c).toUTF8String(result);
                continue;
            }
            const auto& form = forms.of(c);
            result.append(form.bytes.data(), form.size);
        }
    }
    return result;
}

}  // namespace quorvi::text
