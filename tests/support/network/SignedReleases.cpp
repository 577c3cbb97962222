#include "tests/support/network/SignedReleases.h"

namespace quorvi::test {

SignedReleases::SignedReleases() {
    outputOf({"openssl", "genpkey", "-algorithm", "ed25519", "-out", secretFile("key.pem")});
    publicKey_ = shell("openssl pkey -in " + secretFile("key.pem") +
                       " -pubout -outform DER | tail -c 32 | base64 -w0");
}

void SignedReleases::build(const std::string& name, const std::string& package,
                           const std::string& version) {
    const auto tree = secret_.path() / name;
    std::filesystem::create_directories(tree / "DEBIAN");
    secret_.write(name + "/DEBIAN/control", "Package: " + package + "\nVersion: " + version +
                                                "\nArchitecture: all\nMaintainer: A Test "
                                                "<test@example.org>\nDescription: dictation\n");
    shell("head -c 500000 /dev/urandom > " + secretFile(name + "/payload"));
    outputOf({"dpkg-deb", "--build", tree, file(name + ".deb")});
}

FeedItem SignedReleases::item(const std::string& version, const std::string& url,
                              const std::string& name) const {
    return {version, url, signatureOf(name), std::filesystem::file_size(file(name)), {}};
}

}  // namespace quorvi::test
