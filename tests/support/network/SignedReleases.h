#pragma once

#include <filesystem>
#include <string>

#include "tests/support/Feeds.h"
#include "tests/support/Process.h"

namespace quorvi::test {

// A key pair and packages made with the system's own tools, in a folder that a server can publish.
class SignedReleases {
public:
    SignedReleases();

    const std::string& publicKey() const { return publicKey_; }
    std::string folder() const { return folder_.path(); }
    std::filesystem::path file(const std::string& name) const { return folder_.path() / name; }

    // NAME.deb in the folder, a real package with half a megabyte that does not compress.
    void build(const std::string& name, const std::string& package, const std::string& version);
    void write(const std::string& name, std::string_view content) { folder_.write(name, content); }

    // The base64 signature of a file of the folder.
    std::string signatureOf(const std::string& name) const {
        return shell("openssl pkeyutl -sign -rawin -inkey " + secretFile("key.pem") + " -in " +
                     file(name).string() + " | base64 -w0");
    }

    // The release of a file of the folder, as it should be in a feed.
    FeedItem item(const std::string& version, const std::string& url,
                  const std::string& name) const;

private:
    std::string secretFile(const std::string& name) const { return secret_.path() / name; }

    TestFolder secret_;
    TestFolder folder_;
    std::string publicKey_;
};

}  // namespace quorvi::test
