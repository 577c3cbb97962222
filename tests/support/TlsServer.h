#pragma once

#include "tests/support/Process.h"

namespace quorvi::test {

// A certificate authority made for one test, in a folder of its own.
class TestAuthority {
public:
    TestAuthority() {
        outputOf({"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256",
                  "-nodes", "-days", "2", "-subj", "/CN=Test authority", "-keyout", file("ca.key"),
                  "-out", file("ca.pem")});
    }

    // Issues NAME.pem with NAME.key. `names` is a subjectAltName; `days` below zero lies in the
    // past.
    void issue(const std::string& name, const std::string& names, int days = 2) const {
        outputOf({"openssl", "req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256",
                  "-nodes", "-subj", "/CN=" + name, "-keyout", file(name + ".key"), "-out",
                  file(name + ".csr")});
        folder_.write(name + ".ext", "subjectAltName=" + names + "\n");
        outputOf({"openssl", "x509", "-req", "-in", file(name + ".csr"), "-CA", file("ca.pem"),
                  "-CAkey", file("ca.key"), "-CAcreateserial", "-days", std::to_string(days),
                  "-extfile", file(name + ".ext"), "-out", file(name + ".pem")});
    }

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
              const std::string& host = "127.0.0.1", const std::string& folder = "/nonexistent")
        : process_({"/usr/bin/python3", "-I",
                    QUORVI_SOURCE "/tests/support/programs/https_server.py",
                    authority.file(certificate + ".pem"), authority.file(certificate + ".key"),
                    host, folder}),
          address_("https://" + host + ":" + process_.readLine()) {}

    std::string url(const std::string& path) const { return address_ + path; }

private:
    Process process_;
    std::string address_;
};

}  // namespace quorvi::test
