#pragma once

#include "tests/support/Process.h"

namespace quorvi::test {

// A certificate authority made for one test, in a folder of its own.
class TestAuthority {
public:
    TestAuthority();

    // Issues NAME.pem with NAME.key. `names` is a subjectAltName; a certificate of 0 `days` has
    // expired at once.
    void issue(const std::string& name, const std::string& names, int days = 2) const;

    std::string caFile() const { return file("ca.pem"); }
    std::string file(const std::string& name) const { return folder_.path() / name; }

private:
    TestFolder folder_;
};

// The HTTPS server of https_server.py with a certificate of the authority. It can serve the files
// of a folder.
class TlsServer {
public:
    TlsServer(const TestAuthority& authority, const std::string& certificate,
              const std::string& host = "127.0.0.1", const std::string& folder = "/nonexistent");

    std::string url(const std::string& path) const { return address_ + path; }

private:
    Process process_;
    std::string address_;
};

}  // namespace quorvi::test
