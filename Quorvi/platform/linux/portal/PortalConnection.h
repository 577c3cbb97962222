#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/gio/BusClient.h"

namespace quorvi {

// A connection to the desktop's portals of its own, on which the program has said who it is: some
// backends refuse what comes from a nameless one. Used and calling back on one thread, which runs
// its default GLib context (see GLibThread); nothing blocks.
class PortalConnection {
public:
    static constexpr auto path = "/org/freedesktop/portal/desktop";

    using Options = std::vector<std::pair<const char*, GVariant*>>;
    // Given the response, 0 for success, and its results (a{sv}); null if the portal failed.
    using Answered = std::function<void(std::uint32_t response, GVariant* results)>;

    // `ready` is called once the portal can be asked; the functions below are for it and later.
    // `lost` is called whenever the portal has gone, and its sessions with it.
    PortalConnection(std::function<void(PortalConnection&)> ready, std::function<void()> lost);

    // Calls a method that answers through a request, which may take as long as the user thinks.
    // Takes floating arguments: the method's own, and the options that come last in it. The answer
    // may come after its asker has lost interest.
    void request(const char* interface, const char* method, std::vector<GVariant*> arguments,
                 const Options& options, Answered answered);
    // Calls any other method, on the desktop's object or on that of a session. `answered` is given
    // null on failure.
    void call(const char* interface, const char* method, GVariant* arguments,
              BusClient::Receiver answered, const std::string& object = path);
    void onSignal(const char* interface, const char* name, BusClient::Receiver received,
                  const std::string& object = path);

    // Ends a session at what serves the portal, which may have outlived it. `answered` as above.
    void closeAtBackend(const std::string& backend, const std::string& session,
                        BusClient::Receiver answered);

    // A word that no other request or session of this connection has.
    std::string newToken();

private:
    void introduce();

    const std::function<void(PortalConnection&)> ready_;
    const std::function<void()> lost_;
    int tokens_ = 0;
    BusClient bus_;
};

}  // namespace quorvi
