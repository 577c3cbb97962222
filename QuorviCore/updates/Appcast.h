#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvi {

// A release as announced by the feed. Untrusted until the signature of the package has been
// verified.
struct AppcastItem {
    std::string title;
    std::string version;               // compared; see isVersion()
    std::string displayVersion;        // shown
    std::string minimumSystemVersion;  // empty if there is no minimum
    std::string notes;                 // HTML or plain text
    std::string notesLink;
    std::string published;  // RFC 822
    std::string url;        // of the package
    std::string signature;  // Ed25519 signature of the package, base64
    std::uint64_t length = 0;

    bool operator==(const AppcastItem&) const = default;
};

inline constexpr std::size_t maximumAppcastBytes = 1u << 20;
inline constexpr std::uint64_t maximumPackageBytes = 256u << 20;

// Parses an appcast: RSS whose items have an enclosure. Leaves out items for other systems or
// channels, and items without a valid version or an enclosure. The document may be hostile: parsing
// accesses neither network nor disk, refuses document type declarations (so no entities can be
// declared), and bounds size and depth. Throws QuorviError.
std::vector<AppcastItem> parseAppcast(std::string_view document);

// The releases that suit a program of version `current` on a system of version `system`.
struct UpdateChoice {
    std::optional<AppcastItem> update;          // newest that is newer than ours and runs here
    std::optional<AppcastItem> forNewerSystem;  // newest that needs a newer system
};
UpdateChoice chooseUpdate(const std::vector<AppcastItem>& items, std::string_view current,
                          std::string_view system);

// Throws QuorviError if the release cannot be downloaded safely: no signature, no size or one above
// the limit, or an address that is not HTTPS.
void requireDownloadable(const AppcastItem& item);

// Whether the address is HTTPS with a host, and without characters that URL parsers interpret
// differently.
bool isSecureAddress(std::string_view url);

}  // namespace quorvi
