#include "Quorvi/platform/linux/curl/CurlTransfer.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "Quorvi/platform/linux/curl/CurlSupport.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/base/Wipe.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr auto wholeRequest = 120s;
// An opened connection has to survive the longest recording, 180 s, with time to spare.
constexpr auto connectionAge = 600s;

long milliseconds(Duration d) {
    return static_cast<long>(std::chrono::ceil<std::chrono::milliseconds>(d).count());
}

bool isHeaderText(std::string_view text) {
    return std::none_of(text.begin(), text.end(),
                        [](unsigned char c) { return (c < 0x20 && c != '\t') || c == 0x7f; });
}

}  // namespace

CurlTransfer::CurlTransfer(std::uint64_t id, HttpRequest request,
                           std::optional<Promise<HttpResponse>> promise)
    : id_(id), request_(std::move(request)), promise_(std::move(promise)) {}

CurlTransfer::~CurlTransfer() {
    easy_.reset();
    for (auto* line = headers_; line; line = line->next) wipe(line->data, std::strlen(line->data));
    if (headers_) curl().slist_free_all(headers_);
    for (auto& [name, value] : request_.headers) wipe(value);
}

bool CurlTransfer::prepare(const std::string& caFile) {
    easy_.reset(curl().easy_init());
    return easy_ && setOptions(caFile) && setMethod() && setHeaders();
}

bool CurlTransfer::setOptions(const std::string& caFile) {
    CURL* easy = easy_.get();
    bool ok = setCurlOption(easy, CURLOPT_PROTOCOLS_STR, "https,http") &&
              setCurlOption(easy, CURLOPT_URL, request_.url.c_str()) &&
              setCurlOption(easy, CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_1}) &&
              setCurlOption(easy, CURLOPT_FOLLOWLOCATION, 0L) && setSecureOptions(easy, caFile) &&
              setCurlOption(easy, CURLOPT_MAXAGE_CONN, static_cast<long>(connectionAge.count())) &&
              setCurlOption(easy, CURLOPT_TCP_KEEPALIVE, 1L) &&
              setCurlOption(easy, CURLOPT_PRIVATE, this) &&
              setCurlOption(easy, CURLOPT_WRITEFUNCTION, &CurlTransfer::receive) &&
              setCurlOption(easy, CURLOPT_WRITEDATA, this);

    // Plain connections stay on this computer; a proxy would carry the key off it.
    if (request_.url.starts_with("http://")) ok = ok && setCurlOption(easy, CURLOPT_PROXY, "");

    // libcurl counts the time without a byte in whole seconds, and only once it is connected.
    const auto idle = std::chrono::ceil<std::chrono::seconds>(request_.timeout);
    return ok && setCurlOption(easy, CURLOPT_LOW_SPEED_LIMIT, 1L) &&
           setCurlOption(easy, CURLOPT_LOW_SPEED_TIME,
                         std::max(1L, static_cast<long>(idle.count()))) &&
           setCurlOption(easy, CURLOPT_CONNECTTIMEOUT_MS,
                         std::max(1L, milliseconds(request_.timeout))) &&
           setCurlOption(easy, CURLOPT_TIMEOUT_MS, milliseconds(wholeRequest));
}

bool CurlTransfer::setMethod() {
    CURL* easy = easy_.get();
    if (request_.method == "GET") return setCurlOption(easy, CURLOPT_HTTPGET, 1L);
    if (request_.method == "HEAD") return setCurlOption(easy, CURLOPT_NOBODY, 1L);
    // The body isn't copied; an empty vector may have no address to give.
    const auto* body =
        request_.body.empty() ? reinterpret_cast<const std::uint8_t*>("") : request_.body.data();
    const auto size = static_cast<curl_off_t>(request_.body.size());
    const bool ok = setCurlOption(easy, CURLOPT_POST, 1L) &&
                    setCurlOption(easy, CURLOPT_POSTFIELDSIZE_LARGE, size) &&
                    setCurlOption(easy, CURLOPT_POSTFIELDS, body);
    if (request_.method == "POST") return ok;
    return ok && setCurlOption(easy, CURLOPT_CUSTOMREQUEST, request_.method.c_str());
}

bool CurlTransfer::setHeaders() {
    const auto add = [this](const std::string& line) {
        auto* longer = curl().slist_append(headers_, line.c_str());
        if (longer) headers_ = longer;
        return longer != nullptr;
    };
    // Waiting for "100 Continue" would cost a round trip.
    if (!add("Expect:")) return false;
    for (const auto& [name, value] : request_.headers) {
        // A line break would smuggle in a header of its own.
        if (!isHeaderText(name) || !isHeaderText(value)) return false;
        auto line = name + ": " + value;
        const bool added = add(line);
        wipe(line);
        if (!added) return false;
    }
    return setCurlOption(easy_.get(), CURLOPT_HTTPHEADER, headers_);
}

std::size_t CurlTransfer::receive(char* data, std::size_t size, std::size_t count,
                                  void* self) noexcept {
    auto& transfer = *static_cast<CurlTransfer*>(self);
    auto& body = transfer.response_.body;
    const std::size_t bytes = size * count;
    const auto limit = transfer.request_.longestAnswer;
    try {
        std::size_t expected = body.size() + bytes;
        if (body.empty()) {
            curl_off_t announced = 0;
            curl().easy_getinfo(transfer.handle(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
            expected =
                std::max(expected, static_cast<std::size_t>(std::max(announced, curl_off_t{0})));
        }
        transfer.isTooLong_ = expected > limit;
        if (transfer.isTooLong_) return 0;
        if (body.empty()) body.reserve(expected);
        body.insert(body.end(), data, data + bytes);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return bytes;
}

void CurlTransfer::finish(CURLcode result) {
    if (!promise_) return;
    long status = 0;
    curl().easy_getinfo(handle(), CURLINFO_RESPONSE_CODE, &status);
    constexpr long firstRefusal = 400;
    if (isTooLong_ && status >= firstRefusal) {
        response_.body.clear();
        result = CURLE_OK;
    }
    if (result == CURLE_OK) {
        response_.status = static_cast<int>(status);
        promise_->resolve(std::move(response_));
        return;
    }
    // The peer was asked and did answer, in a language other than HTTP.
    long sent = 0;
    curl().easy_getinfo(handle(), CURLINFO_REQUEST_SIZE, &sent);
    if (sent > 0 && (result == CURLE_UNSUPPORTED_PROTOCOL || result == CURLE_WEIRD_SERVER_REPLY)) {
        promise_->resolve(HttpResponse{});
        return;
    }
    auto message = connectionFailure(handle(), result, Sentence::speechService);
    if (message.isEmpty())
        message = result == CURLE_WRITE_ERROR ? say::serviceAnswerTooLarge()
                                              : say::requestFailed(curl().easy_strerror(result));
    abandon(std::make_exception_ptr(QuorviError::message(std::move(message))));
}

void CurlTransfer::abandon(std::exception_ptr reason) {
    if (promise_) promise_->reject(std::move(reason));
}

}  // namespace quorvi
