#pragma once

#include <string>
#include <utility>
#include <vector>

namespace quorvi {

// Where a database is and as whom to log in: an address of libpq's, such as
// postgresql://anna@cloud.example.org/quorvi, checked and completed by what this program wants of a
// connection. The server's certificate is verified unless the address says otherwise or the server
// is on this machine.
class PostgresAddress {
public:
    // Throws CloudError (invalidArguments) with a sentence for the user, which never quotes the
    // address: it might hold a password, which is one of the reasons to refuse it.
    explicit PostgresAddress(const std::string& address);

    // Keywords and values for libpq.
    const std::vector<std::pair<std::string, std::string>>& parameters() const {
        return parameters_;
    }

private:
    std::vector<std::pair<std::string, std::string>> parameters_;
};

}  // namespace quorvi
