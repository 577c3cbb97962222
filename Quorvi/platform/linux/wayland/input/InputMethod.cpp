#include "Quorvi/platform/linux/wayland/input/InputMethod.h"

#include <unistd.h>
#include <wayland-client.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <utility>

#include "protocols/input-method.h"

namespace quorvi {
namespace {

// Of the text input protocol.
constexpr std::uint32_t hiddenText = 0x40;
constexpr auto patience = std::chrono::milliseconds(300);  // for the compositor's answer
constexpr std::uint32_t passwordPurpose = 8, pinPurpose = 9, terminalPurpose = 13;

}  // namespace

bool InputMethod::Field::isSecret() const {
    return purpose == passwordPurpose || purpose == pinPurpose || (hint & hiddenText) != 0;
}

bool InputMethod::Field::isTerminal() const {
    return purpose == terminalPurpose;
}

struct InputMethod::Listeners {
    static InputMethod& self(void* data) { return *static_cast<InputMethod*>(data); }

    static void activate(void* data, zwp_input_method_v2*) {
        self(data).pending_ = {.isActive = true};
        ++self(data).activation_;
    }
    static void deactivate(void* data, zwp_input_method_v2*) {
        self(data).pending_ = {};
        ++self(data).activation_;
    }
    // The text around the caret may be a password: never looked at.
    static void surrounding(void*, zwp_input_method_v2*, const char*, std::uint32_t,
                            std::uint32_t) {}
    static void cause(void*, zwp_input_method_v2*, std::uint32_t) {}
    static void content(void* data, zwp_input_method_v2*, std::uint32_t hint,
                        std::uint32_t purpose) {
        self(data).pending_.hint = hint;
        self(data).pending_.purpose = purpose;
    }
    static void done(void* data, zwp_input_method_v2*) {
        ++self(data).serial_;
        self(data).field_ = self(data).pending_;
        self(data).tellObservers();
    }
    static void unavailable(void* data, zwp_input_method_v2*) { self(data).lose(); }
    static constexpr zwp_input_method_v2_listener method{activate, deactivate, surrounding, cause,
                                                         content,  done,       unavailable};

    static void keymap(void* data, zwp_input_method_keyboard_grab_v2*, std::uint32_t format,
                       int file, std::uint32_t size) {
        self(data).keyboard_->useLayout(format, file, size);
        close(file);
    }
    static void key(void* data, zwp_input_method_keyboard_grab_v2*, std::uint32_t,
                    std::uint32_t time, std::uint32_t key, std::uint32_t state) {
        self(data).key(time, key, state == WL_KEYBOARD_KEY_STATE_PRESSED);
    }
    static void modifiers(void* data, zwp_input_method_keyboard_grab_v2*, std::uint32_t,
                          std::uint32_t held, std::uint32_t latched, std::uint32_t locked,
                          std::uint32_t group) {
        self(data).keyboard_->modifiers(held, latched, locked, group);
    }
    static void repeat(void*, zwp_input_method_keyboard_grab_v2*, std::int32_t, std::int32_t) {}
    static constexpr zwp_input_method_keyboard_grab_v2_listener grab{keymap, key, modifiers,
                                                                     repeat};
};

bool InputMethod::isOffered(const WaylandConnection& connection) {
    return connection.versionOf(zwp_input_method_manager_v2_interface.name) > 0;
}

InputMethod::InputMethod(WaylandConnection& connection) : connection_(connection) {}

InputMethod::~InputMethod() {
    ungrab();
    if (method_) zwp_input_method_v2_destroy(method_);
}

void InputMethod::enter() {
    if (uses_++ > 0) return;
    auto* manager =
        connection_.bind<zwp_input_method_manager_v2>(zwp_input_method_manager_v2_interface, 1);
    isUnavailable_ = !manager || !connection_.seat();
    field_ = pending_ = {};
    serial_ = 0;
    if (isUnavailable_) return;
    method_ = zwp_input_method_manager_v2_get_input_method(manager, connection_.seat());
    zwp_input_method_v2_add_listener(method_, &Listeners::method, this);
    zwp_input_method_manager_v2_destroy(manager);
}

void InputMethod::leave() {
    if (--uses_ > 0) return;
    ungrab();
    if (method_) zwp_input_method_v2_destroy(std::exchange(method_, nullptr));
}

// The text and the question whether it was carried out are one write, which the compositor reads at
// once. So a change of the field that it tells of before its answer is older than the text.
std::optional<bool> InputMethod::commit(std::string_view piece) {
    if (!method_ || !connection_.synchronise(patience) || !field_.isActive) return false;
    const auto serial = serial_;
    zwp_input_method_v2_commit_string(method_, std::string(piece).c_str());
    zwp_input_method_v2_commit(method_, serial);
    auto told = serial;  // with the answer; the field changes again once it has the text
    if (!connection_.synchronise(patience, [&] { told = serial_; })) return std::nullopt;
    if (serial == told) return true;
    if (std::getenv("SWAYSOCK") == nullptr) return std::nullopt;
    // sway's first release that offers this also heeds the serial.
    return connection_.versionOf("wp_cursor_shape_manager_v1") == 0;
}

void InputMethod::grab(OnKey onKey) {
    onKey_ = std::move(onKey);
    if (grab_ || !method_ || isUnavailable_) return;
    passed_.clear();
    if (!keyboard_) keyboard_ = std::make_unique<VirtualKeyboard>(connection_);
    grab_ = zwp_input_method_v2_grab_keyboard(method_);
    zwp_input_method_keyboard_grab_v2_add_listener(grab_, &Listeners::grab, this);
}

// A key that is on its way to this grab goes to nobody else, so the grab listens until the
// compositor has ended it. The generated request would end the listening at once.
void InputMethod::ungrab() {
    // Beside another input method there is no grab, which the answer to enter() tells.
    if (grab_) connection_.synchronise(patience);
    if (auto* grab = reinterpret_cast<wl_proxy*>(std::exchange(grab_, nullptr))) {
        wl_proxy_marshal(grab, ZWP_INPUT_METHOD_KEYBOARD_GRAB_V2_RELEASE);
        connection_.synchronise(patience);
        wl_proxy_destroy(grab);
        // Their releases go the usual way, where nobody knows of the press.
        for (const auto key : passed_) keyboard_->key(key, false);
    }
    passed_.clear();
    onKey_ = nullptr;
}

void InputMethod::key(std::uint32_t time, std::uint32_t key, bool isDown) {
    if (onKey_ && onKey_(key, isDown)) return;
    if (isDown)
        passed_.insert(key);
    else
        passed_.erase(key);
    keyboard_->key(key, isDown, time);
}

void InputMethod::observe(std::function<bool()> observer) {
    if (observer()) observers_.push_back(std::move(observer));
}

void InputMethod::tellObservers() {
    std::erase_if(observers_, [](const auto& observer) { return !observer(); });
}

void InputMethod::lose() {
    isUnavailable_ = true;
    field_ = {};
    // The compositor does not know it, and would end the connection at a request for it.
    if (auto* grab = reinterpret_cast<wl_proxy*>(std::exchange(grab_, nullptr)))
        wl_proxy_destroy(grab);
    tellObservers();
}

}  // namespace quorvi
