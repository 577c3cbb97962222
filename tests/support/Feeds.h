#pragma once

#include <cstdint>
#include <string>

namespace quorvi::test {

// A release in an update feed.
struct FeedItem {
    std::string version = "2.0";
    std::string url = "https://a/q.deb";
    std::string signature = "x";  // empty: unsigned
    std::uintmax_t length = 1;
    std::string more;  // further children of the item

    std::string xml() const {
        const auto signedWith = signature.empty() ? "" : " s:edSignature=\"" + signature + "\"";
        return "<item>" + more + "<s:version>" + version + "</s:version><enclosure url=\"" + url +
               "\" length=\"" + std::to_string(length) + "\"" + signedWith + "/></item>";
    }
};

// The XML of a feed's root with this content, and of a feed with these items.
inline std::string feedRoot(const std::string& content) {
    return "<rss xmlns:s=\"http://www.andymatuschak.org/xml-namespaces/sparkle\" version=\"2.0\">" +
           content + "</rss>";
}
inline std::string feed(const std::string& items) {
    return feedRoot("<channel><title>Quorvi</title>" + items + "</channel>");
}
inline std::string feed(const FeedItem& item) {
    return feed(item.xml());
}

}  // namespace quorvi::test
