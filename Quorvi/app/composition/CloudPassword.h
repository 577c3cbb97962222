#pragma once

#include <memory>
#include <string>

#include "Quorvi/platform/Keychain.h"
#include "Quorvi/platform/linux/postgres/PostgresSettings.h"

namespace quorvi {

// Returns where the keychain has the password of a database: under its address, so that each
// account of each server has its own.
KeychainQuery cloudPasswordQuery(const std::string& address);

// Returns a function that reads the password there. Without an item libpq uses its own files.
PostgresPassword cloudPassword(std::shared_ptr<Keychain> keychain, const std::string& address);

}  // namespace quorvi
