#include "Quorvi/platform/linux/x11/desktop/X11Settings.h"

#include <string>

#include "Quorvi/platform/linux/x11/X11Connection.h"

namespace quorvi {

namespace {

// Reads a list in order; returns zeros past its end.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    void useOrder(bool mostSignificantFirst) { mostSignificantFirst_ = mostSignificantFirst; }
    bool failed() const { return failed_; }

    std::uint32_t number(std::size_t size) {
        const auto part = take(size);
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < part.size(); ++i)
            value = value << 8 | part[mostSignificantFirst_ ? i : part.size() - 1 - i];
        return value;
    }
    std::string_view text(std::size_t size) {
        const auto part = take(size);
        skip((4 - size % 4) % 4);
        return {reinterpret_cast<const char*>(part.data()), part.size()};
    }
    void skip(std::size_t size) { take(size); }

private:
    std::span<const std::uint8_t> take(std::size_t size) {
        if (size > bytes_.size() - at_) {
            failed_ = true;
            return {};
        }
        at_ += size;
        return bytes_.subspan(at_ - size, size);
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t at_ = 0;
    bool mostSignificantFirst_ = false;
    bool failed_ = false;
};

enum SettingType : std::uint32_t { integer = 0, string = 1, color = 2 };

}  // namespace

std::optional<std::int32_t> x11Setting(std::span<const std::uint8_t> list, std::string_view name) {
    Reader reader(list);
    reader.useOrder(reader.number(1) == 1);
    reader.skip(3 + 4);
    for (auto left = reader.number(4); left > 0 && !reader.failed(); --left) {
        const auto type = reader.number(1);
        reader.skip(1);
        const auto found = reader.text(reader.number(2));
        reader.skip(4);
        if (type == integer) {
            const auto value = reader.number(4);
            if (found == name && !reader.failed()) return static_cast<std::int32_t>(value);
        } else if (type == string) {
            reader.text(reader.number(4));
        } else if (type == color) {
            reader.skip(8);
        } else {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

bool x11ReducesMotion() {
    const X11Connection connection;
    if (!connection.isAlive()) return false;
    const auto owner = connection.selectionOwner(connection.atom("_XSETTINGS_S0"));
    if (owner == XCB_NONE) return false;
    const auto settings = connection.atom("_XSETTINGS_SETTINGS");
    constexpr std::uint32_t words = 16384;
    const auto list = connection.property(owner, settings, settings, words);
    return x11Setting(bytesOf(list), "Gtk/EnableAnimations") == 0;
}

}  // namespace quorvi
