// Reads any bytes with one of the parsers of what others wrote. What is read survives a round trip;
// what is not is refused by the parser's own error.
//
//   parser_fuzz PARSER …    the rest as for the engine, or for Driver.cpp

#include <microhttpd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "Quorvi/platform/linux/folder/FolderCloud.h"
#include "Quorvi/platform/linux/keyboard/PasteChords.h"
#include "Quorvi/sync/CloudRecordFields.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/checksum/Crc32c.h"
#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/history/HistoryIndex.h"
#include "QuorviCore/history/UsageCost.h"
#include "QuorviCore/history/UsageSummary.h"
#include "QuorviCore/json/Base64.h"
#include "QuorviCore/propertylist/PropertyList.h"
#include "QuorviCore/shortcut/Hotkey.h"
#include "QuorviCore/sync/LocalSnapshot.h"
#include "QuorviCore/sync/SyncDocument.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/transcription/ServiceAddress.h"
#include "QuorviCore/transcription/TranscriptionAnswer.h"
#include "QuorviCore/transfer/ExportDocument.h"
#include "QuorviCore/updates/Appcast.h"
#include "QuorviCore/updates/ReleaseNotes.h"
#include "QuorviCore/updates/UpdateSignature.h"
#include "QuorviCore/updates/Version.h"
#include "tests/support/TestFolder.h"
#include "tests/support/Written.h"
#include "tools/speech-service/Exchange.h"

using namespace quorvi;

namespace {

void require(bool condition, int line = __builtin_LINE()) {
    if (condition) return;
    std::fprintf(stderr, "Line %d is not true.\n", line);
    std::abort();
}

// What `read` returns, nothing if it throws an Error.
template <class Error, class Read>
auto unless(Read read) -> std::optional<decltype(read())> {
    try {
        return read();
    } catch (const Error&) {
        return std::nullopt;
    }
}

// What `decode` reads from the bytes is encoded in the same way after it was read again.
template <class Decode, class Encode>
void goRound(const std::string& bytes, Decode decode, Encode encode) {
    const auto value = decode(bytes);
    if (!value) return;
    const std::string encoded(encode(*value));
    const auto again = decode(encoded);
    require(again && encode(*again) == encoded);
}

void readHistory(const std::string& bytes) {
    const auto recordIn = [](const std::string& json) {
        return unless<HistoryFormatError>([&] { return decodeRecord(json); });
    };
    goRound(bytes, recordIn, encodeRecord);
    const auto archive = unless<HistoryFormatError>([&] { return HistoryArchive::decode(bytes); });
    if (!archive) return;
    const auto& records = archive->records;
    require(text::isValidUtf8(bytes));
    require(HistoryArchive::decode(test::written(HistoryArchiveEncoder(records))).records ==
            records);

    static const Calendar calendar("Pacific/Apia", "en_US");
    const Date now{700'000'000};
    const auto usage = UsageSummary::of(records.newestFirst(), now, calendar);
    require(usage.dictationCount <= static_cast<std::int64_t>(records.size()));
    require(usage.days.size() == 84);
    require(UsageCostSummary::of(records, UsagePeriod::week, now, calendar).totalUSD() >= 0);
    HistoryIndex index;
    index.update(records);
    const auto query = bytes.substr(0, 2);
    for (const auto position : index.find(query, HistoryIndex::Among::records).positions)
        require(records[position].matches(query));
}

void readAnswer(const std::string& bytes) {
    const auto transcript = transcriptIn(bytes);
    require(!transcript ||
            (text::isValidUtf8(*transcript) && transcript->find('\0') == transcript->npos));
}

void readNotes(const std::string& bytes) {
    const auto notes = safeReleaseNotes(bytes) + "<br>";  // with a tag, so that it is no plain text
    require(safeReleaseNotes(notes) == notes || notes.size() > 64 << 10);
}

void readFeed(const std::string& bytes) {
    const auto items = unless<QuorviError>([&] { return parseAppcast(bytes); });
    for (const auto& item : items.value_or(std::vector<AppcastItem>())) {
        require(isVersion(item.version) && isVersion(item.displayVersion));
        readNotes(item.notes);
        if (unless<QuorviError>([&] { return requireDownloadable(item), true; }))
            require(isSecureAddress(item.url) && item.length <= maximumPackageBytes);
    }
    if (items) chooseUpdate(*items, "1.0", bytes.substr(0, 8));
    isSignedWith({}, bytes, {});
}

void readSyncDocument(const std::string& bytes) {
    const auto decode = [](const std::string& json) {
        return unless<SyncFormatError>([&] { return decodeSyncDocument(json); });
    };
    goRound(bytes, decode,
            [](const SyncState& state) { return test::written(SyncDocumentEncoder(state)); });
}

void readDelta(const std::string& bytes) {
    const auto decode = [](std::string_view delta) {
        return unless<SyncFormatError>([&] { return SyncDelta::takeFrom(delta); });
    };
    goRound(bytes, decode, [](const SyncDelta& delta) {
        std::string encoded;
        delta.appendTo(encoded);
        SyncState state;
        delta.applyTo(state);
        return encoded;
    });
}

// A value as it comes from the cloud, and what else is kept there and in settings.
void readValue(const std::string& bytes) {
    goRound(bytes, SyncItem::decode, [](const SyncItem& item) { return item.encoded(); });
    goRound(bytes, LocalSnapshot::decode,
            [](const SettingValue& value) { return LocalSnapshot::encode(value).string(); });
    goRound(bytes, decodeCorrection, encodeCorrection);
    goRound(bytes, decodeCorrections, encodeCorrections);
    goRound(bytes, decodeRecordFields, encodeRecordFields);
    goRound(
        bytes, [](std::string_view encoded) { return json::bytesOfBase64(encoded); },
        [](std::string_view content) {
            std::string encoded;
            json::appendBase64(encoded, content);
            return encoded;
        });
}

void readExport(const std::string& bytes) {
    const auto decode = [](const std::string& json) {
        return unless<QuorviError>(
            [&] { return decodeExport(json, [](std::size_t, std::size_t) {}); });
    };
    goRound(bytes, decode, [](const auto& items) { return test::written(ExportEncoder(items)); });
}

void readPropertyList(const std::string& bytes) {
    goRound(bytes, PropertyList::fromBinary,
            [](const PropertyList& list) { return list.toBinary(); });
}

void readShortcut(const std::string& bytes) {
    goRound(bytes, Hotkey::fromJson, [](const Hotkey& key) { return key.toJson().value(); });
}

void readPasteKeys(const std::string& bytes) {
    PasteChords(bytes).of(bytes.substr(0, 5), "XTerm");
}

void readAddress(const std::string& bytes) {
    const auto read = [](const std::string& address) {
        return unless<QuorviError>([&] { return serviceAddress(address); });
    };
    goRound(bytes, read, [](const std::string& address) { return address; });
    goRound(bytes, FolderToken::parse, [](const FolderToken& token) { return token.text(); });
}

// Logs of two machines, a file as it is or pieces "machine, length (2), body" with right checksums:
// whatever they hold, this machine can read the folder and save into its zone.
void readFolder(const std::string& bytes) {
    static const test::TestFolder place(true);
    const auto folder = place.path() / "cloud";
    std::filesystem::remove_all(folder);
    std::filesystem::remove(place.path() / "machine");
    std::array<Uuid, 2> machines;
    std::array<std::string, 2> logs;
    for (std::size_t i = 0; i < 2; ++i) {
        machines[i].bytes.fill(static_cast<std::uint8_t>(i + 1));
        std::filesystem::create_directories(folder / machines[i].string());
        folderlog::appendHead(logs[i], machines[i], 1);
    }
    if (bytes.starts_with("Quorvi")) logs[0] = bytes;
    for (std::string_view rest = bytes; rest.size() > 3;) {
        const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(rest[i]); };
        const auto body = rest.substr(3, byte(1) + std::size_t{256} * byte(2));
        const std::uint32_t frame[]{static_cast<std::uint32_t>(body.size()), crc32c(body)};
        logs[byte(0) % 2].append(reinterpret_cast<const char*>(frame), sizeof frame).append(body);
        rest.remove_prefix(3 + body.size());
    }
    for (std::size_t i = 0; i < 2; ++i)
        place.write("cloud/" + machines[i].string() + "/00000001.log", logs[i]);

    FolderCloud cloud(folder, place.path() / "machine", {});
    for (const auto& zone : cloud.zoneChanges("").modified) cloud.recordChanges(zone, "");
    const auto save = [&] {
        cloud.saveZone("z");
        const auto held = unless<CloudError>([&] { return cloud.fetchRecord({"z", "r"}); });
        const auto saved = cloud.saveRecords({{{"z", "r"}, "t", {}, held ? held->changeTag : ""}});
        require(!saved[0].error && cloud.fetchRecord({"z", "r"}) == saved[0].record);
    };
    save();
    cloud.compact();
    cloud.remove(machines[0]);
    save();
}

// The speech service's part of reading a request.
void readRequest(const std::string& bytes) {
    using speech::Exchange;
    const auto handle = [](void*, MHD_Connection* connection, const char* path, const char* method,
                           const char*, const char* data, std::size_t* size, void** slot) {
        static const speech::Authorization authorization("key");
        auto& exchange = *static_cast<Exchange**>(static_cast<void*>(slot));
        if (!exchange) {
            exchange = new Exchange(connection, method, path, authorization);
        } else if (*size > 0) {
            return exchange->receive(data, std::exchange(*size, 0)) ? MHD_YES : MHD_NO;
        } else {
            require(exchange->takeRecording().has_value() != exchange->reply.has_value());
            return MHD_NO;
        }
        return MHD_YES;
    };
    const auto completed = [](void*, MHD_Connection*, void** slot, MHD_RequestTerminationCode) {
        delete static_cast<Exchange*>(std::exchange(*slot, nullptr));
    };
    static auto* daemon =
        MHD_start_daemon(MHD_USE_NO_LISTEN_SOCKET, 0, nullptr, nullptr, +handle, nullptr,
                         MHD_OPTION_NOTIFY_COMPLETED, +completed, nullptr, MHD_OPTION_END);
    int ends[2];
    require(daemon && ::socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0);
    require(::send(ends[0], bytes.data(), bytes.size(), MSG_DONTWAIT) >= 0 || bytes.size() > 65536);
    ::close(ends[0]);
    const sockaddr address{.sa_family = AF_INET};
    require(MHD_add_connection(daemon, ends[1], &address, sizeof address) == MHD_YES);
    // Since version 1.0 the daemon counts a connection from its first run on.
    const MHD_DaemonInfo* open = nullptr;
    for (int i = 0; i == 0 || (open && open->num_connections > 0 && i < 1000); ++i) {
        MHD_run(daemon);
        open = MHD_get_daemon_info(daemon, MHD_DAEMON_INFO_CURRENT_CONNECTIONS);
    }
    require(open && open->num_connections == 0);
}

constexpr std::pair<std::string_view, void (*)(const std::string&)> parsers[]{
    {"history", readHistory},
    {"answer", readAnswer},
    {"feed", readFeed},
    {"notes", readNotes},
    {"sync-document", readSyncDocument},
    {"sync-delta", readDelta},
    {"value", readValue},
    {"export", readExport},
    {"property-list", readPropertyList},
    {"shortcut", readShortcut},
    {"paste-keys", readPasteKeys},
    {"address", readAddress},
    {"folder", readFolder},
    {"request", readRequest},
};
const auto* parser = std::end(parsers);

}  // namespace

// Takes the parser's name out of the arguments.
extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    if (*count > 1)
        parser = std::ranges::find(parsers, std::string_view((*arguments)[1]),
                                   [](const auto& one) { return one.first; });
    if (parser == std::end(parsers)) std::exit(2);
    std::swap((*arguments)[0], (*arguments)[1]);
    ++*arguments;
    --*count;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    parser->second({reinterpret_cast<const char*>(data), size});
    return 0;
}
