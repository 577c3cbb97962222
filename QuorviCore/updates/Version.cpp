#include "QuorviCore/updates/Version.h"

#include <algorithm>
#include <string>
#include <vector>

namespace quorvi {

namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// A run of letters, or the digits of a number without leading zeros. An absent segment is zero.
struct Segment {
    bool isNumber = true;
    std::string characters;

    bool isZero() const { return isNumber && characters.empty(); }

    std::weak_ordering operator<=>(const Segment& other) const {
        if (isNumber != other.isNumber)
            return isNumber ? std::weak_ordering::greater : std::weak_ordering::less;
        // Without leading zeros the longer number is the larger one, whatever its size.
        if (isNumber && characters.size() != other.characters.size())
            return characters.size() <=> other.characters.size();
        return characters.compare(other.characters) <=> 0;
    }
    bool operator==(const Segment&) const = default;
};

std::vector<Segment> segments(std::string_view version) {
    version = version.substr(0, version.find('+'));
    if (version.size() > 1 && lowered(version[0]) == 'v' && isDigit(version[1]))
        version.remove_prefix(1);
    std::vector<Segment> result;
    const auto dropZeros = [&result] {
        while (!result.empty() && result.back().isZero()) result.pop_back();
    };
    for (std::size_t at = 0; at < version.size();) {
        const bool number = isDigit(version[at]);
        if (!number && !isLetter(version[at])) {
            ++at;
            continue;
        }
        Segment segment{number, {}};
        for (; at < version.size() && (number ? isDigit(version[at]) : isLetter(version[at])); ++at)
            if (!number || version[at] != '0' || !segment.characters.empty())
                segment.characters += lowered(version[at]);
        if (!number) dropZeros();  // 1.0.0b2 is 1.0b2
        result.push_back(std::move(segment));
    }
    dropZeros();
    return result;
}

}  // namespace

std::weak_ordering compareVersions(std::string_view a, std::string_view b) {
    auto left = segments(a);
    auto right = segments(b);
    const auto size = std::max(left.size(), right.size());
    left.resize(size);
    right.resize(size);
    return std::lexicographical_compare_three_way(left.begin(), left.end(), right.begin(),
                                                  right.end());
}

bool isVersion(std::string_view text) {
    const auto isPart = [](char c) {
        return isDigit(c) || isLetter(c) || c == '.' || c == '-' || c == '+' || c == '~';
    };
    return !text.empty() && text.size() <= 64 && (isDigit(text[0]) || isLetter(text[0])) &&
           std::all_of(text.begin(), text.end(), isPart);
}

}  // namespace quorvi
