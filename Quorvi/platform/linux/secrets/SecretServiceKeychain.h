#pragma once

#include <memory>

#include "Quorvi/platform/Keychain.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

namespace secrets {
class Service;
}

// The keychain of a Linux desktop: whichever program offers the Secret Service on the session's bus
// (GNOME's keyring, KDE's wallet and others do), in its default collection. Secrets travel to it
// encrypted, and are kept nowhere else when it isn't there. The two items of one query differ in
// their attribute "synchronizable"; whether an item may leave this machine is in "accessible", for
// whatever carries the user's collections from one to another. A service that has ended and begun
// anew is found again at the next operation. See SecretServiceCall.h for what an error is reported
// as.
class SecretServiceKeychain : public Keychain {
public:
    explicit SecretServiceKeychain(Scheduler& scheduler);
    ~SecretServiceKeychain() override;

    KeychainStatus exists(const KeychainQuery& query, std::stop_token stop) override;
    KeychainItem read(const KeychainQuery& query, std::stop_token stop) override;
    KeychainStatus update(const KeychainQuery& query, const Secret& secret,
                          std::stop_token stop) override;
    KeychainStatus add(const KeychainQuery& query, const Secret& secret,
                       KeychainAccessibility accessibility, std::stop_token stop) override;
    KeychainStatus remove(const KeychainQuery& query, std::stop_token stop) override;
    [[nodiscard]] Subscription onChange(std::function<void()> observer) override;

private:
    template <class Work>
    KeychainStatus run(std::stop_token stop, Work work);

    struct Watch;
    std::unique_ptr<secrets::Service> service_;
    std::unique_ptr<Watch> watch_;
};

}  // namespace quorvi
