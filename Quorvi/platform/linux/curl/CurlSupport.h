#pragma once

#include <string>

#include "Quorvi/platform/linux/curl/CurlLibrary.h"
#include "QuorviCore/messages/Message.h"

// What all transfers over libcurl have in common. For adapter sources.
namespace quorvi {

template <class Value>
bool setCurlOption(CURL* easy, CURLoption option, Value value) {
    return curl().easy_setopt(easy, option, value) == CURLE_OK;
}

// Requires TLS 1.2 or newer with a valid certificate from `caFile` (PEM), or from the system's if
// it is empty. Also turns off signals, and lets a transfer end while its host name is being
// resolved. Returns false if libcurl has no memory for it.
bool setSecureOptions(CURL* easy, const std::string& caFile);

// Why a transfer did not reach `server`, which is Sentence::speechService or updateServer. Empty if
// the reason is not about the connection.
Message connectionFailure(CURL* easy, CURLcode result, Sentence server);

}  // namespace quorvi
