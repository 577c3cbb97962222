#include "Quorvi/platform/linux/folder/FolderToken.h"

#include <charconv>
#include <string_view>

namespace quorvi {

namespace {

constexpr std::string_view mark = "folder1:";
constexpr std::size_t uuidSize = 36;

// Removes the number at the start of the text and returns it.
template <class Number>
std::optional<Number> takeNumber(std::string_view& text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

}  // namespace

std::string FolderToken::text() const {
    auto text = std::string(mark) + std::to_string(generation);
    for (const auto& [machine, number] : positions)
        text += "," + machine.string() + "=" + std::to_string(number);
    return text;
}

std::optional<FolderToken> FolderToken::parse(const std::string& text) {
    std::string_view rest = text;
    if (!rest.starts_with(mark)) return std::nullopt;
    rest.remove_prefix(mark.size());
    FolderToken token;
    const auto generation = takeNumber<std::uint32_t>(rest);
    if (!generation) return std::nullopt;
    token.generation = *generation;
    while (!rest.empty()) {
        if (rest.size() < uuidSize + 2 || rest[0] != ',' || rest[uuidSize + 1] != '=')
            return std::nullopt;
        const auto machine = Uuid::parse(rest.substr(1, uuidSize));
        rest.remove_prefix(uuidSize + 2);
        const auto number = takeNumber<std::uint64_t>(rest);
        if (!machine || !number) return std::nullopt;
        token.positions.emplace(*machine, *number);
    }
    return token;
}

}  // namespace quorvi
