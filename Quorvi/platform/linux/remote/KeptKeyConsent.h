#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quorvi {

// The user's leave to press keys, as it is kept on this machine: a private file, in it the token by
// which the desktop's portal knows of it. Waits for the disk, and up to a second for the bus; any
// thread, one at a time.
class KeptKeyConsent {
public:
    // `byPortal`: a leave without a token is none.
    KeptKeyConsent(std::filesystem::path file, bool byPortal)
        : file_(std::move(file)), byPortal_(byPortal) {}

    // Nothing without the user's leave; empty where the desktop has no tokens.
    std::optional<std::string> token() const;
    // Returns false if it can't be written.
    bool keep(const std::string& token) const;
    // Also makes the portal forget it.
    void forget() const;

    // Whether the portal remembers the token, so that it won't ask; nothing if that can't be known.
    static std::optional<bool> isRemembered(const std::string& token);

private:
    const std::filesystem::path file_;
    const bool byPortal_;
};

}  // namespace quorvi
