#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <span>
#include <stop_token>
#include <string>

#include "Quorvi/platform/linux/curl/CurlLibrary.h"

// Included only by the sources of CurlDownloader.
namespace quorvi {

// One GET over HTTPS. Belongs to the thread that runs it.
class CurlDownload {
public:
    // `receive` gets the body piece by piece; it may throw to end the download.
    CurlDownload(std::string url, const std::string& caFile,
                 std::function<void(std::span<const char>)> receive);
    CurlDownload(const CurlDownload&) = delete;
    CurlDownload& operator=(const CurlDownload&) = delete;

    // Blocks until the body is complete. Throws QuorviError, whatever `receive` threw, or Cancelled
    // once one of the tokens is triggered.
    void run(std::stop_token stop, std::stop_token ending);

private:
    static std::size_t take(char* data, std::size_t size, std::size_t count, void* self) noexcept;

    void finish(CURLcode result);

    struct EasyCleanup {
        void operator()(CURL* easy) const { curl().easy_cleanup(easy); }
    };
    struct MultiCleanup {
        void operator()(CURLM* multi) const { curl().multi_cleanup(multi); }
    };

    std::function<void(std::span<const char>)> receive_;
    std::exception_ptr failure_;  // what receive_ threw
    std::unique_ptr<CURLM, MultiCleanup> multi_;
    std::unique_ptr<CURL, EasyCleanup> easy_;
};

}  // namespace quorvi
