#include "Quorvi/platform/linux/curl/CurlSupport.h"

#include <cerrno>

namespace quorvi {

bool setSecureOptions(CURL* easy, const std::string& caFile) {
    const bool ok = setCurlOption(easy, CURLOPT_NOSIGNAL, 1L) &&
                    setCurlOption(easy, CURLOPT_QUICK_EXIT, 1L) &&
                    setCurlOption(easy, CURLOPT_SSL_VERIFYPEER, 1L) &&
                    setCurlOption(easy, CURLOPT_SSL_VERIFYHOST, 2L) &&
                    setCurlOption(easy, CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
    // A folder of certificates beside the file would be trusted too. It also keeps libcurl from
    // reusing the parsed file for the next connection.
    const char* bundle =
        caFile.empty() ? curl().version_info(CURLVERSION_NOW)->cainfo : caFile.c_str();
    if (!ok || !bundle) return ok;
    return setCurlOption(easy, CURLOPT_CAINFO, bundle) &&
           setCurlOption(easy, CURLOPT_CAPATH, nullptr);
}

Message connectionFailure(CURL* easy, CURLcode result, Sentence server) {
    switch (result) {
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_COULDNT_RESOLVE_PROXY:
            return say::serverNotFound(server);
        case CURLE_COULDNT_CONNECT: {
            long systemError = 0;
            curl().easy_getinfo(easy, CURLINFO_OS_ERRNO, &systemError);
            return systemError == ECONNREFUSED ? say::serverRefused(server)
                                               : say::serverNotReached(server);
        }
        case CURLE_OPERATION_TIMEDOUT:
            return say::serverTimedOut(server);
        case CURLE_PEER_FAILED_VERIFICATION:
            return say::serverCertificateInvalid(server);
        case CURLE_SSL_CACERT_BADFILE:
            return say::serverCertificatesUnreadable(server);
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_SSL_CIPHER:
            return say::serverNotSecure(server);
        case CURLE_GOT_NOTHING:
        case CURLE_PARTIAL_FILE:
        case CURLE_RECV_ERROR:
        case CURLE_SEND_ERROR:
            return say::serverConnectionLost(server);
        case CURLE_OUT_OF_MEMORY:
            return say::noMemoryForServer(server);
        default:
            return {};
    }
}

}  // namespace quorvi
