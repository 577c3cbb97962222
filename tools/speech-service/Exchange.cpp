#include "tools/speech-service/Exchange.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "QuorviCore/transcription/TranscriptionOptions.h"

namespace quorvi::speech {

namespace {

constexpr std::string_view transcriptions = "/v1/audio/transcriptions";
// The number of bytes that a refused client may still send before its connection is closed.
constexpr std::size_t patienceBytes = 100u << 20;
constexpr std::size_t parserBufferBytes = 64u << 10;
constexpr std::size_t maximumModelBytes = 200;

// Compares in constant time for keys of one length.
bool equalInConstantTime(std::string_view a, std::string_view b) {
    unsigned difference = a.size() == b.size() ? 0 : 1;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        difference |= static_cast<unsigned char>(a[i]) ^ static_cast<unsigned char>(b[i]);
    return difference == 0;
}

std::string_view headerOf(MHD_Connection* connection, const char* name) {
    const char* value = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
    return value ? value : "";
}

std::size_t announcedBytes(MHD_Connection* connection) {
    const auto header = headerOf(connection, MHD_HTTP_HEADER_CONTENT_LENGTH);
    std::size_t bytes = 0;
    std::from_chars(header.data(), header.data() + header.size(), bytes);
    return bytes;
}

Reply tooLarge() {
    return failure(413, "The body is larger than the limit of 26214400 bytes.", "");
}

std::optional<Reply> refusalByHeader(MHD_Connection* connection, std::string_view method,
                                     std::string_view path, const Authorization& authorization) {
    const bool reads = method == "GET" || method == "HEAD";
    if (path == "/" && reads) return Reply{200, R"({"status":"ready"})"};
    if (path != transcriptions && path != "/") {
        return failure(404, "There is nothing at this address.", "unknown_url");
    }
    if (path == "/" || method != "POST") {
        return failure(405, "This method is not allowed here.", "method_not_supported");
    }
    if (!authorization.accepts(headerOf(connection, MHD_HTTP_HEADER_AUTHORIZATION).data())) {
        return failure(401, "Incorrect API key provided.", "invalid_api_key");
    }
    if (announcedBytes(connection) > Exchange::maximumBodyBytes) return tooLarge();
    return std::nullopt;
}

}  // namespace

bool Authorization::accepts(const char* header) const {
    constexpr std::string_view bearer = "Bearer ";
    std::string_view key(header);
    if (!key.starts_with(bearer)) return false;
    key.remove_prefix(bearer.size());
    if (!key_.empty()) return equalInConstantTime(key, key_);
    return !key.empty() && !key.starts_with("bad");
}

Exchange::Exchange(MHD_Connection* c, std::string_view method, std::string_view path,
                   const Authorization& authorization)
    : connection(c), reply(refusalByHeader(c, method, path, authorization)) {
    if (reply) return;
    const auto type = headerOf(c, MHD_HTTP_HEADER_CONTENT_TYPE);
    if (type.starts_with("multipart/form-data"))
        parser_ = MHD_create_post_processor(c, parserBufferBytes, &Exchange::part, this);
    if (!parser_) refuse(failure(400, "The body must be multipart/form-data with a boundary.", ""));
}

Exchange::~Exchange() {
    if (parser_) MHD_destroy_post_processor(parser_);
}

void Exchange::refuse(Reply reason) {
    reply = std::move(reason);
    Bytes().swap(file_);
}

bool Exchange::receive(const char* data, std::size_t size) {
    received_ += size;
    if (received_ > maximumBodyBytes && !reply) refuse(tooLarge());
    if (reply) return received_ <= patienceBytes;
    if (MHD_post_process(parser_, data, size) != MHD_YES && !reply) {
        refuse(failure(400, "The multipart body could not be read.", ""));
    }
    return true;
}

MHD_Result Exchange::part(void* self, MHD_ValueKind, const char* key, const char* fileName,
                          const char*, const char*, const char* data, std::uint64_t,
                          std::size_t size) {
    auto& exchange = *static_cast<Exchange*>(self);
    const std::string_view name = key ? key : "";
    if (name == "file" && fileName) {
        exchange.hasFile_ = true;
        exchange.file_.insert(exchange.file_.end(), data, data + size);
    } else if (name == "model" && exchange.model_.size() + size <= maximumModelBytes) {
        exchange.model_.append(data, size);
    }
    return MHD_YES;
}

std::optional<Bytes> Exchange::takeRecording() {
    if (reply) return std::nullopt;
    // The parser reports the last part only when it is destroyed.
    MHD_destroy_post_processor(std::exchange(parser_, nullptr));
    if (model_.empty()) {
        refuse(failure(400, "You must provide a model parameter.", ""));
    } else if (!transcriptionModelFromRawValue(model_)) {
        refuse(failure(404, "The model does not exist or you do not have access to it.",
                       "model_not_found"));
    } else if (!hasFile_ || file_.empty()) {
        refuse(failure(400, "The audio file is missing or empty.", "invalid_value"));
    }
    if (reply) return std::nullopt;
    return std::move(file_);
}

}  // namespace quorvi::speech
