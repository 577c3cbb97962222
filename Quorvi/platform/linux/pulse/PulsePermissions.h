#pragma once

#include <memory>
#include <thread>

#include "Quorvi/platform/SystemPermissions.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"

namespace quorvi {

// Whether the desktop lets the program hear: the sound server answers and has a microphone. Desktop
// programs outside a sandbox are not asked for more than that. Main thread; `connection` outlives
// it.
class PulsePermissions : public SystemPermissions {
public:
    PulsePermissions(PulseConnection& connection, Scheduler& scheduler);
    ~PulsePermissions() override;

    MicrophoneAuthorization microphone() const override;
    void requestMicrophone(std::function<void()> answered) override;
    // Starts the settings program of the running desktop, or else one that is installed. Without
    // any, nothing happens.
    void openPrivacyPane(PrivacyPane pane) override;

private:
    struct Requests;

    PulseConnection& connection_;
    Scheduler& scheduler_;
    std::shared_ptr<Requests> requests_;
    std::jthread launcher_;
};

}  // namespace quorvi
