#pragma once

#include <functional>

namespace quorvi {

enum class MicrophoneAuthorization { notDetermined, denied, authorized };
// A subject of the desktop's own settings.
enum class PrivacyPane { microphone, accessibility, inputMonitoring, loginItems };

// What the desktop lets this program do. Main thread; nothing blocks.
class SystemPermissions {
public:
    virtual ~SystemPermissions() = default;

    // Authorised when the sound server answers and has a real source, one that is no speaker's
    // monitor. notDetermined while that is still being found out. As last known.
    virtual MicrophoneAuthorization microphone() const = 0;

    // Asks for the microphone and reports, on the main thread, when the answer is there.
    virtual void requestMicrophone(std::function<void()> answered) = 0;

    // Opens the desktop's own settings program at, or near, this subject.
    virtual void openPrivacyPane(PrivacyPane pane) = 0;
};

}  // namespace quorvi
