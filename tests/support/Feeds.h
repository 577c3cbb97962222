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

    std::string xml() const;
};

// The XML of a feed's root with this content, and of a feed with these items.
std::string feedRoot(const std::string& content);
std::string feed(const std::string& items);
std::string feed(const FeedItem& item);

}  // namespace quorvi::test
