#pragma once

#include <curl/curl.h>

// For adapter sources.
namespace quorvi {

// The functions of libcurl that are called, without the prefix `curl_`. The first transfer loads
// it, not the program's start: with its protocols and two TLS libraries it takes 8 MB.
struct CurlLibrary {
    // Loads and initialises it at the first call (some 15 ms); any thread. Throws
    // std::runtime_error if that fails.
    static const CurlLibrary& get();

#define QUORVI_CURL_FUNCTIONS(F) \
    F(easy_cleanup)              \
    F(easy_getinfo)              \
    F(easy_init)                 \
    F(easy_setopt)               \
    F(easy_strerror)             \
    F(global_init_mem)           \
    F(multi_add_handle)          \
    F(multi_cleanup)             \
    F(multi_info_read)           \
    F(multi_init)                \
    F(multi_perform)             \
    F(multi_poll)                \
    F(multi_remove_handle)       \
    F(multi_setopt)              \
    F(multi_wakeup)              \
    F(slist_append)              \
    F(slist_free_all)            \
    F(version_info)

#define QUORVI_MEMBER(name) decltype(&::curl_##name) name;
    QUORVI_CURL_FUNCTIONS(QUORVI_MEMBER)
#undef QUORVI_MEMBER

private:
    CurlLibrary();
};

inline const CurlLibrary& curl() {
    return CurlLibrary::get();
}

}  // namespace quorvi
