#pragma once

#include <memory>
#include <string>

#include "Quorvi/platform/Keychain.h"
#include "Quorvi/platform/linux/postgres/PostgresSettings.h"

namespace quorvi {

// Where the password of a database is in the user's keychain: beside its address, so that each
// account of each server has its own.
KeychainQuery cloudPasswordQuery(const std::string& address);

// Looks there. Without an item libpq looks in its own files.
PostgresPassword cloudPassword(std::shared_ptr<Keychain> keychain, const std::string& address);

}  // namespace quorvi
