#include "Quorvi/app/composition/CloudPassword.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "QuorviCore/identity/BundleIdentifier.h"

namespace quorvi {

namespace {

constexpr std::string_view certificate = "sslrootcert=";

std::string withoutCertificate(const std::string& address) {
    const auto options = std::min(address.find('?'), address.size());
    auto kept = address.substr(0, options);
    char before = '?';
    for (auto at = options; at < address.size();) {
        const auto end = std::min(address.find('&', ++at), address.size());
        const auto option = address.substr(at, end - at);
        at = end;
        if (option.starts_with(certificate)) continue;
        kept += std::exchange(before, '&') + option;
    }
    return kept;
}

}  // namespace

std::vector<KeychainQuery> cloudPasswordQueries(const std::string& address) {
    const auto service = std::string(bundleIdentifier) + ".cloud";
    std::vector<KeychainQuery> queries{{service, withoutCertificate(address)}};
    if (queries[0].account != address) queries.push_back({service, address});
    return queries;
}

KeychainStatus storeCloudPassword(Keychain& keychain, const std::string& address,
                                  const Secret& password, std::stop_token stop) {
    const auto query = cloudPasswordQueries(address)[0];
    const auto status = keychain.update(query, password, stop);
    if (status != KeychainStatus::itemNotFound) return status;
    return keychain.add(query, password, KeychainAccessibility::whenUnlockedThisDeviceOnly, stop);
}

PostgresPassword cloudPassword(std::shared_ptr<Keychain> keychain, const std::string& address) {
    return [keychain = std::move(keychain), queries = cloudPasswordQueries(address)](
               std::stop_token stop) -> std::optional<Secret> {
        for (const auto& query : queries) {
            // Unlocking the keychain prompts the user, so it is not read if it surely has no item:
            // the password may be in a file.
            if (keychain->exists(query, stop) == KeychainStatus::itemNotFound) continue;
            auto item = keychain->read(query, stop);
            if (item.status == KeychainStatus::success) return std::move(item.secret);
        }
        return std::nullopt;
    };
}

}  // namespace quorvi
