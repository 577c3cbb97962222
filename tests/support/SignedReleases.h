#pragma once

#include <filesystem>
#include <string>

#include "tests/support/Process.h"

namespace quorvi::test {

// A key pair and packages made with the system's own tools, in a folder that a server can publish.
class SignedReleases {
public:
    SignedReleases() {
        outputOf({"openssl", "genpkey", "-algorithm", "ed25519", "-out", secretFile("key.pem")});
        publicKey_ = shell("openssl pkey -in " + secretFile("key.pem") +
                           " -pubout -outform DER | tail -c 32 | base64 -w0");
    }

    const std::string& publicKey() const { return publicKey_; }
    std::string folder() const { return folder_.path(); }
    std::filesystem::path file(const std::string& name) const { return folder_.path() / name; }

    // NAME.deb in the folder, a real package with half a megabyte that does not compress.
    void build(const std::string& name, const std::string& package, const std::string& version) {
        const auto tree = secret_.path() / name;
        std::filesystem::create_directories(tree / "DEBIAN");
        secret_.write(name + "/DEBIAN/control", "Package: " + package + "\nVersion: " + version +
                                                    "\nArchitecture: all\nMaintainer: A Test "
                                                    "<test@example.org>\nDescription: dictation\n");
        shell("head -c 500000 /dev/urandom > " + secretFile(name + "/payload"));
        outputOf({"dpkg-deb", "--build", tree, file(name + ".deb")});
    }
    void write(const std::string& name, std::string_view content) { folder_.write(name, content); }

    // The base64 signature of a file of the folder.
    std::string signatureOf(const std::string& name) const {
        return shell("openssl pkeyutl -sign -rawin -inkey " + secretFile("key.pem") + " -in " +
                     file(name).string() + " | base64 -w0");
    }

    // One item of a feed. `length` defaults to the file's own.
    std::string item(const std::string& version, const std::string& url,
                     const std::string& signature, std::uintmax_t length,
                     const std::string& more = {}) const {
        return "<item><title>Quorvi " + version + "</title>" + more + "<sparkle:version>" +
               version + "</sparkle:version><enclosure url=\"" + url + "\" length=\"" +
               std::to_string(length) + "\" type=\"application/octet-stream\"" +
               (signature.empty() ? "" : " sparkle:edSignature=\"" + signature + "\"") +
               "/></item>";
    }
    static std::string feed(const std::string& items) {
        return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rss version=\"2.0\" xmlns:sparkle="
               "\"http://www.andymatuschak.org/xml-namespaces/sparkle\"><channel><title>Quorvi"
               "</title>" +
               items + "</channel></rss>";
    }

private:
    std::string secretFile(const std::string& name) const { return secret_.path() / name; }

    TestFolder secret_;
    TestFolder folder_;
    std::string publicKey_;
};

}  // namespace quorvi::test
