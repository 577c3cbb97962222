#include "Quorvi/transcription/ServiceKeyStore.h"

#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/transcription/ServiceAddress.h"

namespace quorvi {

ServiceKeyStore::ServiceKeyStore(const SpeechServiceChoice& choice,
                                 const OfflineRecogniser& offline, KeyStore& main, Factory factory)
    : choice_(choice),
      offline_(offline),
      main_(main),
      factory_(std::move(factory)),
      mainChanges_(main.onChange([this] { changes_.notify(); })),
      choiceChanges_(choice.onChange([this] {
          follow();
          changes_.notify();
      })),
      programChanges_(offline.onInstalledChange([this] { changes_.notify(); })) {
    follow();
}

bool ServiceKeyStore::isOther() const {
    return factory_ && !choice_.isFixed() && choice_.kind() == SpeechServiceKind::other;
}

// Makes the store of another service's key when the service changes.
void ServiceKeyStore::follow() {
    if (!isOther()) return;
    const auto address = choice_.validAddress();
    if (std::exchange(otherAddress_, address) == address) return;
    otherChanges_ = {};
    other_ = address.empty() ? nullptr : factory_(address);
    if (other_) otherChanges_ = other_->onChange([this] { changes_.notify(); });
}

KeyStore* ServiceKeyStore::current() {
    return isOther() ? other_.get() : &main_;
}

KeyStore& ServiceKeyStore::required() {
    if (auto* store = current()) return *store;
    choice_.address();
    throw QuorviError::message(say::serviceAddressMissing());
}

bool ServiceKeyStore::hasKey() {
    if (choice_.kind() == SpeechServiceKind::offline) return offline_.isInstalled();
    if (choice_.validAddress().empty()) return false;
    return !choice_.takesKey() || required().hasKey();
}

bool ServiceKeyStore::isLocked() {
    auto* store = current();
    return choice_.takesKey() && store && store->isLocked();
}

Task<void> ServiceKeyStore::unlock(std::stop_token stop) {
    auto unlocking = required().unlock(std::move(stop));
    co_await unlocking;
}

Task<bool> ServiceKeyStore::refresh() {
    if (auto* store = current()) {
        auto looking = store->refresh();
        co_await looking;
    }
    co_return hasKey();
}

Task<std::string> ServiceKeyStore::read(std::stop_token stop) {
    if (!choice_.takesKey()) co_return std::string();
    auto reading = required().read(std::move(stop));
    co_return co_await reading;
}

Task<void> ServiceKeyStore::save(std::string key) {
    auto saving = required().save(std::move(key));
    co_await saving;
}

Task<void> ServiceKeyStore::remove() {
    auto removing = required().remove();
    co_await removing;
}

}  // namespace quorvi
