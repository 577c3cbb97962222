#pragma once

#include <utility>
#include <vector>

#include "Quorvi/platform/SystemPermissions.h"

namespace quorvi::test {

// Permissions that the test grants or denies. A request for the microphone is pending until
// answer() is called.
class FakePermissions : public SystemPermissions {
public:
    MicrophoneAuthorization microphone() const override { return microphone_; }
    void requestMicrophone(std::function<void()> answered) override {
        waiting_.push_back(std::move(answered));
    }
    void openPrivacyPane(PrivacyPane pane) override { openedPanes.push_back(pane); }

    void setMicrophone(MicrophoneAuthorization authorization) { microphone_ = authorization; }
    void answer(MicrophoneAuthorization authorization) {
        microphone_ = authorization;
        for (auto& answered : std::exchange(waiting_, {}))
            if (answered) answered();
    }

    std::vector<PrivacyPane> openedPanes;

private:
    MicrophoneAuthorization microphone_ = MicrophoneAuthorization::authorized;
    std::vector<std::function<void()>> waiting_;
};

}  // namespace quorvi::test
