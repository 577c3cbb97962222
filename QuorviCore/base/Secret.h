#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "QuorviCore/base/Wipe.h"

namespace quorvi {

// A secret that is overwritten as soon as nobody holds it any more. It moves and is never copied,
// and what it is made from is overwritten too.
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
