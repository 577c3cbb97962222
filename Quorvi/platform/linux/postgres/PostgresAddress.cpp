#include "Quorvi/platform/linux/postgres/PostgresAddress.h"

#include <unistd.h>

#include <cstdlib>
#include <map>
#include <memory>

#include "Quorvi/platform/linux/postgres/PqLibrary.h"
#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

// libpq 15 does not support "system" as the root certificate, only a file.
constexpr const char* systemCertificates = "/etc/ssl/certs/ca-certificates.crt";

[[noreturn]] void refuse(Message sentence) {
    throw QuorviError::message(std::move(sentence));
}

std::map<std::string, std::string> parse(const std::string& address) {
    char* complaint = nullptr;
    const std::unique_ptr<PQconninfoOption, decltype(pq().conninfoFree)> options(
        pq().conninfoParse(address.c_str(), &complaint), pq().conninfoFree);
    pq().freemem(complaint);
    if (!options) refuse(say::databaseAddressUnreadable());
    std::map<std::string, std::string> given;
    for (const auto* option = options.get(); option->keyword; ++option)
        if (option->val) given[option->keyword] = option->val;
    return given;
}

bool isLocal(const std::string& host) {
    return host.starts_with('/') || host.starts_with('@') || host == "localhost" ||
           host.starts_with("127.") || host == "::1";
}

// Whether all hosts of a list are this machine. An empty list may mean any host, through the
// environment or a service file.
bool areLocal(const std::string& hosts) {
    std::size_t begin = 0;
    for (;;) {
        const auto end = std::min(hosts.find(',', begin), hosts.size());
        if (!isLocal(hosts.substr(begin, end - begin))) return false;
        if (end == hosts.size()) return true;
        begin = end + 1;
    }
}

bool hasOwnCertificates() {
    if (std::getenv("PGSSLROOTCERT")) return true;
    const char* home = std::getenv("HOME");
    return home && ::access((std::string(home) + "/.postgresql/root.crt").c_str(), F_OK) == 0;
}

}  // namespace

PostgresAddress::PostgresAddress(const std::string& address) {
    if (!address.starts_with("postgresql://") && !address.starts_with("postgres://"))
        refuse(say::databaseAddressScheme());
    auto given = parse(address);
    if (given.contains("password") || given.contains("sslpassword"))
        refuse(say::databaseAddressHasPassword());

    const auto hosts = given.contains("hostaddr") ? given["hostaddr"] : given["host"];
    if (given["host"].empty()) given.erase("host");
    const bool local = areLocal(hosts) && !given.contains("service");
    given.emplace("sslmode", local ? "prefer" : "verify-full");
    if (!hasOwnCertificates()) given.emplace("sslrootcert", systemCertificates);
    // Kerberos would look up its own servers first, blocking.
    given.emplace("gssencmode", "disable");
    given.emplace("fallback_application_name", "Quorvi");
    given.emplace("keepalives_idle", "30");
    given.emplace("keepalives_interval", "10");
    given.emplace("keepalives_count", "3");
    given.emplace("tcp_user_timeout", "15000");
    given["client_encoding"] = "UTF8";
    parameters_.assign(given.begin(), given.end());
}

}  // namespace quorvi
