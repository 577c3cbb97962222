#pragma once

#include <memory>
#include <thread>

#include "Quorvi/platform/SystemPermissions.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"

namespace quorvi {

// The microphone's permission: granted if the sound server answers and has a microphone, since a
// desktop asks programs outside a sandbox for nothing more. Main thread; `connection` outlives it.
class PulsePermissions : public SystemPermissions {
public:
    PulsePermissions(PulseConnection& connection, Scheduler& scheduler);
    ~PulsePermissions() override;

    MicrophoneAuthorization microphone() const override;
    void requestMicrophone(std::function<void()> answered) override;
    // Starts the settings program of the running desktop, or else another that is installed. Does
    // nothing if there is none.
    void openPrivacyPane(PrivacyPane pane) override;

private:
    struct Requests;

    PulseConnection& connection_;
    Scheduler& scheduler_;
    std::shared_ptr<Requests> requests_;
    std::jthread launcher_;
};

}  // namespace quorvi
