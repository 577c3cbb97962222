#include "Quorvi/platform/linux/curl/CurlSupport.h"

#include <cerrno>
#include <mutex>

namespace quorvi {

namespace {

// In place of %, the peer.
const char* pattern(CURL* easy, CURLcode result) {
    switch (result) {
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_COULDNT_RESOLVE_PROXY:
            return "The % could not be found. Check your internet connection and try again.";
        case CURLE_COULDNT_CONNECT: {
            long systemError = 0;
            curl_easy_getinfo(easy, CURLINFO_OS_ERRNO, &systemError);
            return systemError == ECONNREFUSED
                       ? "The % could not be reached. The connection was refused."
                       : "The % could not be reached. Check your internet connection and try "
                         "again.";
        }
        case CURLE_OPERATION_TIMEDOUT:
            return "The % did not answer in time. Please try again.";
        case CURLE_PEER_FAILED_VERIFICATION:
            return "The % could not be trusted. Its certificate is not valid.";
        case CURLE_SSL_CACERT_BADFILE:
            return "The % could not be trusted. The certificates of this computer could not be "
                   "read.";
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_SSL_CIPHER:
            return "A secure connection to the % could not be made. Please try again.";
        case CURLE_GOT_NOTHING:
        case CURLE_PARTIAL_FILE:
        case CURLE_RECV_ERROR:
        case CURLE_SEND_ERROR:
            return "The connection to the % was lost. Please try again.";
        case CURLE_OUT_OF_MEMORY:
            return "There is not enough memory to reach the %.";
        default:
            return nullptr;
    }
}

}  // namespace

CURLM* newCurlMulti() {
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    return curl_multi_init();
}

bool setSecureOptions(CURL* easy, const std::string& caFile) {
    const bool ok = setCurlOption(easy, CURLOPT_NOSIGNAL, 1L) &&
                    setCurlOption(easy, CURLOPT_QUICK_EXIT, 1L) &&
                    setCurlOption(easy, CURLOPT_SSL_VERIFYPEER, 1L) &&
                    setCurlOption(easy, CURLOPT_SSL_VERIFYHOST, 2L) &&
                    setCurlOption(easy, CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
    // A folder of certificates beside the file would be trusted too. It also keeps libcurl from
    // reusing the parsed file for the next connection.
    const char* bundle =
        caFile.empty() ? curl_version_info(CURLVERSION_NOW)->cainfo : caFile.c_str();
    if (!ok || !bundle) return ok;
    return setCurlOption(easy, CURLOPT_CAINFO, bundle) &&
           setCurlOption(easy, CURLOPT_CAPATH, nullptr);
}

std::optional<std::string> connectionFailure(CURL* easy, CURLcode result, std::string_view peer) {
    const char* found = pattern(easy, result);
    if (!found) return std::nullopt;
    std::string sentence = found;
    return sentence.replace(sentence.find('%'), 1, peer);
}

}  // namespace quorvi
