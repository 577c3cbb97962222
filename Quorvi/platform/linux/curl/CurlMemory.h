#pragma once

namespace quorvi {

// libcurl and OpenSSL are made to overwrite what they free, since their buffers hold requests with
// the API key.

// Takes effect only before OpenSSL's first allocation, which may also be a database connection's:
// main() calls it before anything else.
void clearMemoryOfOpenssl();

// Initialises libcurl, once. Any thread.
void initializeCurl();

}  // namespace quorvi
