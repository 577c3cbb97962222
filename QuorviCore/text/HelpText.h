#pragma once

#include <string>
#include <string_view>

namespace quorvi {

// Builds the text of a program's --help, wrapped at 80 columns. A plain value; for texts in ASCII,
// in which backquotes mark what is typed and are left out.
class HelpText {
public:
    // The introduction is taken as it is, without wrapping.
    explicit HelpText(std::string introduction) : text_(std::move(introduction)) {}

    // Begins a group of entries.
    void section(std::string_view title);
    void command(std::string_view name, std::string_view argument, std::string_view text);
    // names: "help", or "h|help" for -h and --help.
    void option(std::string_view names, std::string_view argument, std::string_view text);
    // Anything else with a meaning, such as an exit status.
    void entry(std::string name, std::string_view text);

    const std::string& text() const { return text_; }

private:
    // Appends words to the text, whose last line has that many columns already.
    void wrap(std::string_view words, std::size_t column, std::size_t indent);

    std::string text_;
};

}  // namespace quorvi
