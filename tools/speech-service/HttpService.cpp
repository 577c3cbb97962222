#include "tools/speech-service/HttpService.h"

#include <arpa/inet.h>
#include <microhttpd.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <stdexcept>
#include <utility>

#include "tools/speech-service/Exchange.h"

namespace quorvi::speech {

namespace {

constexpr unsigned maximumConnections = 32;
constexpr std::size_t uploadBudgetBytes = 128u << 20;
// Longer than the longest recording (180 s), since a connection may be opened when it starts.
constexpr unsigned idleSeconds = 300;

struct Address {
    sockaddr_storage storage{};
    std::string host;  // as in a URL

    Address(const std::string& listen, int port) {
        const auto bigEndian = htons(static_cast<std::uint16_t>(port));
        auto& v4 = reinterpret_cast<sockaddr_in&>(storage);
        auto& v6 = reinterpret_cast<sockaddr_in6&>(storage);
        const std::string text = listen == "localhost" ? "127.0.0.1" : listen;
        if (inet_pton(AF_INET, text.c_str(), &v4.sin_addr) == 1 &&
            ntohl(v4.sin_addr.s_addr) >> 24 == IN_LOOPBACKNET) {
            v4.sin_family = AF_INET;
            v4.sin_port = bigEndian;
            host = text;
        } else if (text == "::1" || text == "[::1]") {
            v6.sin6_family = AF_INET6;
            v6.sin6_addr = in6addr_loopback;
            v6.sin6_port = bigEndian;
            host = "[::1]";
        } else {
            throw UsageError("--listen takes a loopback address only, such as 127.0.0.1 or ::1.");
        }
    }
};

// Returns whether the peer has closed its end. Reads nothing from the socket.
bool isClosedByPeer(int socket) {
    char byte;
    return recv(socket, &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 0;
}

}  // namespace

class HttpService::Server {
public:
    Server(const Options& options, RecognitionQueue& queue)
        : queue_(queue), authorization_(options.key) {
        const Address address(options.listen, options.port);
        unsigned flags = MHD_USE_AUTO_INTERNAL_THREAD | MHD_ALLOW_SUSPEND_RESUME;
        if (address.storage.ss_family == AF_INET6) flags |= MHD_USE_IPv6;
        daemon_ = MHD_start_daemon(
            flags, static_cast<std::uint16_t>(options.port), nullptr, nullptr, &Server::handle,
            this, MHD_OPTION_SOCK_ADDR, reinterpret_cast<const sockaddr*>(&address.storage),
            MHD_OPTION_NOTIFY_COMPLETED, &Server::completed, this, MHD_OPTION_CONNECTION_LIMIT,
            maximumConnections, MHD_OPTION_CONNECTION_TIMEOUT, idleSeconds, MHD_OPTION_END);
        if (!daemon_) {
            throw std::runtime_error("Port " + std::to_string(options.port) + " of " +
                                     address.host + " could not be listened on.");
        }
        const auto* info = MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_BIND_PORT);
        url_ = "http://" + address.host + ":" + std::to_string(info ? info->port : 0);
    }
    ~Server() {
        queue_.end();
        MHD_stop_daemon(daemon_);
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    const std::string& url() const { return url_; }

private:
    static MHD_Result handle(void* self, MHD_Connection* connection, const char* path,
                             const char* method, const char*, const char* data, std::size_t* size,
                             void** slot) {
        auto& server = *static_cast<Server*>(self);
        // Called with the headers, then with pieces of the body, then with size 0, and again with
        // size 0 when the suspended connection is resumed.
        if (!*slot) {
            *slot = new Exchange(connection, method, path, server.authorization_);
            return MHD_YES;
        }
        auto& exchange = *static_cast<Exchange*>(*slot);
        if (*size > 0) {
            const bool goesOn = server.receive(exchange, data, std::exchange(*size, 0));
            return goesOn ? MHD_YES : MHD_NO;
        }
        if (!exchange.isSubmitted && server.submit(exchange)) return MHD_YES;
        return exchange.reply ? send(connection, *exchange.reply) : MHD_NO;
    }

    static void completed(void* self, MHD_Connection*, void** slot, MHD_RequestTerminationCode) {
        auto* exchange = static_cast<Exchange*>(*slot);
        if (!exchange) return;
        static_cast<Server*>(self)->uploading_ -= exchange->heldBytes();
        delete exchange;
        *slot = nullptr;
    }

    bool receive(Exchange& exchange, const char* data, std::size_t size) {
        uploading_ -= exchange.heldBytes();
        if (uploading_ + exchange.heldBytes() + size > uploadBudgetBytes && !exchange.reply)
            exchange.refuse(failure(503, "Too much is being uploaded at once.", ""));
        const bool goesOn = exchange.receive(data, size);
        uploading_ += exchange.heldBytes();
        return goesOn;
    }

    // Queues the recording. Returns false if the reply is already known.
    bool submit(Exchange& exchange) {
        uploading_ -= exchange.heldBytes();
        auto recording = exchange.takeRecording();
        uploading_ += exchange.heldBytes();
        if (!recording) return false;
        exchange.isSubmitted = true;
        auto* connection = exchange.connection;
        const int socket =
            MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
        MHD_suspend_connection(connection);
        queue_.add({.file = std::move(*recording),
                    .isWanted = [socket] { return !isClosedByPeer(socket); },
                    .deliver =
                        [&exchange, connection](Reply reply) {
                            exchange.reply = std::move(reply);
                            MHD_resume_connection(connection);
                        }});
        return true;
    }

    static MHD_Result send(MHD_Connection* connection, const Reply& reply) {
        // The library copies the body, although the parameter is not const.
        std::string body = reply.body;
        auto* response =
            MHD_create_response_from_buffer(body.size(), body.data(), MHD_RESPMEM_MUST_COPY);
        if (!response) return MHD_NO;
        MHD_add_response_header(response, MHD_HTTP_HEADER_CONTENT_TYPE, "application/json");
        if (reply.status == 405) MHD_add_response_header(response, MHD_HTTP_HEADER_ALLOW, "POST");
        const auto queued =
            MHD_queue_response(connection, static_cast<unsigned>(reply.status), response);
        MHD_destroy_response(response);
        return queued;
    }

    RecognitionQueue& queue_;
    const Authorization authorization_;
    std::size_t uploading_ = 0;  // bytes held by incomplete requests
    MHD_Daemon* daemon_ = nullptr;
    std::string url_;
};

HttpService::HttpService(const Options& options, RecognitionQueue& queue)
    : server_(std::make_unique<Server>(options, queue)) {}

HttpService::~HttpService() = default;

std::string HttpService::url() const {
    return server_->url();
}

}  // namespace quorvi::speech
