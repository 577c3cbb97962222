#include "Quorvi/sync/CloudEngineState.h"

#include <cstdint>
#include <string_view>

namespace quorvi {

namespace {

constexpr std::string_view mark = "QCE1";

// Strings and counts; a count is four bytes, little-endian.
struct Writer {
    Bytes bytes;

    void number(std::size_t value) {
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
    void text(std::string_view value) {
        number(value.size());
        bytes.insert(bytes.end(), value.begin(), value.end());
    }
};

struct Reader {
    std::string_view rest;
    bool isGood = true;

    std::size_t number() {
        if (rest.size() < 4) return fail();
        std::size_t value = 0;
        for (int i = 0; i < 4; ++i)
            value |= std::size_t{static_cast<std::uint8_t>(rest[i])} << (8 * i);
        rest.remove_prefix(4);
        return value;
    }
    // The number of elements that follow, each of four bytes or more.
    std::size_t count() {
        const auto value = number();
        return value <= rest.size() / 4 ? value : fail();
    }
    std::string text() {
        const auto size = number();
        if (size > rest.size()) {
            fail();
            return {};
        }
        const auto value = rest.substr(0, size);
        rest.remove_prefix(size);
        return std::string(value);
    }
    std::size_t fail() {
        isGood = false;
        rest = {};
        return 0;
    }
};

}  // namespace

Bytes CloudEngineState::encoded() const {
    Writer writer;
    writer.bytes.assign(mark.begin(), mark.end());
    writer.text(user);
    writer.text(databaseToken);
    writer.number(zoneTokens.size());
    for (const auto& [zone, token] : zoneTokens) {
        writer.text(zone);
        writer.text(token);
    }
    writer.number(unfinishedZones.size());
    for (const auto& zone : unfinishedZones) writer.text(zone);
    writer.number(pendingZones.size());
    for (const auto& zone : pendingZones) writer.text(zone);
    writer.number(pendingRecords.size());
    for (const auto& id : pendingRecords) {
        writer.text(id.zone);
        writer.text(id.name);
    }
    return std::move(writer.bytes);
}

std::optional<CloudEngineState> CloudEngineState::decode(const Bytes& bytes) {
    Reader reader{textOf(bytes)};
    if (!reader.rest.starts_with(mark)) return std::nullopt;
    reader.rest.remove_prefix(mark.size());
    CloudEngineState state;
    state.user = reader.text();
    state.databaseToken = reader.text();
    for (auto left = reader.count(); left; --left) {
        auto zone = reader.text();
        state.zoneTokens[std::move(zone)] = reader.text();
    }
    for (auto left = reader.count(); left; --left) state.unfinishedZones.insert(reader.text());
    for (auto left = reader.count(); left; --left) state.pendingZones.push_back(reader.text());
    for (auto left = reader.count(); left; --left) {
        auto zone = reader.text();
        state.pendingRecords.push_back({std::move(zone), reader.text()});
    }
    if (!reader.isGood || !reader.rest.empty()) return std::nullopt;
    return state;
}

}  // namespace quorvi
