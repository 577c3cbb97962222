#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Quorvi/platform/KeyStore.h"
#include "Quorvi/transcription/OfflineRecogniser.h"
#include "Quorvi/transcription/SpeechServiceChoice.h"

namespace quorvi {

// The API key of the chosen speech service. A service without a key counts as having one, if it can
// be used. Each other service has a key of its own, under its address, so that no service is sent
// the key of another. Main thread; what it is given outlives it.
class ServiceKeyStore : public KeyStore {
public:
    // Makes the store of the key of the service at that address.
    using Factory = std::function<std::unique_ptr<KeyStore>(const std::string& address)>;

    // `main` has the key of the OpenAI API and of a fixed service; and of all others if there is no
    // factory.
    ServiceKeyStore(const SpeechServiceChoice& choice, const OfflineRecogniser& offline,
                    KeyStore& main, Factory factory);

    bool hasKey() override;
    bool isLocked() override;
    Task<void> unlock(std::stop_token stop) override;
    Task<bool> refresh() override;
    // Returns an empty key for a service that takes none.
    Task<std::string> read(std::stop_token stop) override;
    Task<void> save(std::string key) override;
    Task<void> remove() override;
    // Only the main key has a copy for the user's other machines.
    Task<bool> syncEnabled() override { return main_.syncEnabled(); }
    Task<void> setSyncEnabled(bool on) override { return main_.setSyncEnabled(on); }
    [[nodiscard]] Subscription onChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }

private:
    bool isOther() const;
    KeyStore* current();   // nullptr while the address of the other service is not valid
    KeyStore& required();  // throws QuorviError then
    void follow();

    const SpeechServiceChoice& choice_;
    const OfflineRecogniser& offline_;
    KeyStore& main_;
    Factory factory_;
    std::string otherAddress_;
    std::unique_ptr<KeyStore> other_;  // of that address
    Observable changes_;
    Subscription mainChanges_;
    Subscription otherChanges_;
    Subscription choiceChanges_;
    Subscription programChanges_;
};

}  // namespace quorvi
