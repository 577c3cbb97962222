#pragma once

#include <memory>

#include "Quorvi/platform/Keychain.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

namespace secrets {
class Service;
}

// The keychain of a Linux desktop: the default collection of the program that offers the Secret
// Service on the session bus (GNOME's keyring, KDE's wallet and others). Secrets travel encrypted
// and are never kept elsewhere. The two items of one query differ in the attribute
// "synchronizable"; "accessible" says whether an item may leave this machine, for programs that
// synchronise collections. A restarted service is found at the next operation. SecretServiceCall.h
// lists how errors are reported. Any thread, one operation at a time; onChange() on the main
// thread.
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
