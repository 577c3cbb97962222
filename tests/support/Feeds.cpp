#include "tests/support/Feeds.h"

namespace quorvi::test {

std::string FeedItem::xml() const {
    const auto signedWith = signature.empty() ? "" : " s:edSignature=\"" + signature + "\"";
    return "<item>" + more + "<s:version>" + version + "</s:version><enclosure url=\"" + url +
           "\" length=\"" + std::to_string(length) + "\"" + signedWith + "/></item>";
}

std::string feedRoot(const std::string& content) {
    return "<rss xmlns:s=\"http://www.andymatuschak.org/xml-namespaces/sparkle\" version=\"2.0\">" +
           content + "</rss>";
}

std::string feed(const std::string& items) {
    return feedRoot("<channel><title>Quorvi</title>" + items + "</channel>");
}

std::string feed(const FeedItem& item) {
    return feed(item.xml());
}

}  // namespace quorvi::test
