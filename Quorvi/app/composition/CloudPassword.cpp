#include "Quorvi/app/composition/CloudPassword.h"

#include <utility>

#include "QuorviCore/identity/BundleIdentifier.h"

namespace quorvi {

KeychainQuery cloudPasswordQuery(const std::string& address) {
    return {std::string(bundleIdentifier) + ".cloud", address};
}

PostgresPassword cloudPassword(std::shared_ptr<Keychain> keychain, const std::string& address) {
    return [keychain = std::move(keychain),
            query = cloudPasswordQuery(address)](std::stop_token stop) -> std::optional<Secret> {
        // Unlocking the keychain prompts the user, so it is not read if it surely has no item: the
        // password may be in a file.
        if (keychain->exists(query, stop) == KeychainStatus::itemNotFound) return std::nullopt;
        auto item = keychain->read(query, stop);
        if (item.status != KeychainStatus::success) return std::nullopt;
        return std::move(item.secret);
    };
}

}  // namespace quorvi
