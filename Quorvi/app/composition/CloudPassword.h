#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Quorvi/platform/Keychain.h"
#include "Quorvi/platform/linux/postgres/PostgresSettings.h"

namespace quorvi {

// Returns where the keychain may have the password of a database, the first choice first: under its
// address, so that each account of each server has its own, and another certificate does not change
// it. Version 1.0.0 took the certificate for a part of the address.
std::vector<KeychainQuery> cloudPasswordQueries(const std::string& address);

// Stores a password at the first of them, blocking.
KeychainStatus storeCloudPassword(Keychain& keychain, const std::string& address,
                                  const Secret& password, std::stop_token stop);

// Returns a function that reads the password of these. Without an item libpq uses its own files.
PostgresPassword cloudPassword(std::shared_ptr<Keychain> keychain, const std::string& address);

}  // namespace quorvi
