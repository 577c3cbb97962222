#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/Keychain.h"

namespace quorvi::test {

// A keychain in memory that records its operations: "read", "update sync" and so on.
class FakeKeychain : public Keychain {
public:
    KeychainStatus exists(const KeychainQuery& query, std::stop_token) override {
        const auto failed = begin("exists", query);
        if (failed != KeychainStatus::success) return failed;
        if (locked) return KeychainStatus::interactionNotAllowed;
        return items.contains(query.synchronizable) ? KeychainStatus::success
                                                    : KeychainStatus::itemNotFound;
    }
    KeychainItem read(const KeychainQuery& query, std::stop_token) override {
        const auto failed = unlock("read", query);
        if (failed != KeychainStatus::success) return {failed, {}};
        const auto found = items.find(query.synchronizable);
        if (found == items.end()) return {KeychainStatus::itemNotFound, {}};
        return {KeychainStatus::success, Secret(std::string_view(found->second))};
    }
    KeychainStatus update(const KeychainQuery& query, const Secret& secret,
                          std::stop_token) override {
        const auto failed = unlock("update", query);
        if (failed != KeychainStatus::success) return failed;
        const auto found = items.find(query.synchronizable);
        if (found == items.end()) return KeychainStatus::itemNotFound;
        found->second = secret.view();
        return KeychainStatus::success;
    }
    KeychainStatus add(const KeychainQuery& query, const Secret& secret,
                       KeychainAccessibility accessibility, std::stop_token) override {
        const auto failed = unlock("add", query);
        if (failed != KeychainStatus::success) return failed;
        staysHere[query.synchronizable] =
            accessibility == KeychainAccessibility::whenUnlockedThisDeviceOnly;
        items[query.synchronizable] = secret.view();
        return KeychainStatus::success;
    }
    KeychainStatus remove(const KeychainQuery& query, std::stop_token) override {
        const auto failed = unlock("remove", query);
        if (failed != KeychainStatus::success) return failed;
        return items.erase(query.synchronizable) ? KeychainStatus::success
                                                 : KeychainStatus::itemNotFound;
    }
    Subscription onChange(std::function<void()> observer) override {
        return changes.subscribe(std::move(observer));
    }

    std::map<bool, std::string> items;  // whether synchronised, and the key
    std::map<bool, bool> staysHere;
    std::map<std::string, KeychainStatus> failures;  // by the journal's words
    bool locked = false;
    bool userUnlocks = true;
    std::vector<std::string> journal;
    Observable changes;

private:
    KeychainStatus begin(const std::string& name, const KeychainQuery& query) {
        journal.push_back(name + (query.synchronizable ? " sync" : ""));
        const auto failure = failures.find(journal.back());
        return failure == failures.end() ? KeychainStatus::success : failure->second;
    }
    KeychainStatus unlock(const std::string& name, const KeychainQuery& query) {
        const auto failed = begin(name, query);
        if (failed != KeychainStatus::success) return failed;
        if (locked && !userUnlocks) return KeychainStatus::userCanceled;
        locked = false;
        return KeychainStatus::success;
    }
};

}  // namespace quorvi::test
