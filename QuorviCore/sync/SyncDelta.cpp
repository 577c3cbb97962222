#include "QuorviCore/sync/SyncDelta.h"

#include <bit>
#include <cstring>
#include <utility>

namespace quorvi {

namespace {

static_assert(std::endian::native == std::endian::little);

// The first byte of a delta.
enum Mark : std::uint8_t { isRebaselined = 1, isBegunAnew = 2, hasCloud = 4 };

class Writer {
public:
    explicit Writer(std::string& out) : out_(out) {}

    template <class Number>
    void number(Number value) {
        char bytes[sizeof value];
        std::memcpy(bytes, &value, sizeof value);
        out_.append(bytes, sizeof bytes);
    }
    void flag(bool value) { out_ += value ? '\1' : '\0'; }
    void text(std::string_view s) {
        number(static_cast<std::uint32_t>(s.size()));
        out_ += s;
    }
    template <class T, class Write>
    void optional(const std::optional<T>& value, Write write) {
        flag(value.has_value());
        if (value) write(*value);
    }
    void optionalText(const std::optional<SharedString>& s) {
        optional(s, [this](std::string_view present) { text(present); });
    }

private:
    std::string& out_;
};

class Reader {
public:
    explicit Reader(std::string_view& bytes) : rest_(bytes) {}

    template <class Number>
    Number number() {
        Number value;
        std::memcpy(&value, take(sizeof value).data(), sizeof value);
        return value;
    }
    bool flag() { return take(1)[0] != '\0'; }
    std::string_view text() { return take(number<std::uint32_t>()); }
    std::optional<SharedString> optionalText() {
        if (!flag()) return std::nullopt;
        return SharedString(text());
    }

private:
    std::string_view take(std::size_t size) {
        if (size > rest_.size()) throw SyncFormatError("a change ends too early");
        const auto taken = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return taken;
    }

    std::string_view& rest_;
};

void write(Writer& writer, const SyncDelta::Value& value) {
    writer.text(value.id);
    writer.optional(value.item, [&](const SyncItem& item) {
        writer.optionalText(item.payload);
        writer.number(item.revision);
        writer.text(item.device);
        writer.flag(item.redacted);
    });
    writer.optional(value.difference,
                    [&](const BaselineValue& held) { writer.optionalText(held.payload); });
    writer.optionalText(value.record);
    writer.flag(value.pending);
}

SyncDelta::Value read(Reader& reader) {
    SyncDelta::Value value;
    value.id = reader.text();
    if (reader.flag()) {
        auto payload = reader.optionalText();
        const auto revision = reader.number<std::int64_t>();
        const SharedString device = reader.text();
        value.item.emplace(value.id, std::move(payload), revision, device, reader.flag());
    }
    if (reader.flag()) value.difference.emplace(BaselineValue{reader.optionalText()});
    value.record = reader.optionalText();
    value.pending = reader.flag();
    return value;
}

}  // namespace

SyncDelta::Value SyncDelta::valueOf(const SyncState& state, const SharedString& id) {
    Value value{.id = id};
    if (const auto* item = state.ledger.item(id)) {
        value.id = item->id;
        value.item = *item;
    }
    const auto& differences = state.ledger.differences();
    if (const auto found = differences.find(id); found != differences.end())
        value.difference = found->second;
    if (const auto found = state.records.find(id); found != state.records.end())
        value.record = found->second;
    value.pending = state.pending.contains(id);
    return value;
}

void beginAnew(SyncState& state) {
    state.records.clear();
    for (const auto& [id, item] : state.ledger.items()) state.pending.insert(id);
    state.engineState.reset();
    state.initialFetchComplete = false;
    state.lastSynced.reset();
}

void SyncDelta::applyTo(SyncState& state) const {
    if (rebaselined) state.ledger.rebaseline().clear();
    if (begunAnew) beginAnew(state);
    for (const auto& value : values) {
        if (value.item) state.ledger.restore(*value.item, value.difference);
        if (value.record)
            state.records.insert_or_assign(value.id, *value.record);
        else
            state.records.erase(value.id);
        if (value.pending)
            state.pending.insert(value.id);
        else
            state.pending.erase(value.id);
    }
    state.ledger.restoreClock(clock);
    state.owner = owner;
    state.cloud = cloud;
    if (engineStateChanged) state.engineState = engineState;
    state.initialFetchComplete = initialFetchComplete;
    state.lastSynced = lastSynced;
    state.diagnostics = diagnostics;
}

void SyncDelta::appendTo(std::string& out) const {
    Writer writer(out);
    writer.number(static_cast<std::uint8_t>((rebaselined ? isRebaselined : 0) |
                                            (begunAnew ? isBegunAnew : 0) |
                                            (cloud ? hasCloud : 0)));
    if (cloud) writer.text(*cloud);
    writer.number(static_cast<std::uint32_t>(values.size()));
    for (const auto& value : values) write(writer, value);
    writer.number(clock);
    writer.optionalText(owner);
    writer.flag(engineStateChanged);
    writer.optionalText(engineState);
    writer.flag(initialFetchComplete);
    writer.optional(lastSynced, [&](Date date) { writer.number(date.secondsSinceReferenceDate); });
    writer.optional(diagnostics, [&](const auto& counts) {
        writer.number(static_cast<std::uint32_t>(counts.size()));
        for (const auto& [event, count] : counts) {
            writer.text(event);
            writer.number(count);
        }
    });
}

SyncDelta SyncDelta::takeFrom(std::string_view& bytes) {
    Reader reader(bytes);
    SyncDelta delta;
    const auto marks = reader.number<std::uint8_t>();
    delta.rebaselined = marks & isRebaselined;
    delta.begunAnew = marks & isBegunAnew;
    if (marks & hasCloud) delta.cloud = reader.text();
    for (auto left = reader.number<std::uint32_t>(); left > 0; --left)
        delta.values.push_back(read(reader));
    delta.clock = reader.number<std::int64_t>();
    delta.owner = reader.optionalText();
    delta.engineStateChanged = reader.flag();
    delta.engineState = reader.optionalText();
    delta.initialFetchComplete = reader.flag();
    if (reader.flag()) delta.lastSynced = Date{reader.number<double>()};
    if (reader.flag()) {
        auto& counts = delta.diagnostics.emplace();
        for (auto left = reader.number<std::uint32_t>(); left > 0; --left) {
            std::string event(reader.text());
            counts[std::move(event)] = reader.number<std::int64_t>();
        }
    }
    return delta;
}

}  // namespace quorvi
