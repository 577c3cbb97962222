#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>

#include "Quorvi/platform/HttpTransport.h"
#include "Quorvi/platform/linux/curl/CurlLibrary.h"
#include "QuorviCore/async/Future.h"

// Included only by the sources of CurlTransport.
namespace quorvi {

// One exchange with a server: libcurl's handle, the request and the response. Belongs to the
// transport's thread once handed over; the destructor wipes the request.
class CurlTransfer {
public:
    // Without a promise the transfer only opens a connection; its outcome is dropped.
    CurlTransfer(std::uint64_t id, HttpRequest request,
                 std::optional<Promise<HttpResponse>> promise);
    ~CurlTransfer();
    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    // Creates the handle. Returns false if libcurl refuses the request.
    bool prepare(const std::string& caFile);

    void finish(CURLcode result);
    void abandon(std::exception_ptr reason);

    CURL* handle() const { return easy_.get(); }
    std::uint64_t id() const { return id_; }
    bool opensConnection() const { return !promise_; }
    const std::string& url() const { return request_.url; }

private:
    static std::size_t receive(char* data, std::size_t size, std::size_t count,
                               void* self) noexcept;

    bool setOptions(const std::string& caFile);
    bool setMethod();
    bool setHeaders();

    struct Cleanup {
        void operator()(CURL* easy) const { curl().easy_cleanup(easy); }
    };

    std::uint64_t id_;
    HttpRequest request_;
    HttpResponse response_;
    std::optional<Promise<HttpResponse>> promise_;
    bool isTooLong_ = false;  // the response
    curl_slist* headers_ = nullptr;
    std::unique_ptr<CURL, Cleanup> easy_;
};

}  // namespace quorvi
