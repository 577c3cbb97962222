#pragma once

#include <memory>
#include <utility>

namespace quorvi {

// A member that lets callbacks outlive its owner: what guard() returns does nothing once the owner
// is destroyed. A guarded callback may be copied and destroyed on any thread; guard() and the call
// itself belong to the main thread, where the owner lives.
class Lifetime {
public:
    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;

    template <class F>
    [[nodiscard]] auto guard(F work) const {
        return [owner = std::weak_ptr(token_), work = std::move(work)](auto&&... arguments) {
            if (!owner.expired()) work(std::forward<decltype(arguments)>(arguments)...);
        };
    }

private:
    struct Token {};
    std::shared_ptr<const Token> token_ = std::make_shared<const Token>();
};

}  // namespace quorvi
