#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/wayland/WaylandConnection.h"
#include "Quorvi/platform/linux/wayland/input/VirtualKeyboard.h"

struct zwp_input_method_v2;
struct zwp_input_method_keyboard_grab_v2;

namespace quorvi {

// This program as the seat's input method: only while something needs it, since the seat has room
// for one, and the user may start another at any time. For the thread of its connection; the caller
// flushes.
class InputMethod {
public:
    // What the focused text field says of itself.
    struct Field {
        bool isActive = false;  // a field has the focus, and its program takes text
        std::uint32_t hint = 0;
        std::uint32_t purpose = 0;

        bool isSecret() const;
        bool isTerminal() const;
    };
    // Is told every key of the user's, as an evdev code; returns true to keep it from the focused
    // window.
    using OnKey = std::function<bool(std::uint32_t key, bool isDown)>;

    static bool isOffered(const WaylandConnection& connection);

    explicit InputMethod(WaylandConnection& connection);
    ~InputMethod();
    InputMethod(const InputMethod&) = delete;
    InputMethod& operator=(const InputMethod&) = delete;

    // Becomes the seat's input method; counted, so that each use ends with leave().
    void enter();
    void leave();
    // Whether another program is. Known once the compositor has answered enter().
    bool isUnavailable() const { return isUnavailable_; }
    const Field& field() const { return field_; }
    // Counts the times that a field got or lost the focus.
    std::uint64_t activation() const { return activation_; }
    // `observer` is called now and after each change of the field, until it returns false.
    void observe(std::function<bool()> observer);

    // Puts at most 3,000 bytes into the focused field, unless its state has changed in a way that
    // this program was not yet told of: newer compositors ignore the text then, older ones don't.
    // Waits for the compositor; true if it has taken the text, nothing if that is unknown.
    std::optional<bool> commit(std::string_view piece);

    // Takes the user's keyboard: all keys go to `onKey`, and what it lets pass to the focused
    // window. Within enter() and leave().
    void grab(OnKey onKey);
    // Gives the keyboard back, and waits for the compositor to have taken it, so that no key is
    // lost. Not within `onKey`.
    void ungrab();
    bool isGrabbing() const { return grab_ != nullptr; }
    // Whether no key that was let pass is held.
    bool isQuiet() const { return passed_.empty(); }

    // The connection is lost.
    void lose();

private:
    struct Listeners;
    void key(std::uint32_t time, std::uint32_t key, bool isDown);
    void tellObservers();

    WaylandConnection& connection_;
    int uses_ = 0;
    zwp_input_method_v2* method_ = nullptr;
    zwp_input_method_keyboard_grab_v2* grab_ = nullptr;
    std::unique_ptr<VirtualKeyboard> keyboard_;  // plays what is let pass
    OnKey onKey_;
    Field field_, pending_;
    std::vector<std::function<bool()>> observers_;
    std::uint32_t serial_ = 0;
    std::uint64_t activation_ = 0;
    std::set<std::uint32_t> passed_;  // keys that are down
    bool isUnavailable_ = false;
};

}  // namespace quorvi
