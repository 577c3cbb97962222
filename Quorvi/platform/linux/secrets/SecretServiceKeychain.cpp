#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"

#include <utility>

#include "Quorvi/platform/linux/secrets/SecretService.h"
#include "Quorvi/platform/linux/secrets/SecretServiceSignals.h"

namespace quorvi {

using Status = KeychainStatus;
using namespace secrets;

namespace {

Attributes attributesOf(const KeychainQuery& query) {
    Attributes attributes{{"xdg:schema", "app.quorvi.Quorvi.ApiKey"},
                          {"service", query.service},
                          {"synchronizable", query.synchronizable ? "true" : "false"}};
    if (!query.account.empty()) attributes.emplace("account", query.account);
    return attributes;
}

// What the desktop's password manager shows.
std::string labelOf(const KeychainQuery& query) {
    if (!query.service.ends_with(".openai")) return "Quorvi: " + query.account;
    return query.synchronizable ? "Quorvi: OpenAI API key (synchronised copy)"
                                : "Quorvi: OpenAI API key";
}

// The items, unlocked. Throws itemNotFound when there is none.
Paths find(Service& service, Operation& operation, const KeychainQuery& query) {
    const auto attributes = attributesOf(query);
    auto found = service.search(operation, attributes);
    if (found.unlocked.empty() && found.locked.empty()) {
        service.unlock(operation, service.lockedCollection(operation));
        found = service.search(operation, attributes);
    }
    service.unlock(operation, found.locked);
    auto& paths = found.unlocked;
    paths.insert(paths.end(), found.locked.begin(), found.locked.end());
    if (paths.empty()) throw Failure{Status::itemNotFound};
    return paths;
}

}  // namespace

// Brings the signals of another thread to the observers on the main thread.
struct SecretServiceKeychain::Watch {
    explicit Watch(Scheduler& scheduler)
        : signals([&scheduler, weak = std::weak_ptr(changes)] {
              scheduler.post([weak] {
                  if (const auto observers = weak.lock()) observers->notify();
              });
          }) {}

    std::shared_ptr<Observable> changes = std::make_shared<Observable>();
    SecretServiceSignals signals;
};

SecretServiceKeychain::SecretServiceKeychain(Scheduler& scheduler)
    : service_(std::make_unique<Service>()), watch_(std::make_unique<Watch>(scheduler)) {}

SecretServiceKeychain::~SecretServiceKeychain() = default;

template <class Work>
Status SecretServiceKeychain::run(std::stop_token stop, Work work) {
    try {
        Operation operation(service_->context(), std::move(stop));
        service_->open(operation);
        work(operation);
        return Status::success;
    } catch (const Failure& failure) {
        return failure.status;
    }
}

// Asked at each start, mostly about items that are not there: no exception, whose first use makes
// the unwinder read the tables of the whole program.
Status SecretServiceKeychain::exists(const KeychainQuery& query, std::stop_token stop) {
    auto presence = Status::success;
    const auto asked = run(std::move(stop), [&](Operation& operation) {
        const auto found = service_->search(operation, attributesOf(query));
        if (!found.unlocked.empty()) return;
        // A service that was never unlocked doesn't know the collection's content.
        const bool isLocked =
            !found.locked.empty() || !service_->lockedCollection(operation).empty();
        presence = isLocked ? Status::interactionNotAllowed : Status::itemNotFound;
    });
    return asked == Status::success ? presence : asked;
}

KeychainItem SecretServiceKeychain::read(const KeychainQuery& query, std::stop_token stop) {
    KeychainItem item;
    item.status = run(std::move(stop), [&](Operation& operation) {
        item.secret = service_->secretOf(operation, find(*service_, operation, query).front());
    });
    return item;
}

Status SecretServiceKeychain::update(const KeychainQuery& query, const Secret& secret,
                                     std::stop_token stop) {
    return run(std::move(stop), [&](Operation& operation) {
        for (const auto& path : find(*service_, operation, query))
            service_->setSecret(operation, path, secret);
    });
}

Status SecretServiceKeychain::add(const KeychainQuery& query, const Secret& secret,
                                  KeychainAccessibility accessibility, std::stop_token stop) {
    const bool staysHere = accessibility == KeychainAccessibility::whenUnlockedThisDeviceOnly;
    auto attributes = attributesOf(query);
    attributes.emplace("accessible", staysHere ? "WhenUnlockedThisDeviceOnly" : "WhenUnlocked");
    return run(std::move(stop), [&](Operation& operation) {
        service_->unlock(operation, service_->lockedCollection(operation));
        service_->createItem(operation, attributes, labelOf(query).c_str(), secret);
    });
}

Status SecretServiceKeychain::remove(const KeychainQuery& query, std::stop_token stop) {
    return run(std::move(stop), [&](Operation& operation) {
        for (const auto& path : find(*service_, operation, query)) service_->erase(operation, path);
    });
}

Subscription SecretServiceKeychain::onChange(std::function<void()> observer) {
    return watch_->changes->subscribe(std::move(observer));
}

}  // namespace quorvi
