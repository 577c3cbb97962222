#pragma once

#include <microhttpd.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/base/Bytes.h"
#include "tools/speech-service/Reply.h"

namespace quorvi::speech {

// The API key that requests must carry.
class Authorization {
public:
    // An empty key accepts every key that does not begin with "bad".
    explicit Authorization(std::string key) : key_(std::move(key)) {}
    bool accepts(const char* header) const;

private:
    std::string key_;
};

// One request, from its headers to its reply. Used on the server's thread only.
class Exchange {
public:
    static constexpr std::size_t maximumBodyBytes = 25u << 20;

    // Decides by the headers, but a refusal is sent after the body: a client that is still sending
    // might miss it.
    Exchange(MHD_Connection* connection, std::string_view method, std::string_view path,
             const Authorization& authorization);
    ~Exchange();
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    // Reads a piece of the body. Returns false if the connection must be closed.
    bool receive(const char* data, std::size_t size);

    // Call when the body is complete. Returns the recording, or nullopt with the reason in `reply`.
    std::optional<Bytes> takeRecording();

    std::size_t heldBytes() const { return file_.size(); }
    void refuse(Reply reason);

    MHD_Connection* const connection;
    std::optional<Reply> reply;
    bool isSubmitted = false;

private:
    static MHD_Result part(void* self, MHD_ValueKind, const char* key, const char* fileName,
                           const char* contentType, const char* encoding, const char* data,
                           std::uint64_t offset, std::size_t size);

    MHD_PostProcessor* parser_ = nullptr;
    std::size_t received_ = 0;
    std::string model_;
    bool hasFile_ = false;
    Bytes file_;
};

}  // namespace quorvi::speech
