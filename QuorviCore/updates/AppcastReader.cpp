#include <expat.h>

#include <charconv>
#include <memory>
#include <type_traits>
#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/base/Nesting.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/updates/Appcast.h"
#include "QuorviCore/updates/Version.h"

namespace quorvi {

namespace {

constexpr std::size_t maximumItems = 1000;
constexpr XML_Char separator = ' ';  // between a namespace and a name; part of neither
constexpr std::string_view dialect = "http://www.andymatuschak.org/xml-namespaces/sparkle ";

// Collects the items of a feed from the events of the parser. An item is a child of rss/channel,
// and its fields are its children; deeper elements, such as the enclosures of delta updates, are
// ignored.
class AppcastReader {
public:
    AppcastReader() : parser_(XML_ParserCreateNS(nullptr, separator)) {
        if (!parser_) throw QuorviError::message(say::feedNoMemory());
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(
            parser_.get(),
            [](void* self, const XML_Char* name, const XML_Char** attributes) {
                static_cast<AppcastReader*>(self)->begin(name, attributes);
            },
            [](void* self, const XML_Char*) { static_cast<AppcastReader*>(self)->end(); });
        XML_SetCharacterDataHandler(parser_.get(), [](void* self, const XML_Char* text, int size) {
            static_cast<AppcastReader*>(self)->characters({text, static_cast<std::size_t>(size)});
        });
        // Before any entity of the document's own can be declared, let alone expanded.
        XML_SetStartDoctypeDeclHandler(
            parser_.get(), [](void* self, const XML_Char*, const XML_Char*, const XML_Char*, int) {
                static_cast<AppcastReader*>(self)->refuse(say::feedHasDocumentType());
            });
    }

    std::vector<AppcastItem> read(std::string_view document) {
        const auto status =
            XML_Parse(parser_.get(), document.data(), static_cast<int>(document.size()), XML_TRUE);
        if (refusal_) throw QuorviError::message(*refusal_);
        if (status != XML_STATUS_OK) throw QuorviError::message(say::feedUnreadable());
        return std::move(items_);
    }

private:
    void begin(std::string_view name, const XML_Char** attributes) {
        if (refusal_) return;
        if (++depth_ > greatestDepth) return refuse(say::feedTooDeep());
        if (depth_ == 1 && name != "rss") return refuse(say::feedUnreadable());
        if (depth_ == 2) inChannel_ = name == "channel";
        if (depth_ == 3 && inChannel_ && name == "item") {
            if (items_.size() >= maximumItems) return refuse(say::feedTooManyEntries());
            item_.emplace();
            isForUs_ = true;
        }
        if (depth_ != 4 || !item_) return;
        field_ = fieldOf(name);
        text_.clear();
        if (name == "enclosure") readEnclosure(attributes);
    }

    void end() {
        if (refusal_) return;
        if (depth_ == 4 && item_ && field_ && field_->empty()) *field_ = text::trimmed(text_);
        if (depth_ == 4) field_ = nullptr;
        if (depth_ == 3 && item_) finishItem();
        --depth_;
    }

    void characters(std::string_view text) {
        if (field_ && !refusal_) text_ += text;
    }

    std::string* fieldOf(std::string_view name) {
        auto& item = *item_;
        if (name == "title") return &item.title;
        if (name == "description") return &item.notes;
        if (name == "pubDate") return &item.published;
        if (!name.starts_with(dialect)) return nullptr;
        name.remove_prefix(dialect.size());
        if (name == "version") return &item.version;
        if (name == "shortVersionString") return &item.displayVersion;
        if (name == "minimumSystemVersion") return &item.minimumSystemVersion;
        if (name == "releaseNotesLink") return &item.notesLink;
        if (name == "channel") isForUs_ = false;  // for those who ask for it
        return nullptr;
    }

    void readEnclosure(const XML_Char** attributes) {
        AppcastItem read;
        std::string system;
        for (; *attributes; attributes += 2) {
            const std::string_view name = attributes[0];
            const std::string_view value = attributes[1];
            if (name == "url") read.url = value;
            if (name == "length")
                std::from_chars(value.data(), value.data() + value.size(), read.length);
            if (!name.starts_with(dialect)) continue;
            const auto own = name.substr(dialect.size());
            if (own == "version") read.version = value;
            if (own == "shortVersionString") read.displayVersion = value;
            if (own == "edSignature") read.signature = value;
            if (own == "os") system = value;
        }
        if (!item_->url.empty() || (!system.empty() && system != "linux")) return;
        item_->url = std::move(read.url);
        item_->length = read.length;
        item_->signature = std::move(read.signature);
        if (item_->version.empty()) item_->version = std::move(read.version);
        if (item_->displayVersion.empty()) item_->displayVersion = std::move(read.displayVersion);
    }

    void finishItem() {
        auto item = std::move(*std::exchange(item_, std::nullopt));
        if (item.displayVersion.empty()) item.displayVersion = item.version;
        if (isForUs_ && !item.url.empty() && isVersion(item.version) &&
            isVersion(item.displayVersion))
            items_.push_back(std::move(item));
    }

    // The parser may still report pending events after it is stopped.
    void refuse(Message reason) {
        if (!refusal_) refusal_ = std::move(reason);
        XML_StopParser(parser_.get(), XML_FALSE);
    }

    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> parser_;
    std::size_t depth_ = 0;
    bool inChannel_ = false;
    bool isForUs_ = true;
    std::optional<AppcastItem> item_;
    std::string* field_ = nullptr;  // of item_
    std::string text_;
    std::vector<AppcastItem> items_;
    std::optional<Message> refusal_;
};

}  // namespace

std::vector<AppcastItem> parseAppcast(std::string_view document) {
    if (document.size() > maximumAppcastBytes) throw QuorviError::message(say::feedTooLarge());
    AppcastReader reader;
    return reader.read(document);
}

}  // namespace quorvi
