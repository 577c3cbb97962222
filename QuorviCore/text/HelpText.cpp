#include "QuorviCore/text/HelpText.h"

namespace quorvi {

namespace {

constexpr std::size_t width = 80;
constexpr std::size_t textColumn = 26;

}  // namespace

void HelpText::section(std::string_view title) {
    text_ += '\n';
    wrap(title, 0, 0);
}

void HelpText::command(std::string_view name, std::string_view argument, std::string_view text) {
    entry(std::string(name).append(argument), text);
}

void HelpText::option(std::string_view names, std::string_view argument, std::string_view text) {
    std::string name;
    if (const auto bar = names.find('|'); bar != std::string_view::npos) {
        name = "-" + std::string(names.substr(0, bar)) + ", ";
        names.remove_prefix(bar + 1);
    }
    entry(name.append("--").append(names).append(argument), text);
}

void HelpText::entry(std::string name, std::string_view text) {
    name.insert(0, "  ");
    if (name.size() + 2 > textColumn)
        name += '\n' + std::string(textColumn, ' ');
    else
        name.resize(textColumn, ' ');
    text_ += name;
    wrap(text, textColumn, textColumn);
}

void HelpText::wrap(std::string_view words, std::size_t column, std::size_t indent) {
    bool isFirst = true;
    while (!words.empty()) {
        const auto end = words.find(' ');
        std::string word;
        for (const char c : words.substr(0, end))
            if (c != '`') word += c;
        words.remove_prefix(end == std::string_view::npos ? words.size() : end + 1);
        if (!isFirst && column + 1 + word.size() > width) {
            text_ += '\n' + std::string(indent, ' ');
            column = indent;
        } else if (!isFirst) {
            text_ += ' ';
            ++column;
        }
        text_ += word;
        column += word.size();
        isFirst = false;
    }
    text_ += '\n';
}

}  // namespace quorvi
