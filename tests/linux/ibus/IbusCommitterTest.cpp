#include "Quorvi/platform/linux/ibus/IbusCommitter.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <vector>

#include "Quorvi/platform/linux/gio/BusConnection.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

using Kind = CommitField::Kind;
using Engines = std::vector<std::string>;

constexpr auto path = "/org/freedesktop/IBus";
constexpr auto usersEngine = "xkb:de::ger";

// IBus's daemon as an engine sees it, on the session's bus: the real one is too large to be
// installed for this. Like IBus 1.5 it leaves the session without an engine when one goes away.
struct StandInDaemon {
    StandInDaemon() {
        g_dbus_connection_add_filter(bus.get(), received, this, nullptr);
        ask("RequestName", g_variant_new("(su)", "org.freedesktop.IBus", 0U));
        ask("AddMatch", g_variant_new("(s)", "interface='org.freedesktop.IBus.Engine'"));
        ask("AddMatch", g_variant_new("(s)", "member='NameOwnerChanged'"));
        setenv("IBUS_ADDRESS", std::getenv("DBUS_SESSION_BUS_ADDRESS"), 1);
    }
    ~StandInDaemon() { g_dbus_connection_close_sync(bus.get(), nullptr, nullptr); }

    const std::string& current() {
        const std::lock_guard lock(mutex);
        return engine;
    }

    std::mutex mutex;  // the rest is used on the bus library's thread
    std::string engine = usersEngine;
    std::string context = "/org/freedesktop/IBus/InputContext_2";
    std::uint32_t purpose = 0;
    bool tellsCaret = true;  // as a field does that has taken a text
    Engines engines;         // in the order of setting
    std::string committed;
    std::size_t longestPiece = 0;

    void ask(const char* method, GVariant* arguments) {
        constexpr auto name = "org.freedesktop.DBus";
        g_variant_unref(g_dbus_connection_call_sync(bus.get(), name, "/", name, method, arguments,
                                                    nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
                                                    nullptr));
    }

private:
    void tell(const std::string& object, const char* interface, const char* method,
              const char* arguments) {
        g_dbus_connection_call(bus.get(), owner.c_str(), (path + object).c_str(), interface, method,
                               g_variant_new_parsed(arguments), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
                               nullptr, nullptr, nullptr);
    }

    // Returns the answer's body in the text format; empty for an error.
    std::string answer(GDBusMessage* message) {
        const std::string_view method = g_dbus_message_get_member(message);
        GVariant* body = g_dbus_message_get_body(message);
        if (method == "RegisterComponent") return "()";
        if (method == "Get") {
            const GLibHandle<GVariant> name(g_variant_get_child_value(body, 1));
            const std::string_view property = g_variant_get_string(name.get(), nullptr);
            if (property == "ShellVersion") return "(<'48.7'>,)";
            if (property != "GlobalEngine") return "(<objectpath '" + context + "'>,)";
            return engine.empty() ? "" : "(<<('IBusEngineDesc', @a{sv} {}, '" + engine + "')>>,)";
        }
        engine = g_dbus_message_get_arg0(message);
        engines.push_back(engine);
        if (engine == "quorvi") {
            owner = g_dbus_message_get_sender(message);
            tell("/Factory", "org.freedesktop.IBus.Factory", "CreateEngine", "('quorvi',)");
            tell("/Engine/1", "org.freedesktop.IBus.Engine", "FocusIn", "()");
            const auto type = "('org.freedesktop.IBus.Engine', 'ContentType', <(@u " +
                              std::to_string(purpose) + ", @u 0)>)";
            tell("/Engine/1", "org.freedesktop.DBus.Properties", "Set", type.c_str());
        }
        return "()";
    }
    void hear(GDBusMessage* message) {
        const std::string_view signal = g_dbus_message_get_member(message);
        if (signal == "NameOwnerChanged" && g_dbus_message_get_arg0(message) == owner)
            engine.clear();
        if (signal != "CommitText") return;
        GVariant* text = nullptr;
        const char* piece = nullptr;
        g_variant_get(g_dbus_message_get_body(message), "(v)", &text);
        g_variant_get_child(text, 2, "&s", &piece);
        longestPiece = std::max(longestPiece, std::string_view(piece).size());
        committed += piece;
        g_variant_unref(text);
        if (tellsCaret)
            tell("/Engine/1", "org.freedesktop.IBus.Engine", "SetCursorLocation", "(9, 9, 0, 9)");
    }

    static GDBusMessage* received(GDBusConnection* bus, GDBusMessage* message, gboolean incoming,
                                  gpointer self) {
        auto& daemon = *static_cast<StandInDaemon*>(self);
        const auto type = g_dbus_message_get_message_type(message);
        if (!incoming) return message;
        const std::lock_guard lock(daemon.mutex);
        if (type == G_DBUS_MESSAGE_TYPE_SIGNAL) daemon.hear(message);
        if (type != G_DBUS_MESSAGE_TYPE_METHOD_CALL) return message;
        const auto body = daemon.answer(message);
        const GLibHandle<GDBusMessage> reply(
            body.empty() ? g_dbus_message_new_method_error_literal(message, "org.example.No", "No")
                         : g_dbus_message_new_method_reply(message));
        if (!body.empty()) g_dbus_message_set_body(reply.get(), g_variant_new_parsed(body.c_str()));
        g_dbus_connection_send_message(bus, reply.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       nullptr);
        g_object_unref(message);
        return nullptr;
    }

    const GLibHandle<GDBusConnection> bus = connectToBus(G_BUS_TYPE_SESSION, nullptr);
    std::string owner;  // of the engine
};

struct IbusCommitterTest : testing::Test {
    std::unique_ptr<CommitField> focusedField() {
        return resultOf(committer.focusedField(std::chrono::seconds(20), {}));
    }
    template <class T>
    T resultOf(Task<T> task) {
        std::optional<T> result;
        const auto collect = [&]() -> Task<void> { result = co_await task; };
        auto collecting = collect();
        collecting.start();
        EXPECT_TRUE(until(scheduler, [&] { return result.has_value(); }));
        return std::move(result).value_or(T{});
    }

    StandInDaemon daemon;
    LoopScheduler scheduler;
    IbusCommitter committer{scheduler};
};

TEST_F(IbusCommitterTest, ATextArrivesInPiecesAndTheUsersEngineIsBackAfterTheOtherHasGone) {
    auto field = focusedField();
    ASSERT_TRUE(field);
    EXPECT_EQ(field->kind(), Kind::text);
    std::string text = "x";
    while (text.size() < 7'000) text += "ä😀\n'";
    EXPECT_EQ(resultOf(field->commit(text)), CommitField::Delivery::sent);
    EXPECT_TRUE(eventually([&] { return daemon.current(), daemon.committed == text; }));
    EXPECT_LE(daemon.longestPiece, 3000U);
    field.reset();
    EXPECT_TRUE(eventually([&] { return daemon.current() == usersEngine; }));
    EXPECT_TRUE(eventually([&] {
        return daemon.current(), daemon.engines == Engines{"quorvi", usersEngine, usersEngine};
    }));
}

TEST_F(IbusCommitterTest, ATextIsNotCalledSentBeforeTheShellHasGivenItToTheField) {
    daemon.tellsCaret = false;
    EXPECT_EQ(resultOf(focusedField()->commit("lost?")), CommitField::Delivery::uncertain);
    daemon.ask("RequestName", g_variant_new("(su)", "org.gnome.Shell", 0U));
    EXPECT_EQ(resultOf(focusedField()->commit("here")), CommitField::Delivery::sent);
}

TEST_F(IbusCommitterTest, AFieldSaysWhatItIsAndAComposingEngineIsLeftAlone) {
    daemon.purpose = 8;
    EXPECT_EQ(focusedField()->kind(), Kind::secret);
    daemon.purpose = 10;
    EXPECT_EQ(focusedField()->kind(), Kind::terminal);
    EXPECT_TRUE(eventually([&] { return daemon.current(), daemon.engines.size() == 6; }));
    daemon.context = "/org/freedesktop/IBus/InputContext_1";
    EXPECT_FALSE(focusedField()) << "no field";
    daemon.context = "/org/freedesktop/IBus/InputContext_3";
    daemon.engine = "anthy";
    EXPECT_FALSE(focusedField());
    daemon.engine.clear();
    EXPECT_FALSE(focusedField());
    EXPECT_EQ(daemon.engines.size(), 6U);
}

TEST_F(IbusCommitterTest, AnEngineThatTheUserChoosesMeanwhileStays) {
    auto field = focusedField();
    daemon.engine = "anthy";
    field.reset();
    EXPECT_TRUE(
        eventually([&] { return daemon.current(), daemon.engines == Engines{"quorvi", "anthy"}; }));
}

TEST_F(IbusCommitterTest, TheNextStartMendsWhatAKilledProcessHasLeft) {
    std::ofstream(std::filesystem::path(g_get_user_runtime_dir()) / "quorvi-ibus-engine")
        << usersEngine;
    daemon.engine.clear();
    const IbusCommitter next(scheduler);
    EXPECT_TRUE(eventually([&] { return daemon.current() == usersEngine; }));
}

}  // namespace
}  // namespace quorvi::test
