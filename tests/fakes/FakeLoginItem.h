#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "Quorvi/platform/LoginItem.h"

namespace quorvi::test {

// A login item that records its operations, and fails them if `refusal` is set.
class FakeLoginItem : public LoginItem {
public:
    LoginItemStatus status() override { return current; }
    void registerItem() override { perform("register", LoginItemStatus::enabled); }
    void unregisterItem() override { perform("unregister", LoginItemStatus::notRegistered); }
    void openSettings() override { perform("settings", current); }

    LoginItemStatus current = LoginItemStatus::notRegistered;
    std::string refusal;
    std::vector<std::string> journal;

private:
    void perform(const std::string& name, LoginItemStatus next) {
        journal.push_back(name);
        if (!refusal.empty()) throw std::runtime_error(refusal);
        current = next;
    }
};

}  // namespace quorvi::test
