#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Quorvi/platform/KeyEventTap.h"
#include "Quorvi/platform/linux/gio/DescriptorSource.h"
#include "Quorvi/platform/linux/posix/StopLimit.h"
#include "Quorvi/platform/linux/wayland/input/WaylandInput.h"
#include "Quorvi/platform/linux/wayland/sway/SwaySocket.h"

namespace quorvi {

// The keys that Quorvi wants from sway, on the input's thread: bindings that are set at run time,
// in nobody's configuration, say that one goes down. From then until it has gone up, this program
// has the keyboard: it sees the release, Escape and every other key, and lets the others pass.
// Where another input method has the seat, the release comes from a second binding, which sway
// forgets when a further key goes down meanwhile: then it is told at the next press. So is that of
// a tap that is over before this program has the keyboard. A second binding would tell it at once,
// but sway (1.7, 1.10) crashes if such a binding goes while its key is held, as at a reload.
// A stopped process would keep the keyboard, so the kernel continues this one then.
class SwayShortcuts : public std::enable_shared_from_this<SwayShortcuts> {
public:
    using Sink = std::function<void(const TapEvent&)>;

    // `sink` gets the events and `onLost` the end of the connection to sway, both on the thread.
    SwayShortcuts(WaylandInput& input, Sink sink, std::function<void()> onLost);

    // For the thread. begin() returns false if sway does not answer.
    bool begin();
    void end();
    void bind(std::vector<SwallowedKey> keys);

    // Any thread.
    bool keyIsDown(KeyCode keyCode) const;

private:
    bool processEvents();
    void handle(SwaySocket::Message message, const std::string& payload);
    void applyWanted();
    bool belongsToUser(const SwallowedKey& key);
    void setBindings(const std::vector<SwallowedKey>& keys, bool isSet);
    void setReleases(const std::vector<SwallowedKey>& keys, bool isSet);
    void run(const std::string& commands);
    void pressed(KeyCode keyCode);
    void released();
    void tellPress();
    void takeKeyboard();
    void limitHold();
    void lookForInputMethod();
    void limitStop();
    void leaveKeyboard();
    void giveKeyboardBack();
    void giveBackWhenQuiet();
    bool handleKey(std::uint32_t key, bool isDown);
    bool wants(KeyCode keyCode) const;
    void report(KeyCode keyCode, bool isDown);

    WaylandInput& input_;
    const Sink sink_;
    const std::function<void()> onLost_;
    std::optional<SwaySocket> commands_, events_;
    std::optional<DescriptorSource> source_;
    std::vector<SwallowedKey> wanted_, bound_;
    std::map<std::string, bool> users_;  // which combinations the user has bound

    std::optional<SwallowedKey> held_;
    bool isTold_ = false;              // the press of the held key
    std::optional<KeyCode> released_;  // before its press was told
    bool hasKeyboard_ = false;
    bool hasRival_ = false;  // another input method has been seen
    bool isLeaving_ = false;
    std::uint64_t hold_ = 0;  // counts the times that the keyboard was taken
    std::chrono::steady_clock::time_point lastKey_;
    StopLimit stopLimit_;
    mutable std::mutex mutex_;  // guards down_ only
    std::set<KeyCode> down_;    // as far as is known
};

}  // namespace quorvi
