#include "Quorvi/platform/linux/atspi/AtspiTypingWatch.h"

#include <gio/gio.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Quorvi/platform/linux/atspi/AtspiVariant.h"

namespace quorvi::atspi {
namespace {

constexpr int answerTimeoutMs = 250;
constexpr std::size_t watchedObjects = 64;  // of one application
// Events of programs that no user caused; Firefox says so.
constexpr std::string_view bySystem = "system";

struct Event {
    std::string_view kind;  // of a change of text: "insert" or "delete", perhaps with a source
    std::int32_t position = 0, length = 0;
};

std::optional<Event> eventOf(GVariant* parameters) {
    if (g_variant_n_children(parameters) < 3) return std::nullopt;
    const Variant kind(g_variant_get_child_value(parameters, 0));
    const Variant position(g_variant_get_child_value(parameters, 1));
    const Variant length(g_variant_get_child_value(parameters, 2));
    if (!g_variant_is_of_type(kind.get(), G_VARIANT_TYPE_STRING) ||
        !g_variant_is_of_type(position.get(), G_VARIANT_TYPE_INT32) ||
        !g_variant_is_of_type(length.get(), G_VARIANT_TYPE_INT32))
        return std::nullopt;
    // The text lives as long as the parameters.
    return Event{g_variant_get_string(kind.get(), nullptr), g_variant_get_int32(position.get()),
                 g_variant_get_int32(length.get())};
}

}  // namespace

// The bus's thread. Lives until its questions are answered.
class AtspiTypingWatch::Listener : public std::enable_shared_from_this<Listener> {
public:
    Listener(ObjectRef field, std::function<void()> typed)
        : field_(std::move(field)), typed_(std::move(typed)) {}

    void begin(AtspiBus& bus) {
        connection_ = bus.connection();
        if (!connection_) return;
        bus.addTextListener(field_.bus);
        subscriptions_[0] = subscribe(
            "TextChanged", [](GDBusConnection*, const char*, const char* path, const char*,
                              const char*, GVariant* parameters, gpointer self) {
                if (const auto event = eventOf(parameters))
                    static_cast<Listener*>(self)->textChanged(path, *event);
            });
        subscriptions_[1] = subscribe(
            "TextCaretMoved", [](GDBusConnection*, const char*, const char* path, const char*,
                                 const char*, GVariant* parameters, gpointer self) {
                if (const auto event = eventOf(parameters))
                    static_cast<Listener*>(self)->caretMoved(path, event->position);
            });
        place(field_.path)->isEditable = true;
        askForCaret();
    }

    void end(AtspiBus& bus) {
        if (!connection_) return;
        for (const auto id : subscriptions_)
            g_dbus_connection_signal_unsubscribe(connection_.get(), id);
        bus.removeTextListener();
        connection_.reset();
        typed_ = nullptr;
    }

private:
    struct Change {
        std::int32_t position, length;
        bool touches(std::int32_t caret) const {
            return caret == position || caret == position + length;
        }
    };
    // What is known of an object of the application.
    struct Place {
        std::optional<std::int32_t> caret;
        std::optional<Change> lastChange;  // that the caret was not seen at
        std::optional<bool> isEditable;
        bool isAsked = false;
        bool isTypedInto = false;  // it seems, but whether it is editable is not known yet
    };

    guint subscribe(const char* member, GDBusSignalCallback callback) {
        return g_dbus_connection_signal_subscribe(
            connection_.get(), field_.bus.c_str(), objectEventInterface, member, nullptr, nullptr,
            G_DBUS_SIGNAL_FLAGS_NONE, callback, this, nullptr);
    }

    Place* place(const std::string& path) {
        const auto found = places_.find(path);
        if (found != places_.end()) return &found->second;
        return places_.size() < watchedObjects ? &places_[path] : nullptr;
    }

    // Chromium tells of a text before it tells of the caret's way there.
    void caretMoved(const std::string& path, std::int32_t position) {
        auto* at = place(path);
        if (!at) return;
        at->caret = position;
        if (at->lastChange && at->lastChange->touches(position)) seemsTyped(path, *at);
        at->lastChange.reset();
    }

    void textChanged(const std::string& path, const Event& event) {
        auto* at = place(path);
        if (!at || event.kind.ends_with(bySystem)) return;
        at->lastChange = Change{event.position, event.length};
        if (at->caret && at->lastChange->touches(*at->caret)) seemsTyped(path, *at);
    }

    void seemsTyped(const std::string& path, Place& at) {
        at.lastChange.reset();
        if (at.isEditable) {
            if (*at.isEditable && typed_) typed_();
            return;
        }
        at.isTypedInto = true;
        if (!std::exchange(at.isAsked, true)) askWhetherEditable(path);
    }

    // The answer is null if there is none.
    void ask(const std::string& path, const char* interface, const char* method,
             const Variant& arguments, std::function<void(Listener&, const Variant&)> answered) {
        struct Question {
            std::shared_ptr<Listener> listener;
            std::function<void(Listener&, const Variant&)> answered;
        };
        g_dbus_connection_call(
            connection_.get(), field_.bus.c_str(), path.c_str(), interface, method, arguments.get(),
            nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, answerTimeoutMs, nullptr,
            [](GObject* source, GAsyncResult* result, gpointer data) {
                const std::unique_ptr<Question> question(static_cast<Question*>(data));
                const Variant answer(
                    g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
                question->answered(*question->listener, answer);
            },
            new Question{shared_from_this(), std::move(answered)});
    }

    void askForCaret() {
        ask(field_.path, propertiesInterface, "Get", arguments(textInterface, "CaretOffset"),
            [](Listener& self, const Variant& answer) {
                auto& caret = self.places_[self.field_.path].caret;
                if (!caret) caret = readInteger(answer);
            });
    }

    // A paragraph of a page that is edited is; the log of a chat is not.
    void askWhetherEditable(const std::string& path) {
        ask(path, accessibleInterface, "GetState", arguments(),
            [path](Listener& self, const Variant& answer) {
                auto& at = self.places_[path];
                const auto states = readStates(answer);
                at.isEditable = states && states->has(State::editable);
                if (*at.isEditable && at.isTypedInto && self.typed_) self.typed_();
            });
    }

    const ObjectRef field_;
    std::function<void()> typed_;
    std::shared_ptr<GDBusConnection> connection_;
    guint subscriptions_[2] = {};
    std::map<std::string, Place> places_;  // by path
};

AtspiTypingWatch::AtspiTypingWatch(AtspiBus& bus, ObjectRef field, std::function<void()> typed)
    : bus_(bus), listener_(std::make_shared<Listener>(std::move(field), std::move(typed))) {
    bus_.run([&bus, listener = listener_] { listener->begin(bus); });
}

AtspiTypingWatch::~AtspiTypingWatch() {
    bus_.run([&bus = bus_, listener = std::move(listener_)] { listener->end(bus); });
}

}  // namespace quorvi::atspi
