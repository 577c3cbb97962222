#pragma once

#include "Quorvi/platform/linux/portal/PortalConnection.h"
#include "Quorvi/platform/linux/remote/RemoteKeyboard.h"

namespace quorvi {

// The desktop's portal for remote desktops. Without a token, or with one that it does not remember,
// it asks the user.
class PortalKeyboard final : public RemoteKeyboard {
public:
    PortalKeyboard(std::string token, Sinks sinks)
        : token_(std::move(token)),
          sinks_(std::move(sinks)),
          portal_([this](PortalConnection&) { create(); }, [this] { fail(); }) {}

    void send(std::uint32_t key, bool isDown, std::function<void()> sent) override;

private:
    void create();
    void select();
    void start();
    void fail();

    const std::string token_;
    const Sinks sinks_;
    std::string session_;
    bool hasFailed_ = false;
    PortalConnection portal_;
};

}  // namespace quorvi
