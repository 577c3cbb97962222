#include "QuorviCore/updates/ReleaseNotes.h"

#include <algorithm>
#include <array>
#include <vector>

#include "QuorviCore/updates/Appcast.h"

namespace quorvi {

namespace {

constexpr std::size_t maximumBytes = std::size_t{64} << 10;
// Less than greatestDepth: each level is another indentation in a narrow window.
constexpr std::size_t maximumDepth = 12;
constexpr std::size_t maximumTag = 2048;  // bytes; keeps the work linear

constexpr std::array<std::string_view, 17> kept{"p",  "br",     "ul",  "ol",         "li", "b",
                                                "i",  "strong", "em",  "h1",         "h2", "h3",
                                                "h4", "code",   "pre", "blockquote", "a"};
// Elements whose content is dropped.
constexpr std::array<std::string_view, 7> silent{"script", "style",  "title", "template",
                                                 "iframe", "object", "svg"};
// Elements that become line breaks, so that words of two paragraphs stay apart.
constexpr std::array<std::string_view, 6> breaking{"div", "tr", "section", "article", "dt", "dd"};

template <std::size_t size>
bool contains(const std::array<std::string_view, size>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string lowered(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return result;
}

struct Tag {
    std::string name;  // lower case, empty when this is no tag
    bool closes = false;
    std::string_view attributes;
    std::size_t end = 0;  // behind its ">"
};

// Returns the tag that begins at the "<".
Tag tagAt(std::string_view html, std::size_t at) {
    Tag tag;
    std::size_t i = at + 1;
    if (i < html.size() && html[i] == '/') {
        tag.closes = true;
        ++i;
    }
    // No known tag has a longer name.
    const auto start = html.substr(i, 16);
    const auto nameEnd = i + std::min(start.find_first_of(" \t\r\n/>"), start.size());
    const auto name = lowered(html.substr(i, nameEnd - i));
    const bool valid = !name.empty() && name[0] >= 'a' && name[0] <= 'z';
    const auto limit = std::min(html.size(), at + maximumTag);
    char quote = 0;
    for (i = nameEnd; valid && i < limit; ++i) {
        const char c = html[i];
        if (quote ? c == quote : c == '"' || c == '\'') {
            quote = quote ? 0 : c;
        } else if (!quote && c == '>') {
            tag.name = name;
            tag.attributes = html.substr(nameEnd, i - nameEnd);
            tag.end = i + 1;
            break;
        }
    }
    return tag;
}

// Returns the quoted address of a link if it may be followed; otherwise empty.
std::string_view linkTarget(std::string_view attributes) {
    const auto found = lowered(attributes).find("href=");
    if (found == std::string::npos || found + 6 >= attributes.size()) return {};
    const char quote = attributes[found + 5];
    if (quote != '"' && quote != '\'') return {};
    const auto value = attributes.substr(found + 6);
    const auto url = value.substr(0, value.find(quote));
    return isSecureAddress(url) && url.find('\'') == url.npos ? url : std::string_view{};
}

class Cleaner {
public:
    std::string clean(std::string_view html) {
        const bool plain = html.find('<') == html.npos;
        for (std::size_t i = 0; i < html.size();) {
            const char c = html[i];
            if (c == '<') {
                i = tag(html, i);
                continue;
            }
            if (c == '>')
                out_ += "&gt;";
            else if (c == '\n' && plain)
                out_ += "<br>";
            else
                out_ += c;
            ++i;
        }
        closeDownTo(0);
        return std::move(out_);
    }

private:
    // Handles the tag or comment at the "<" and returns the offset after it.
    std::size_t tag(std::string_view html, std::size_t at) {
        if (html.substr(at).starts_with("<!")) {
            const bool comment = html.substr(at).starts_with("<!--");
            const auto end = html.find(comment ? "-->" : ">", at);
            return end == html.npos ? html.size() : end + (comment ? 3 : 1);
        }
        const auto tag = tagAt(html, at);
        if (tag.name.empty()) {
            out_ += "&lt;";
            return at + 1;
        }
        if (contains(silent, tag.name)) return tag.closes ? tag.end : behind(html, tag);
        if (contains(breaking, tag.name) || tag.name == "br") {
            if (!tag.closes) out_ += "<br>";
        } else if (contains(kept, tag.name)) {
            tag.closes ? close(tag.name) : open(tag);
        }
        return tag.end;
    }

    // Returns the offset after an element whose content is dropped.
    static std::size_t behind(std::string_view html, const Tag& opened) {
        for (auto at = html.find("</", opened.end); at != html.npos; at = html.find("</", at + 2)) {
            const auto tag = tagAt(html, at);
            if (tag.name == opened.name) return tag.end;
        }
        return html.size();
    }

    void open(const Tag& tag) {
        if (open_.size() >= maximumDepth) return;
        out_ += "<" + tag.name;
        if (tag.name == "a")
            if (const auto url = linkTarget(tag.attributes); !url.empty())
                out_.append(" href=\"").append(url).append("\"");
        out_ += ">";
        open_.push_back(tag.name);
    }
    void close(const std::string& name) {
        const auto found = std::find(open_.rbegin(), open_.rend(), name);
        if (found != open_.rend()) closeDownTo(static_cast<std::size_t>(open_.rend() - found) - 1);
    }
    void closeDownTo(std::size_t depth) {
        for (; open_.size() > depth; open_.pop_back()) out_ += "</" + open_.back() + ">";
    }

    std::string out_;
    std::vector<std::string> open_;
};

}  // namespace

std::string safeReleaseNotes(std::string_view notes) {
    if (notes.size() > maximumBytes) {
        // Do not split a character.
        std::size_t end = maximumBytes;
        while (end > 0 && (static_cast<unsigned char>(notes[end]) & 0xC0) == 0x80) --end;
        notes = notes.substr(0, end);
    }
    return Cleaner().clean(notes);
}

}  // namespace quorvi
