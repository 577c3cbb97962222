#pragma once

#include <functional>

#include "QuorviCore/async/Observable.h"

namespace quorvi {

// Whether this machine has a network. Main thread.
class Network {
public:
    virtual ~Network() = default;

    // Observers are called when the network is there again after it was not. Nothing is watched
    // before the first observer.
    [[nodiscard]] virtual Subscription onReturn(std::function<void()> observer) = 0;
};

}  // namespace quorvi
