#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/Bytes.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

// The user's preferences: typed values under string keys. A value of another type reads as absent.
// Main thread; nothing blocks.
class Preferences {
public:
    virtual ~Preferences() = default;

    virtual std::optional<std::string> string(std::string_view key) const = 0;
    virtual std::optional<bool> boolean(std::string_view key) const = 0;
    virtual std::optional<std::int64_t> integer(std::string_view key) const = 0;
    virtual std::optional<Bytes> bytes(std::string_view key) const = 0;
    virtual bool contains(std::string_view key) const = 0;

    // False when what was stored could not be read as a whole. Every value then reads as absent,
    // which must not be taken for a first launch.
    virtual bool isReadable() const { return true; }

    virtual void setString(std::string_view key, std::string value) = 0;
    virtual void setBoolean(std::string_view key, bool value) = 0;
    virtual void setInteger(std::string_view key, std::int64_t value) = 0;
    virtual void setBytes(std::string_view key, Bytes value) = 0;
    virtual void remove(std::string_view key) = 0;

    // After any change of a value.
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;
};

}  // namespace quorvi
