#include "Quorvi/platform/linux/ibus/IbusEngine.h"

#include <gio/gio.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <utility>

#include "Quorvi/platform/linux/gio/BusConnection.h"
#include "Quorvi/platform/linux/ibus/IbusAddress.h"
#include "QuorviCore/text/Pieces.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;
using Variant = GLibHandle<GVariant>;

constexpr auto service = "org.freedesktop.IBus";
constexpr auto busPath = "/org/freedesktop/IBus";
constexpr auto factoryPath = "/org/freedesktop/IBus/Factory";
constexpr auto enginePath = "/org/freedesktop/IBus/Engine/1";
constexpr auto engineInterface = "org.freedesktop.IBus.Engine";
constexpr auto engineName = "quorvi";

// What IBus is given and hands on to a Wayland field must fit into one message of that protocol.
constexpr std::size_t longestPiece = 3000;

// In milliseconds: for each answer of the daemon's; for a field to move its caret; for the shell to
// answer.
constexpr int answerLimit = 500;
constexpr int caretLimit = 150;
constexpr int shellLimit = 2000;

// How often the shell has to answer until it has given a text to the field's program.
constexpr int shellRounds = 3;

// Engines with this prefix are keyboard layouts. Every other composes.
constexpr std::string_view layoutPrefix = "xkb:";

// The context of the daemon's own that has the focus while no field has it.
constexpr std::string_view noField = "/org/freedesktop/IBus/InputContext_1";

constexpr std::size_t nameInDescription = 2;  // of an engine, among its serialised parts

enum Purpose : std::uint32_t { password = 8, pin = 9, terminal = 10 };

// What the daemon calls here. Everything is listed, since the library answers anything else with an
// error.
constexpr auto description = R"(<node>
<interface name='org.freedesktop.IBus.Factory'>
  <method name='CreateEngine'><arg type='s' direction='in'/><arg type='o' direction='out'/></method>
</interface>
<interface name='org.freedesktop.IBus.Service'><method name='Destroy'/></interface>
<interface name='org.freedesktop.IBus.Engine'>
  <property name='FocusId' type='b' access='read'/>
  <property name='ContentType' type='(uu)' access='write'/>
  <method name='ProcessKeyEvent'>
    <arg type='u' direction='in'/><arg type='u' direction='in'/><arg type='u' direction='in'/>
    <arg type='b' direction='out'/>
  </method>
  <method name='FocusIn'/><method name='FocusOut'/>
  <method name='FocusInId'><arg type='s' direction='in'/><arg type='s' direction='in'/></method>
  <method name='FocusOutId'><arg type='s' direction='in'/></method>
  <method name='Enable'/><method name='Disable'/><method name='Reset'/>
  <method name='SetCapabilities'><arg type='u' direction='in'/></method>
  <method name='SetCursorLocation'>
    <arg type='i' direction='in'/><arg type='i' direction='in'/>
    <arg type='i' direction='in'/><arg type='i' direction='in'/>
  </method>
  <method name='SetSurroundingText'>
    <arg type='v' direction='in'/><arg type='u' direction='in'/><arg type='u' direction='in'/>
  </method>
  <method name='PageUp'/><method name='PageDown'/><method name='CursorUp'/><method name='CursorDown'/>
  <method name='PropertyActivate'><arg type='s' direction='in'/><arg type='u' direction='in'/></method>
  <method name='PropertyShow'><arg type='s' direction='in'/></method>
  <method name='PropertyHide'><arg type='s' direction='in'/></method>
  <method name='CandidateClicked'>
    <arg type='u' direction='in'/><arg type='u' direction='in'/><arg type='u' direction='in'/>
  </method>
  <method name='PanelExtensionReceived'><arg type='v' direction='in'/></method>
  <method name='PanelExtensionRegisterKeys'><arg type='v' direction='in'/></method>
</interface>
</node>)";

// Serialised objects of IBus: a structure of the type's name, attachments, and its fields.
GVariant* component() {
    auto* engine = g_variant_new_parsed(
        "('IBusEngineDesc', @a{sv} {}, %s, 'Quorvi', '', '', '', '', '', 'default', @u 0,"
        " '', '', '', '', '', '', '', '')",
        engineName);
    return g_variant_new_parsed(
        "(<('IBusComponent', @a{sv} {}, 'app.quorvi.IBus', 'Quorvi', '', '', '', '', '', '',"
        " @av [], [%v])>,)",
        engine);
}

GVariant* committed(const std::string& text) {
    return g_variant_new_parsed(
        "(<('IBusText', @a{sv} {}, %s, <('IBusAttrList', @a{sv} {}, @av [])>)>,)", text.c_str());
}

// Holds the name of the user's engine while this one is in its place. Gone with the session.
std::filesystem::path noteFile() {
    return std::filesystem::path(g_get_user_runtime_dir()) / "quorvi-ibus-engine";
}

// Asks IBus's daemon over a connection of its own.
class Client {
public:
    Client() = default;
    ~Client() { close(); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    bool connect(const std::string& address) {
        const GLibHandle<GCancellable> cancellable(g_cancellable_new());
        const Timer timer(answerLimit, [&cancellable] { g_cancellable_cancel(cancellable.get()); });
        Answer answer;
        g_dbus_connection_new_for_address(address.c_str(), ownBusConnection, nullptr,
                                          cancellable.get(), Answer::come, &answer);
        bus_.reset(g_dbus_connection_new_for_address_finish(answer.wait(), nullptr));
        return bus_ != nullptr;
    }
    void close() {
        if (bus_) g_dbus_connection_close_sync(bus_.get(), nullptr, nullptr);
        bus_.reset();
    }
    GDBusConnection* bus() const { return bus_.get(); }

    // Null on failure.
    Variant call(const char* method, GVariant* arguments, const char* interface = service) {
        return call(bus_.get(), {service, busPath, interface, method}, arguments, answerLimit);
    }

    struct Method {
        const char *service, *path, *interface, *name;
    };
    static Variant call(GDBusConnection* bus, const Method& method, GVariant* arguments,
                        int milliseconds) {
        Answer answer;
        g_dbus_connection_call(bus, method.service, method.path, method.interface, method.name,
                               arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, milliseconds,
                               nullptr, Answer::come, &answer);
        return Variant(g_dbus_connection_call_finish(bus, answer.wait(), nullptr));
    }

    bool setEngine(const std::string& name) {
        return call("SetGlobalEngine", g_variant_new("(s)", name.c_str())) != nullptr;
    }

    // Empty if there is none.
    std::string engine() {
        auto value = property("GlobalEngine");
        if (value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_VARIANT))
            value.reset(g_variant_get_variant(value.get()));
        if (!value || !g_variant_is_of_type(value.get(), G_VARIANT_TYPE_TUPLE) ||
            g_variant_n_children(value.get()) <= nameInDescription)
            return {};
        const Variant name(g_variant_get_child_value(value.get(), nameInDescription));
        return g_variant_is_of_type(name.get(), G_VARIANT_TYPE_STRING)
                   ? g_variant_get_string(name.get(), nullptr)
                   : "";
    }

    bool fieldHasFocus() {
        const auto path = property("CurrentInputContext");
        return path && g_variant_is_of_type(path.get(), G_VARIANT_TYPE_OBJECT_PATH) &&
               std::string_view(g_variant_get_string(path.get(), nullptr)) != noField;
    }

    static void waitWhile(const std::function<bool()>& condition, int milliseconds = answerLimit) {
        bool isLate = false;
        const Timer timer(milliseconds, [&isLate] { isLate = true; });
        while (!isLate && condition()) g_main_context_iteration(ownContext(), TRUE);
    }

private:
    static GMainContext* ownContext() { return g_main_context_get_thread_default(); }

    class Timer {
    public:
        Timer(int milliseconds, std::function<void()> due)
            : due_(std::move(due)),
              source_(g_timeout_source_new(static_cast<guint>(milliseconds))) {
            g_source_set_callback(
                source_.get(),
                [](gpointer self) -> gboolean {
                    static_cast<Timer*>(self)->due_();
                    return G_SOURCE_REMOVE;
                },
                this, nullptr);
            g_source_attach(source_.get(), ownContext());
        }
        ~Timer() { g_source_destroy(source_.get()); }
        Timer(const Timer&) = delete;
        Timer& operator=(const Timer&) = delete;

    private:
        const std::function<void()> due_;
        const GLibHandle<GSource> source_;
    };

    struct Answer {
        GLibHandle<GAsyncResult> result;
        static void come(GObject*, GAsyncResult* result, gpointer self) {
            static_cast<Answer*>(self)->result.reset(G_ASYNC_RESULT(g_object_ref(result)));
        }
        GAsyncResult* wait() const {
            while (!result) g_main_context_iteration(ownContext(), TRUE);
            return result.get();
        }
    };

    Variant property(const char* name) {
        const auto answer =
            call("Get", g_variant_new("(ss)", service, name), "org.freedesktop.DBus.Properties");
        if (!answer || !g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(v)"))) return nullptr;
        GVariant* value = nullptr;
        g_variant_get(answer.get(), "(v)", &value);
        return Variant(value);
    }

    GLibHandle<GDBusConnection> bus_;
};

}  // namespace

class IbusEngine::Link {
public:
    Link() = default;
    ~Link() {
        if (engine_.bus()) leave();
    }

    std::optional<Kind> enter() {
        const auto address = ibusAddress();
        if (address.empty() || !client_.connect(address) || !client_.fieldHasFocus())
            return std::nullopt;
        user_ = client_.engine();
        if (!user_.starts_with(layoutPrefix) || !engine_.connect(address)) return std::nullopt;
        exportObjects();
        std::ofstream(noteFile()) << user_;
        if (!engine_.call("RegisterComponent", component())) return std::nullopt;
        // Before the daemon answers this it tells about the field.
        if (!engine_.setEngine(engineName) || focus_ != Focus::here) return std::nullopt;
        if (purpose_ == password || purpose_ == pin) return Kind::secret;
        return purpose_ == terminal ? Kind::terminal : Kind::text;
    }

    Delivery commit(std::string_view text) {
        if (focus_ != Focus::here) return Delivery::nothing;
        bool isTaken = true;
        while (!text.empty()) {
            const auto piece = text::piece(text, longestPiece);
            const auto moves = caretMoves_;
            g_dbus_connection_emit_signal(engine_.bus(), nullptr, enginePath, engineInterface,
                                          "CommitText", committed(std::string(piece)), nullptr);
            text.remove_prefix(piece.size());
            isTaken = isGivenToField(moves) && isTaken;
        }
        // The daemon tells of a lost focus before it answers this, if that came first.
        return isTaken && engine_.fieldHasFocus() && focus_ == Focus::here ? Delivery::sent
                                                                           : Delivery::uncertain;
    }

private:
    enum class Focus { notYet, here, gone };

    // Whether the field's program has been given a piece, before which the caret had moved that
    // often. Until then the shell would put another text in its place, whoever sends that. A caret
    // that moves says so; but the GTK of Debian 13 tells where it was before.
    bool isGivenToField(int moves) {
        Client::waitWhile([this, moves] { return focus_ == Focus::here && caretMoves_ == moves; },
                          caretLimit);
        return caretMoves_ != moves || (engine_.fieldHasFocus() && shellHasWorked());
    }

    // The daemon has handed the piece to the shell, which does what it has to do in turn.
    static bool shellHasWorked() {
        constexpr auto shell = "org.gnome.Shell";
        const auto bus = connectToBus(G_BUS_TYPE_SESSION, nullptr);
        for (int round = 0; bus && round < shellRounds; ++round)
            if (!Client::call(bus.get(),
                              {shell, "/org/gnome/Shell", "org.freedesktop.DBus.Properties", "Get"},
                              g_variant_new("(ss)", shell, "ShellVersion"), shellLimit))
                return false;
        return bus != nullptr;
    }

    // The daemon sets no engine at all when one that was registered goes away, whichever is the
    // session's. So the user's is set twice: in time for the next key, and for good.
    void leave() {
        if (const auto current = client_.engine(); current == engineName)
            client_.setEngine(user_);
        else if (!current.empty())
            user_ = current;  // chosen meanwhile
        std::string gone = g_dbus_connection_get_unique_name(engine_.bus());
        const auto subscription = g_dbus_connection_signal_subscribe(
            client_.bus(), "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
            nullptr, gone.c_str(), G_DBUS_SIGNAL_FLAGS_NONE,
            [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant*,
               gpointer name) { static_cast<std::string*>(name)->clear(); },
            &gone, nullptr);
        client_.fieldHasFocus();  // the answer comes after the subscription
        engine_.close();
        Client::waitWhile([&gone] { return !gone.empty(); });
        g_dbus_connection_signal_unsubscribe(client_.bus(), subscription);
        client_.setEngine(user_);
        std::error_code ignored;
        std::filesystem::remove(noteFile(), ignored);
    }

    void exportObjects() {
        static const GDBusInterfaceVTable table{called, read, written, {}};
        static GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(description, nullptr);
        const std::pair<const char*, const char*> objects[] = {
            {factoryPath, "org.freedesktop.IBus.Factory"},
            {enginePath, "org.freedesktop.IBus.Service"},
            {enginePath, engineInterface}};
        for (const auto& [path, interface] : objects)
            g_dbus_connection_register_object(engine_.bus(), path,
                                              g_dbus_node_info_lookup_interface(node, interface),
                                              &table, this, nullptr, nullptr);
    }

    static void called(GDBusConnection*, const gchar*, const gchar*, const gchar*,
                       const gchar* method, GVariant* arguments, GDBusMethodInvocation* invocation,
                       gpointer self) {
        GVariant* answer = nullptr;
        const std::string_view name = method;
        auto& focus = static_cast<Link*>(self)->focus_;
        if (name == "CreateEngine") answer = g_variant_new("(o)", enginePath);
        if (name == "ProcessKeyEvent") answer = g_variant_new("(b)", FALSE);
        if (name.starts_with("FocusIn") && focus == Focus::notYet) focus = Focus::here;
        if (name == "SetCursorLocation" && isSomewhere(arguments))
            ++static_cast<Link*>(self)->caretMoves_;
        if (name.starts_with("FocusOut")) focus = Focus::gone;
        g_dbus_method_invocation_return_value(invocation, answer);
    }

    // GNOME Shell forgets the caret of a field that it leaves.
    static bool isSomewhere(GVariant* rectangle) {
        std::int32_t x = 0, y = 0, width = 0, height = 0;
        g_variant_get(rectangle, "(iiii)", &x, &y, &width, &height);
        return x || y || width || height;
    }

    static GVariant* read(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                          GError**, gpointer) {
        return g_variant_new_boolean(FALSE);
    }

    static gboolean written(GDBusConnection*, const gchar*, const gchar*, const gchar*,
                            const gchar*, GVariant* value, GError**, gpointer self) {
        std::uint32_t hints = 0;
        g_variant_get(value, "(uu)", &static_cast<Link*>(self)->purpose_, &hints);
        return TRUE;
    }

    Client client_;
    Client engine_;
    std::string user_;  // the user's engine
    Focus focus_ = Focus::notYet;
    std::uint32_t purpose_ = 0;
    int caretMoves_ = 0;
};

IbusEngine::IbusEngine() : link_(std::make_unique<Link>()) {}
IbusEngine::~IbusEngine() = default;

void IbusEngine::recover() {
    std::string user;
    std::getline(std::ifstream(noteFile()), user);
    if (user.empty()) return;
    Client client;
    if (client.connect(ibusAddress()) && client.engine().empty()) client.setEngine(user);
    std::error_code ignored;
    std::filesystem::remove(noteFile(), ignored);
}

std::optional<CommitField::Kind> IbusEngine::enter() {
    return link_->enter();
}

CommitField::Delivery IbusEngine::commit(std::string_view text) {
    return link_->commit(text);
}

}  // namespace quorvi
