#pragma once

#include "Quorvi/platform/linux/gio/BusClient.h"
#include "Quorvi/platform/linux/remote/RemoteKeyboard.h"

namespace quorvi {

// GNOME's own remote desktop, without a portal: it asks nothing and gives no token.
class MutterKeyboard final : public RemoteKeyboard {
public:
    explicit MutterKeyboard(Sinks sinks)
        : sinks_(std::move(sinks)),
          bus_(BusClient::Bus::session, [this](BusClient&) { create(); }) {}

    void send(std::uint32_t key, bool isDown, std::function<void()> sent) override;

private:
    void create();
    void start();

    const Sinks sinks_;
    std::string session_;
    BusClient bus_;
};

}  // namespace quorvi
