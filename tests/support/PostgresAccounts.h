#pragma once

#include <atomic>
#include <string>

#include "Quorvi/platform/linux/postgres/PostgresSettings.h"
#include "tests/support/PostgresServer.h"

namespace quorvi::test {

// A provider with a password that is known.
inline PostgresPassword password(std::string text) {
    return [text = std::move(text)](std::stop_token) { return Secret(std::string_view(text)); };
}

// Names that no account of the server has yet.
inline std::string newAccount(const PostgresServer& server,
                              const std::string& secret = "pass word") {
    static std::atomic<int> number = 0;
    const auto name = "account" + std::to_string(++number);
    server.sql("CREATE ROLE " + name + " LOGIN IN ROLE quorvi_accounts PASSWORD '" + secret + "'");
    return name;
}

}  // namespace quorvi::test
