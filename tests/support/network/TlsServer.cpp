#include "tests/support/network/TlsServer.h"

#include "tests/support/Paths.h"

namespace quorvi::test {

TestAuthority::TestAuthority() {
    outputOf({"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256",
              "-nodes", "-days", "2", "-subj", "/CN=Test authority", "-keyout", file("ca.key"),
              "-out", file("ca.pem")});
}

void TestAuthority::issue(const std::string& name, const std::string& names, int days) const {
    outputOf({"openssl", "req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
              "-subj", "/CN=" + name, "-keyout", file(name + ".key"), "-out", file(name + ".csr")});
    folder_.write(name + ".ext", "subjectAltName=" + names + "\n");
    outputOf({"openssl", "x509", "-req", "-in", file(name + ".csr"), "-CA", file("ca.pem"),
              "-CAkey", file("ca.key"), "-CAcreateserial", "-days", std::to_string(days),
              "-extfile", file(name + ".ext"), "-out", file(name + ".pem")});
}

TlsServer::TlsServer(const TestAuthority& authority, const std::string& certificate,
                     const std::string& host, const std::string& folder)
    : process_({"/usr/bin/python3", "-I",
                sourceFolder() + "/tests/support/programs/https_server.py",
                authority.file(certificate + ".pem"), authority.file(certificate + ".key"), host,
                folder}),
      address_("https://" + host + ":" + process_.readLine()) {}

}  // namespace quorvi::test
