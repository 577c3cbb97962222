#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>

#include "QuorviCore/async/Observable.h"
#include "QuorviCore/base/Secret.h"

namespace quorvi {

// The outcome of an operation. The numbers are those of the Mac's keychain, which messages show and
// people search for; each adapter documents when it reports which.
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

// The name of an item: the ordinary one, or its synchronised copy. Without an account, remove()
// takes all items of the service.
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

// The system's keychain: items with a secret, stored encrypted. Operations block on another
// program, and all but exists() possibly on the user, who is asked to unlock the keychain; so they
// run on an executor, one at a time. None throws; a stop ends them with userCanceled. onChange() is
// for the main thread.
class Keychain {
public:
    virtual ~Keychain() = default;

    // Returns success if the item exists. Never prompts the user: returns interactionNotAllowed if
    // the keychain is locked and the answer therefore unknown.
    virtual KeychainStatus exists(const KeychainQuery& query, std::stop_token stop) = 0;

    virtual KeychainItem read(const KeychainQuery& query, std::stop_token stop) = 0;

    // Replaces the secret of an existing item.
    virtual KeychainStatus update(const KeychainQuery& query, const Secret& secret,
                                  std::stop_token stop) = 0;
    virtual KeychainStatus add(const KeychainQuery& query, const Secret& secret,
                               KeychainAccessibility accessibility, std::stop_token stop) = 0;
    virtual KeychainStatus remove(const KeychainQuery& query, std::stop_token stop) = 0;

    // Observers are called when the result of exists() may have changed, whatever the cause.
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;
};

}  // namespace quorvi
