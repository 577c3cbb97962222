#pragma once

#include <functional>

namespace quorvi {

enum class MicrophoneAuthorization { notDetermined, denied, authorized };
// A page of the desktop's settings.
enum class PrivacyPane { microphone, accessibility, inputMonitoring, loginItems };

// What the desktop lets this program do. Main thread; nothing blocks.
class SystemPermissions {
public:
    virtual ~SystemPermissions() = default;

    // Returns authorized if the sound server answers and has a source other than the monitor of a
    // speaker, and notDetermined until that is known. The last known state.
    virtual MicrophoneAuthorization microphone() const = 0;

    // Asks for the microphone. Calls `answered` on the main thread when the answer is known.
    virtual void requestMicrophone(std::function<void()> answered) = 0;

    // Opens the desktop's settings at this page, or as near to it as possible.
    virtual void openPrivacyPane(PrivacyPane pane) = 0;
};

}  // namespace quorvi
