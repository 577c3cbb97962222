#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvi {

// One release as the feed announces it. Nothing of it is trusted before the package's signature has
// been verified.
struct AppcastItem {
    std::string title;
    std::string version;               // what is compared; see isVersion()
    std::string displayVersion;        // what is shown
    std::string minimumSystemVersion;  // empty when any system will do
    std::string notes;                 // HTML or plain text
    std::string notesLink;
    std::string published;  // RFC 822
    std::string url;        // of the package
    std::string signature;  // Ed25519 over the package's bytes, base64
    std::uint64_t length = 0;

    bool operator==(const AppcastItem&) const = default;
};

inline constexpr std::size_t maximumAppcastBytes = 1u << 20;
inline constexpr std::uint64_t maximumPackageBytes = 256u << 20;

// The releases of an appcast: RSS whose items carry an enclosure. Items for other systems or of a
// channel of their own, and items without a usable version or an enclosure, are left out. The
// document is hostile until proven otherwise: it is parsed without any access to network or disk, a
// document type declaration (and with it every entity of its own) is refused, depth and size are
// bounded. Throws QuorviError.
std::vector<AppcastItem> parseAppcast(std::string_view document);

// What a feed has for a program of version `current` on a system of version `system`.
struct UpdateChoice {
    std::optional<AppcastItem> update;          // the newest that is newer than ours and runs here
    std::optional<AppcastItem> forNewerSystem;  // the newest that would need a newer system
};
UpdateChoice chooseUpdate(const std::vector<AppcastItem>& items, std::string_view current,
                          std::string_view system);

// Throws QuorviError with the reason why a release can't be downloaded safely: no signature, no
// length or too large a one, an address that is not HTTPS.
void requireDownloadable(const AppcastItem& item);

// Whether the address is an HTTPS one with a host, and without characters that readers of addresses
// disagree about.
bool isSecureAddress(std::string_view url);

}  // namespace quorvi
