#include "Quorvi/platform/linux/folder/FolderLog.h"

#include <algorithm>

#include "QuorviCore/checksum/Crc32c.h"

namespace quorvi::folderlog {

namespace {

constexpr std::string_view mark = "QuorviCloudLog1\n";

template <class Number>
void append(std::string& bytes, Number value) {
    for (std::size_t i = 0; i < sizeof value; ++i)
        bytes.push_back(static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i)));
}

void appendText(std::string& bytes, std::string_view text) {
    append(bytes, static_cast<std::uint32_t>(text.size()));
    bytes.append(text);
}

void appendUuid(std::string& bytes, const Uuid& uuid) {
    bytes.append(reinterpret_cast<const char*>(uuid.bytes.data()), uuid.bytes.size());
}

struct Reader {
    std::string_view rest;
    bool isGood = true;

    std::string_view take(std::size_t size) {
        if (size > rest.size()) {
            isGood = false;
            rest = {};
            return {};
        }
        const auto taken = rest.substr(0, size);
        rest.remove_prefix(size);
        return taken;
    }
    template <class Number>
    Number number() {
        const auto bytes = take(sizeof(Number));
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            value |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
        return static_cast<Number>(value);
    }
    std::string_view text() { return take(number<std::uint32_t>()); }
    Uuid uuid() {
        Uuid value;
        const auto bytes = take(value.bytes.size());
        std::copy(bytes.begin(), bytes.end(), value.bytes.begin());
        return value;
    }
};

}  // namespace

void appendHead(std::string& bytes, const Uuid& machine, std::uint64_t start) {
    const auto begin = bytes.size();
    bytes.append(mark);
    appendUuid(bytes, machine);
    append(bytes, start);
    append(bytes, crc32c(std::string_view(bytes).substr(begin)));
}

std::optional<std::uint64_t> readHead(std::string_view bytes, const Uuid& machine) {
    Reader reader{bytes.substr(0, headSize)};
    const auto isOurs = reader.take(mark.size()) == mark;
    const auto writer = reader.uuid();
    const auto start = reader.number<std::uint64_t>();
    const auto sum = reader.number<std::uint32_t>();
    if (!reader.isGood || !isOurs || writer != machine ||
        sum != crc32c(bytes.substr(0, headSize - sizeof sum)))
        return std::nullopt;
    return start;
}

void appendEntry(std::string& bytes, const Entry& entry) {
    const auto frame = bytes.size();
    bytes.append(frameSize, '\0');
    append(bytes, static_cast<std::uint8_t>(entry.kind));
    append(bytes, entry.number);
    append(bytes, entry.clock);
    append(bytes, entry.generation);
    appendText(bytes, entry.zone);
    appendText(bytes, entry.name);
    if (entry.kind == Entry::Kind::record) {
        appendText(bytes, entry.type);
        append(bytes, static_cast<std::uint8_t>(entry.parent.has_value()));
        if (entry.parent) {
            appendUuid(bytes, entry.parent->machine);
            append(bytes, entry.parent->number);
        }
        append(bytes, static_cast<std::uint8_t>(entry.payload.has_value()));
        bytes.append(entry.payload.value_or(std::string_view()));
    }
    const auto body = std::string_view(bytes).substr(frame + frameSize);
    std::string head;
    append(head, static_cast<std::uint32_t>(body.size()));
    append(head, crc32c(body));
    bytes.replace(frame, frameSize, head);
}

std::optional<std::string_view> readFrame(std::string_view bytes) {
    Reader reader{bytes};
    const auto size = reader.number<std::uint32_t>();
    const auto sum = reader.number<std::uint32_t>();
    const auto body = reader.take(size);
    if (!reader.isGood || body.empty() || crc32c(body) != sum) return std::nullopt;
    return body;
}

std::size_t frameSizeOf(std::string_view bytes) {
    if (bytes.size() < frameSize) return frameSize;
    const auto size = Reader{bytes}.number<std::uint32_t>();
    return size > 0 && size <= largestBody ? frameSize + size : 0;
}

std::optional<Entry> readBody(std::string_view body) {
    Reader reader{body};
    Entry entry;
    entry.kind = static_cast<Entry::Kind>(reader.number<std::uint8_t>());
    entry.number = reader.number<std::uint64_t>();
    entry.clock = reader.number<std::uint64_t>();
    entry.generation = reader.number<std::uint32_t>();
    entry.zone = reader.text();
    entry.name = reader.text();
    if (entry.kind == Entry::Kind::record) {
        entry.type = reader.text();
        if (reader.number<std::uint8_t>()) {
            entry.parent.emplace();
            entry.parent->machine = reader.uuid();
            entry.parent->number = reader.number<std::uint64_t>();
        }
        if (reader.number<std::uint8_t>()) entry.payload = reader.take(reader.rest.size());
    }
    if (!reader.isGood || !entry.number) return std::nullopt;
    return entry;
}

}  // namespace quorvi::folderlog
