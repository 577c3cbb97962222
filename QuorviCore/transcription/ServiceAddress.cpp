#include "QuorviCore/transcription/ServiceAddress.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "QuorviCore/Error.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

char lowerCased(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// A decimal number without sign, leading zeros or anything after it.
std::optional<int> number(std::string_view s) {
    if (s.empty() || s.size() > 5 || !std::all_of(s.begin(), s.end(), isDigit)) return std::nullopt;
    if (s.size() > 1 && s.front() == '0') return std::nullopt;
    int value = 0;
    std::from_chars(s.data(), s.data() + s.size(), value);
    return value;
}

bool isHostName(std::string_view host) {
    const auto fits = [](char c) {
        return isDigit(c) || (c >= 'a' && c <= 'z') || c == '-' || c == '.' || c == '_';
    };
    return !host.empty() && host.size() <= 253 && host.front() != '.' && host.front() != '-' &&
           std::all_of(host.begin(), host.end(), fits);
}

bool isBracketedIPv6(std::string_view host) {
    const auto fits = [](char c) {
        return isDigit(c) || (c >= 'a' && c <= 'f') || c == ':' || c == '.';
    };
    if (host.size() < 4 || host.front() != '[' || host.back() != ']') return false;
    host = host.substr(1, host.size() - 2);
    return host.find(':') != host.npos && std::all_of(host.begin(), host.end(), fits);
}

// Only four plain numbers count: resolvers read shorter, octal and hexadecimal forms differently.
bool isIPv4Loopback(std::string_view host) {
    for (int part = 0; part < 4; ++part) {
        const auto dot = host.find('.');
        if ((dot == host.npos) != (part == 3)) return false;
        const auto value = number(host.substr(0, dot));
        if (!value || *value > 255 || (part == 0 && *value != 127)) return false;
        host = dot == host.npos ? std::string_view() : host.substr(dot + 1);
    }
    return true;
}

bool isLoopback(std::string_view host) {
    return host == "localhost" || host == "[::1]" || isIPv4Loopback(host);
}

QuorviError invalidAddress() {
    return QuorviError::message(say::serviceAddressInvalid());
}

}  // namespace

std::string serviceAddress(const std::string& configured) {
    std::string address(text::trimmed(configured));
    if (address.empty()) return std::string(defaultServiceAddress);
    std::transform(address.begin(), address.end(), address.begin(), lowerCased);
    if (address.back() == '/') address.pop_back();

    std::string_view rest = address;
    const bool encrypted = rest.starts_with("https://");
    if (!encrypted && !rest.starts_with("http://")) throw invalidAddress();
    rest.remove_prefix(encrypted ? 8 : 7);

    // The last colon begins the port unless it stands inside the brackets of an IPv6 address.
    auto host = rest;
    if (const auto colon = rest.rfind(':'); colon != rest.npos && rest.back() != ']') {
        const auto port = number(rest.substr(colon + 1));
        if (!port || *port < 1 || *port > 65535) throw invalidAddress();
        host = rest.substr(0, colon);
    }
    if (!isHostName(host) && !isBracketedIPv6(host)) throw invalidAddress();
    if (!encrypted && !isLoopback(host)) {
        throw QuorviError::message(say::serviceAddressNotEncrypted());
    }
    return address;
}

}  // namespace quorvi
