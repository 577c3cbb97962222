#include "QuorviCore/text/Tokens.h"

#include <unicode/ustring.h>

#include <array>

#include "QuorviCore/text/Icu.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi::text {

namespace {

enum class Kind : std::uint8_t { word, symbol, space };

struct Letter {
    UChar32 folded;  // negative: folds to several code points
    Kind kind;
};

constexpr UChar32 foldsToSeveral = -1;

Kind kindOf(UChar32 c) {
    if (c == '_' || (U_GET_GC_MASK(c) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0)
        return Kind::word;
    return u_isUWhiteSpace(c) ? Kind::space : Kind::symbol;
}

struct Folding {
    std::array<UChar, 8> units;
    int32_t length;
};

Folding fullFolding(UChar32 c) {
    Folding result{};
    std::array<UChar, 2> source{};
    int32_t n = 0;
    U16_APPEND_UNSAFE(source.data(), n, c);
    UErrorCode status = U_ZERO_ERROR;
    result.length = u_strFoldCase(result.units.data(), static_cast<int32_t>(result.units.size()),
                                  source.data(), n, U_FOLD_CASE_DEFAULT, &status);
    return result;
}

// Above the table, only code points of two blocks can fold to several: Latin and Greek with
// accents, and the ligatures.
bool mayFoldToSeveral(UChar32 c) {
    return c < 0x600 || (c >= 0x1E00 && c < 0x2000) || (c >= 0xFB00 && c < 0xFB50);
}

Letter examine(UChar32 c) {
    if (!mayFoldToSeveral(c)) return {u_foldCase(c, U_FOLD_CASE_DEFAULT), kindOf(c)};
    const Folding folding = fullFolding(c);
    int32_t i = 0;
    UChar32 folded;
    U16_NEXT(folding.units.data(), i, folding.length, folded);
    return {i == folding.length ? folded : foldsToSeveral, kindOf(c)};
}

using Table = std::array<Letter, 0x600>;

const Table& commonLetters() {
    static const Table table = [] {
        Table t{};
        for (std::size_t c = 0; c < t.size(); ++c) t[c] = examine(static_cast<UChar32>(c));
        return t;
    }();
    return table;
}

// Writes the folded form and the hash of a token.
class Folder {
public:
    explicit Folder(char* out) : out_(out) {}

    void begin() { hash_ = 2166136261U; }
    void add(UChar32 c, Letter letter) {
        if (letter.folded >= 0) return add(letter.folded);
        const Folding folding = fullFolding(c);
        for (int32_t i = 0; i < folding.length;) {
            UChar32 part;
            U16_NEXT(folding.units.data(), i, folding.length, part);
            add(part);
        }
    }
    std::uint32_t hash() const {
        std::uint32_t h = hash_;
        h = (h ^ (h >> 16)) * 0x85EBCA6BU;
        h = (h ^ (h >> 13)) * 0xC2B2AE35U;
        return h ^ (h >> 16);
    }
    char* position() const { return out_; }

private:
    void add(UChar32 folded) {
        hash_ = (hash_ ^ static_cast<std::uint32_t>(folded)) * 16777619U;
        if (folded < 0x80) {
            *out_++ = static_cast<char>(folded);
        } else {
            int32_t n = 0;
            U8_APPEND_UNSAFE(out_, n, folded);
            out_ += n;
        }
    }

    char* out_;
    std::uint32_t hash_ = 0;
};

}  // namespace

void Tokens::assign(std::string_view s) {
    // A folding has at most three code points of two bytes each for two bytes of text.
    constexpr std::size_t growth = 3;
    tokens_.clear();
    if (folded_.size() < growth * s.size() + 8) folded_.resize(growth * s.size() + 8);
    const Table& table = commonLetters();
    const auto read = [&](std::size_t& i, UChar32& c) {
        const auto first = static_cast<unsigned char>(s[i]);
        c = first < 0x80 ? (++i, first) : icuText::next(s, i);
        return static_cast<std::size_t>(c) < table.size() ? table[static_cast<std::size_t>(c)]
                                                          : examine(c);
    };
    Folder folder(folded_.data());
    const auto offset = [&] {
        return static_cast<std::uint32_t>(folder.position() - folded_.data());
    };
    bool followsSpace = false;
    for (std::size_t i = 0; i < s.size();) {
        const auto begin = static_cast<std::uint32_t>(i);
        UChar32 c;
        Letter letter = read(i, c);
        if (letter.kind == Kind::space) {
            followsSpace = true;
            continue;
        }
        const bool isWord = letter.kind == Kind::word;
        const std::uint32_t foldedBegin = offset();
        folder.begin();
        folder.add(c, letter);
        while (isWord && i < s.size()) {
            std::size_t after = i;
            letter = read(after, c);
            if (letter.kind != Kind::word) break;
            folder.add(c, letter);
            i = after;
        }
        tokens_.push_back({begin, static_cast<std::uint32_t>(i), foldedBegin, offset(),
                           folder.hash(), isWord, followsSpace});
        followsSpace = false;
    }
}

}  // namespace quorvi::text
