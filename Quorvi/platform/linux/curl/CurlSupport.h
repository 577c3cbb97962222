#pragma once

#include <curl/curl.h>

#include <optional>
#include <string>
#include <string_view>

// What all transfers over libcurl have in common. For adapter sources.
namespace quorvi {

template <class Value>
bool setCurlOption(CURL* easy, CURLoption option, Value value) {
    return curl_easy_setopt(easy, option, value) == CURLE_OK;
}

// Null when there is not enough memory.
CURLM* newCurlMulti();

// Verified certificates over a present TLS, those of `caFile` (PEM) only, or the system's when it
// is empty; no signals, and no waiting for a name that is still being resolved when a transfer is
// dropped. False when libcurl has no memory for it.
bool setSecureOptions(CURL* easy, const std::string& caFile);

// Why a transfer did not reach `peer` ("speech service"), as a sentence; nothing for a reason that
// is not about the connection.
std::optional<std::string> connectionFailure(CURL* easy, CURLcode result, std::string_view peer);

}  // namespace quorvi
