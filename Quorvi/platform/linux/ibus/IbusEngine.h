#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Quorvi/platform/TextCommitter.h"
#include "Quorvi/platform/linux/gio/GLibHandles.h"

namespace quorvi {

// IBus's engine of the session for a moment, in place of the user's. It lets every key pass, asks
// for no text of the field, and is not told of it. Used on one thread, whose default GLib context
// it runs while it waits for IBus, half a second at most for an answer, and which the thread runs
// otherwise: keys that the user types wait for this engine.
class IbusEngine {
public:
    using Kind = CommitField::Kind;
    using Delivery = CommitField::Delivery;

    IbusEngine();
    // Puts the user's engine back.
    ~IbusEngine();
    IbusEngine(const IbusEngine&) = delete;
    IbusEngine& operator=(const IbusEngine&) = delete;

    // Takes the place of the user's engine and returns what the focused field says of itself.
    // Nothing is changed, and nullopt returned, if no field has the focus, or if the user's engine
    // is one that composes: what is composed in it might get lost.
    std::optional<Kind> enter();

    Delivery commit(std::string_view text);

    // Puts the user's engine back if a process that was killed has left the session without one.
    static void recover();

private:
    class Link;
    const std::unique_ptr<Link> link_;
};

}  // namespace quorvi
