#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "QuorviCore/async/Observable.h"
#include "QuorviCore/messages/Message.h"
#include "QuorviCore/settings/SettingValue.h"

namespace quorvi {

// The user's preferences: typed values under keys, which are valid UTF-8. Main thread; only flush()
// blocks.
class Preferences {
public:
    virtual ~Preferences() = default;

    // nullopt if there is no value, or one of a type that preferences are not stored as.
    virtual std::optional<SettingValue> value(std::string_view key) const = 0;
    virtual bool contains(std::string_view key) const = 0;
    // Setting the value that is already there changes nothing. Malformed UTF-8 may be repaired.
    virtual void set(std::string_view key, SettingValue value) = 0;
    virtual void remove(std::string_view key) = 0;

    // The same for one type. A value of another type reads as absent.
    std::optional<std::string> string(std::string_view key) const { return as<std::string>(key); }
    std::optional<bool> boolean(std::string_view key) const { return as<bool>(key); }
    std::optional<std::int64_t> integer(std::string_view key) const {
        return as<std::int64_t>(key);
    }
    std::optional<Bytes> bytes(std::string_view key) const { return as<Bytes>(key); }
    void setString(std::string_view key, std::string value) { set(key, std::move(value)); }
    void setBoolean(std::string_view key, bool value) { set(key, value); }
    void setInteger(std::string_view key, std::int64_t value) { set(key, value); }
    void setBytes(std::string_view key, Bytes value) { set(key, std::move(value)); }

    // Whether what had been stored could be read at the start. If not, a key that seems absent may
    // hold something valuable, nothing is written in this run, and changes last for it only.
    virtual bool couldBeRead() const = 0;

    // The sentence that tells the user why preferences are not kept; nothing while they are.
    virtual std::optional<Message> persistenceError() const = 0;

    // Blocks until every change made so far is kept, or until persistenceError() says why not.
    virtual void flush() = 0;
    // What does the same on any thread, also after this object is gone, and says whether it is
    // kept. Preferences that are not written in this run count as kept.
    virtual std::function<bool()> flusher() = 0;

    // After any change of a value or of the persistence error.
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;

private:
    template <class T>
    std::optional<T> as(std::string_view key) const {
        auto stored = value(key);
        auto* typed = stored ? std::get_if<T>(&*stored) : nullptr;
        return typed ? std::optional<T>(std::move(*typed)) : std::nullopt;
    }
};

}  // namespace quorvi
