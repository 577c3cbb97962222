#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "QuorviCore/base/Wipe.h"

namespace quorvi {

// A secret in memory that is overwritten when its owner is destroyed. Move-only; the source of a
// move or a construction is overwritten too.
class Secret {
public:
    Secret() = default;
    explicit Secret(std::string&& bytes) : bytes_(bytes) { wipe(bytes); }
    explicit Secret(std::string_view bytes) : bytes_(bytes) {}
    Secret(Secret&& other) noexcept : bytes_(std::move(other.bytes_)) { wipe(other.bytes_); }
    Secret& operator=(Secret&& other) noexcept {
        wipe(bytes_);
        bytes_.swap(other.bytes_);
        return *this;
    }
    ~Secret() { wipe(bytes_); }

    std::string_view view() const { return bytes_; }

private:
    std::string bytes_;
};

}  // namespace quorvi
