#pragma once

#include <string>
#include <utility>
#include <vector>

namespace quorvi {

// A libpq connection address, such as postgresql://anna@cloud.example.org/quorvi, validated and
// completed with the defaults of this program. Server certificates are verified unless the address
// says otherwise or the server is on this machine.
class PostgresAddress {
public:
    // Throws QuorviError, which never quotes the address: it may contain a password, which is one
    // of the reasons to refuse it.
    explicit PostgresAddress(const std::string& address);

    // Keywords and values for libpq.
    const std::vector<std::pair<std::string, std::string>>& parameters() const {
        return parameters_;
    }

private:
    std::vector<std::pair<std::string, std::string>> parameters_;
};

}  // namespace quorvi
