#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QuorviCore/Error.h"
#include "QuorviCore/updates/Appcast.h"
#include "QuorviCore/updates/ReleaseNotes.h"
#include "QuorviCore/updates/UpdateSignature.h"
#include "QuorviCore/updates/Version.h"
#include "tests/support/Feeds.h"
#include "tests/support/Texts.h"

namespace quorvi::test {
namespace {

TEST(Version, EveryPairOfALongOrderComparesByItsPlaces) {
    // Versions on a line are equal, and less than those on later lines.
    const std::vector<std::vector<std::string>> order{
        {"", "0", "0.0"},
        {"0.9"},
        {"1.0a1", "1.0.0-A1"},
        {"1.0b2", "1b2", "1.0-b.2", "1.0~b2"},
        {"1.0b10"},
        {"1.0rc1"},
        {"1.0", "1", "1.0.0", "v1.0", "01.00", "1.0+build7"},
        {"1.0.1-beta"},
        {"1.0.1"},
        {"1.9"},
        {"1.10", "1.10.0"},
        {"2.0-alpha"},
        {"2"},
        {"10.0"},
        {"20261125"},
        {"99999999999999999999999999999999"},
        {"100000000000000000000000000000000"},
    };
    for (std::size_t i = 0; i < order.size(); ++i)
        for (std::size_t j = 0; j < order.size(); ++j)
            for (const auto& a : order[i])
                for (const auto& b : order[j])
                    EXPECT_TRUE(compareVersions(a, b) == i <=> j) << a << " and " << b;
}

TEST(Appcast, FieldsAreReadFromElementsAndFromTheEnclosureWhateverThePrefix) {
    const auto items = parseAppcast(feed(
        "<title>Quorvi</title><item><title> Two &amp; a half </title><description><![CDATA[<p>A</p>"
        "]]></description><pubDate>Wed, 25 Nov 2026 08:00:00 +0000</pubDate><s:version>250"
        "</s:version><s:shortVersionString>2.5</s:shortVersionString><s:minimumSystemVersion>12"
        "</s:minimumSystemVersion><s:releaseNotesLink>https://a/n</s:releaseNotesLink>"
        "<enclosure url=\"https://a/q.deb\" length=\"77\" type=\"x\" s:edSignature=\"c2ln\"/>"
        "<s:deltas><enclosure url=\"https://a/delta\" length=\"1\" s:version=\"9\"/></s:deltas>"
        "</item><item><enclosure url=\"https://a/mac.dmg\" s:os=\"macos\" length=\"5\"/><enclosure "
        "url=\"https://a/p\" s:version=\"3.0\" s:shortVersionString=\"3\" s:os=\"linux\" "
        "length=\"8\" s:edSignature=\"eA==\"/></item>"));
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0],
              (AppcastItem{"Two & a half", "250", "2.5", "12", "<p>A</p>", "https://a/n",
                           "Wed, 25 Nov 2026 08:00:00 +0000", "https://a/q.deb", "c2ln", 77}));
    EXPECT_EQ(items[1], (AppcastItem{"", "3.0", "3", "", "", "", "", "https://a/p", "eA==", 8}));
}

TEST(Appcast, OnlyReleasesForThisProgramAreListed) {
    const std::string version = "<s:version>2</s:version>";
    const auto item = FeedItem{}.xml();
    const std::vector<std::string> none{
        "<item>" + version + "</item>",
        "<item><enclosure url=\"u\"/></item>",
        "<item>" + version + "<enclosure url=\"u\" s:os=\"windows\"/></item>",
        "<item><version>2</version><enclosure url=\"u\"/></item>",
        FeedItem{.version = "../2"}.xml(),
        "<group>" + item + "</group>",
        FeedItem{.more = "<s:channel>beta</s:channel>"}.xml()};
    for (const auto& content : none) EXPECT_TRUE(parseAppcast(feed(content)).empty()) << content;
    EXPECT_TRUE(parseAppcast(feedRoot(item)).empty());
    EXPECT_EQ(parseAppcast(feed(item)).size(), 1u);
}

TEST(Appcast, HostileAndBrokenDocumentsAreRefused) {
    const std::vector<std::string> documents{
        "",
        "text",
        "<feed/>",
        "<rss>",
        feedRoot("<channel>") + "x",
        feedRoot("&undeclared;"),
        std::string("<rss>\0</rss>", 12),
        "<?xml version=\"1.0\" encoding=\"x-odd\"?><rss/>",
        "<!DOCTYPE rss [<!ENTITY a \"&a;&a;\">]>" + feedRoot("&a;"),
        "<!DOCTYPE rss SYSTEM \"file:///etc/passwd\">" + feedRoot(""),
        "<!DOCTYPE rss [<!ENTITY % x SYSTEM \"http://127.0.0.1/\"> %x;]>" + feedRoot(""),
        feedRoot(repeated("<a>", 100'000)),
        feed(repeated(FeedItem{}.xml(), 1001)),
        feedRoot(std::string(maximumAppcastBytes, ' '))};
    for (const auto& document : documents)
        EXPECT_THROW(parseAppcast(document), QuorviError) << document.substr(0, 60);
}

TEST(Appcast, NewestReleaseThatRunsHereIsChosen) {
    const auto release = [](std::string version, std::string system) {
        AppcastItem item;
        item.version = std::move(version);
        item.minimumSystemVersion = std::move(system);
        return item;
    };
    const std::vector<AppcastItem> items{release("1.9", ""), release("1.10", "12"),
                                         release("1.8", ""), release("2.0", "13"),
                                         release("1.10.0", "11")};
    const auto choice = chooseUpdate(items, "1.8.1", "12.5");
    EXPECT_EQ(choice.update, items[1]);
    EXPECT_EQ(choice.forNewerSystem, items[3]);
    EXPECT_EQ(chooseUpdate(items, "1.8.1", "").update, items[3]);
    EXPECT_FALSE(chooseUpdate(items, "1.10", "12").update);
}

TEST(Appcast, OnlyPlainHttpsAddressesAreSecure) {
    for (const auto* good : {"https://a", "https://a:8/b?c#d", "https://[::1]/"})
        EXPECT_TRUE(isSecureAddress(good)) << good;
    for (const auto* bad : {"", "http://a", "HTTPS://a", "https://", "https:///a", "https://u@a/",
                            "https://a/ b", "https://a\\b", "file:///a", " https://a", "https://é"})
        EXPECT_FALSE(isSecureAddress(bad)) << bad;
}

// The second test vector of RFC 8032, 7.1.
TEST(UpdateSignature, HoldsForExactlyTheSignedBytesUnderStrictEncodings) {
    const std::string key = "PUAXw+hDiVqStwqnTRt+vJyYLM8uxJaMwM1V8Sr0Zgw=";
    const std::string signature =
        "kqAJqfDUyrhyDoILX2QlQKKye1QWUD+Ps3YiI+vbadoIWsHkPhWZbkWPNhPQ8R2MOHsurrQwKu6wDSkWErsMAA==";
    const auto decoded = updateKeyFromBase64(key);
    ASSERT_TRUE(decoded);
    const std::vector<std::uint8_t> message{0x72}, other{0x73}, longer{0x72, 0};
    EXPECT_TRUE(isSignedWith(*decoded, signature, message));
    EXPECT_FALSE(isSignedWith(*decoded, signature, other));
    EXPECT_FALSE(isSignedWith(*decoded, signature, longer));
    for (const auto& wrong : {std::string(), signature + "A", " " + signature, signature + "\n",
                              signature.substr(0, 84), key})
        EXPECT_FALSE(isSignedWith(*decoded, wrong, message)) << wrong;
    for (const auto& wrong : {std::string(), key.substr(0, 43), key + key, "!" + key})
        EXPECT_FALSE(updateKeyFromBase64(wrong)) << wrong;
}

TEST(ReleaseNotes, OnlyHarmlessMarkupPasses) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"Fixed:\nthis & that", "Fixed:<br>this & that"},
        {"<h2 style='x'>New</h2><ul><li>One<li>Two</ul>",
         "<h2>New</h2><ul><li>One<li>Two</li></li></ul>"},
        {"<p onclick=\"a>b\">x</p>", "<p>x</p>"},
        {"<IMG SRC=\"https://a/i.png\">a<br/>b", "a<br>b"},
        {"<script>if (a < b) c()</script >ok<style>p{}</style>", "ok"},
        {"<script>never closed", ""},
        {"<a href=\"https://a/?b=1&amp;c\">l</a>", "<a href=\"https://a/?b=1&amp;c\">l</a>"},
        {"<a href='javascript:alert(1)'>l</a><a href=https://a>m</a>", "<a>l</a><a>m</a>"},
        {"<!-- <b> -->1 < 2 <3<b", "1 &lt; 2 &lt;3&lt;b"},
        {"</p><b>open<div>x", "<b>open<br>x</b>"},
    };
    for (const auto& [notes, expected] : rows)
        EXPECT_EQ(safeReleaseNotes(notes), expected) << notes;

    EXPECT_LT(safeReleaseNotes(repeated("<ul>", 50'000)).size(), 200u);
    EXPECT_LT(safeReleaseNotes(repeated("<a'", 40'000)).size(), 600'000u);
    const auto greek = safeReleaseNotes("x" + repeated("λ", 40'000));
    EXPECT_EQ(greek.size() % 2, 1u) << "cut within a character";
}

}  // namespace
}  // namespace quorvi::test
