#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>

#include "QuorviCore/async/Observable.h"
#include "QuorviCore/base/Secret.h"

namespace quorvi {

// What became of an operation. The numbers are those of the Mac's keychain, which messages show and
// which people search for; an adapter says what it reports them for.
enum class KeychainStatus : std::int32_t {
    success = 0,
    ioError = -36,
    userCanceled = -128,
    internalComponent = -2070,
    notAvailable = -25291,
    duplicateItem = -25299,
    itemNotFound = -25300,
    interactionNotAllowed = -25308,
    decode = -26275,
    missingEntitlement = -34018,
};

// Whether an item may travel to the user's other machines.
enum class KeychainAccessibility { whenUnlocked, whenUnlockedThisDeviceOnly };

// Names one item: an ordinary one, or the synchronised copy beside it.
struct KeychainQuery {
    std::string service;
    std::string account;
    bool synchronizable = false;

    bool operator==(const KeychainQuery&) const = default;
};

struct KeychainItem {
    KeychainStatus status = KeychainStatus::success;
    Secret secret;  // empty unless the status is success
};

// The system's keychain: items with a secret, kept encrypted. The operations wait for another
// program, and all but exists() perhaps for the user, who is asked to unlock the keychain; so they
// run on an executor, one at a time. None throws; a stop ends them with userCanceled. Only
// onChange() belongs to the main thread.
class Keychain {
public:
    virtual ~Keychain() = default;

    // Success when the item is there, found out without asking the user for anything. Otherwise
    // interactionNotAllowed when that can't be told because the keychain is locked.
    virtual KeychainStatus exists(const KeychainQuery& query, std::stop_token stop) = 0;

    virtual KeychainItem read(const KeychainQuery& query, std::stop_token stop) = 0;

    // Gives an item that is there another secret.
    virtual KeychainStatus update(const KeychainQuery& query, const Secret& secret,
                                  std::stop_token stop) = 0;
    virtual KeychainStatus add(const KeychainQuery& query, const Secret& secret,
                               KeychainAccessibility accessibility, std::stop_token stop) = 0;
    virtual KeychainStatus remove(const KeychainQuery& query, std::stop_token stop) = 0;

    // Told when exists() may have another answer, whoever brought that about.
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;
};

}  // namespace quorvi
