#include "Quorvi/platform/linux/curl/CurlDownload.h"

#include <climits>
#include <exception>
#include <utility>

#include "Quorvi/platform/linux/curl/CurlSupport.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

namespace {

constexpr long maximumRedirects = 5;
constexpr long connectSeconds = 30;
constexpr long idleSeconds = 30;  // without a byte

bool setOptions(CURL* easy, const std::string& url, const std::string& caFile) {
    return setCurlOption(easy, CURLOPT_PROTOCOLS_STR, "https") &&
           setCurlOption(easy, CURLOPT_REDIR_PROTOCOLS_STR, "https") &&
           setCurlOption(easy, CURLOPT_URL, url.c_str()) &&
           setCurlOption(easy, CURLOPT_FOLLOWLOCATION, 1L) &&
           setCurlOption(easy, CURLOPT_MAXREDIRS, maximumRedirects) &&
           setCurlOption(easy, CURLOPT_FAILONERROR, 1L) &&
           setCurlOption(easy, CURLOPT_CONNECTTIMEOUT, connectSeconds) &&
           setCurlOption(easy, CURLOPT_LOW_SPEED_LIMIT, 1L) &&
           setCurlOption(easy, CURLOPT_LOW_SPEED_TIME, idleSeconds) &&
           setSecureOptions(easy, caFile);
}

Message failureOf(CURL* easy, CURLcode result) {
    if (auto message = connectionFailure(easy, result, Sentence::updateServer); !message.isEmpty())
        return message;
    switch (result) {
        case CURLE_UNSUPPORTED_PROTOCOL: {
            long redirects = 0;
            curl().easy_getinfo(easy, CURLINFO_REDIRECT_COUNT, &redirects);
            return redirects > 0 ? say::updateRedirectNotSecure() : say::updateAddressNotSecure();
        }
        case CURLE_TOO_MANY_REDIRECTS:
            return say::updateRedirectsWithoutEnd();
        case CURLE_HTTP_RETURNED_ERROR: {
            long status = 0;
            curl().easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
            return say::updateServerError(status);
        }
        default:
            return say::updateServerUnusable(curl().easy_strerror(result));
    }
}

}  // namespace

CurlDownload::CurlDownload(std::string url, const std::string& caFile,
                           std::function<void(std::span<const char>)> receive)
    : receive_(std::move(receive)) {
    multi_.reset(curl().multi_init());
    easy_.reset(curl().easy_init());
    const bool ok = multi_ && easy_ && setOptions(easy_.get(), url, caFile) &&
                    setCurlOption(easy_.get(), CURLOPT_WRITEFUNCTION, &CurlDownload::take) &&
                    setCurlOption(easy_.get(), CURLOPT_WRITEDATA, this);
    if (!ok) throw QuorviError::message(say::updateNoMemory());
}

void CurlDownload::run(std::stop_token stop, std::stop_token ending) {
    auto* multi = multi_.get();
    const auto wake = [multi] { curl().multi_wakeup(multi); };
    const std::stop_callback onStop(stop, wake);
    const std::stop_callback onEnding(ending, wake);
    if (curl().multi_add_handle(multi, easy_.get()) != CURLM_OK)
        throw QuorviError::message(say::updateNoMemory());
    struct Removal {
        CURLM* multi;
        CURL* easy;
        ~Removal() { curl().multi_remove_handle(multi, easy); }
    } const removal{multi, easy_.get()};
    for (;;) {
        if (stop.stop_requested() || ending.stop_requested()) throw Cancelled{};
        int active = 0;
        curl().multi_perform(multi, &active);
        int left = 0;
        if (const auto* message = curl().multi_info_read(multi, &left))
            return finish(message->data.result);
        curl().multi_poll(multi, nullptr, 0, INT_MAX, nullptr);
    }
}

void CurlDownload::finish(CURLcode result) {
    if (failure_) std::rethrow_exception(failure_);
    if (result != CURLE_OK) throw QuorviError::message(failureOf(easy_.get(), result));
    long status = 0;
    curl().easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    if (status != 200) throw QuorviError::message(say::updateServerOtherAnswer(status));
}

std::size_t CurlDownload::take(char* data, std::size_t size, std::size_t count,
                               void* self) noexcept {
    auto& download = *static_cast<CurlDownload*>(self);
    try {
        download.receive_({data, size * count});
        return size * count;
    } catch (...) {
        download.failure_ = std::current_exception();
        return 0;
    }
}

}  // namespace quorvi
