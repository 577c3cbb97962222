#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "QuorviCore/async/Observable.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// A value of one of the types that preferences are kept in.
using PreferenceValue = std::variant<std::string, bool, std::int64_t, Bytes>;

// The user's preferences: typed values under keys, which are well-formed UTF-8. A value of another
// type reads as absent. Main thread; nothing but flush() blocks.
class Preferences {
public:
    virtual ~Preferences() = default;

    virtual std::optional<std::string> string(std::string_view key) const = 0;
    virtual std::optional<bool> boolean(std::string_view key) const = 0;
    virtual std::optional<std::int64_t> integer(std::string_view key) const = 0;
    virtual std::optional<Bytes> bytes(std::string_view key) const = 0;
    virtual bool contains(std::string_view key) const = 0;

    virtual void setString(std::string_view key, std::string value) = 0;
    virtual void setBoolean(std::string_view key, bool value) = 0;
    virtual void setInteger(std::string_view key, std::int64_t value) = 0;
    virtual void setBytes(std::string_view key, Bytes value) = 0;
    virtual void remove(std::string_view key) = 0;

    // Whether what had been stored could be read at the start. If not, a key that seems absent may
    // hold something valuable, nothing is written in this run, and changes last for it only.
    virtual bool couldBeRead() const = 0;

    // The sentence that tells the user why preferences are not kept; nothing while they are.
    virtual std::optional<std::string> persistenceError() const = 0;

    // Blocks until every change made so far is kept, or until persistenceError() says why not.
    virtual void flush() = 0;
    // What does the same on any thread, also after this object is gone, and says whether it is
    // kept. Preferences that are not written in this run count as kept.
    virtual std::function<bool()> flusher() = 0;

    // After any change of a value or of the persistence error.
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;
};

}  // namespace quorvi
