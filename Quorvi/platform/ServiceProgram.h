#pragma once

#include <functional>
#include <memory>
#include <string>

#include "QuorviCore/async/Observable.h"

namespace quorvi {

// A program of this machine that serves over HTTP while it runs. Main thread.
class ServiceProgram {
public:
    struct Endpoint {
        std::string address;  // "http://127.0.0.1:PORT"
        std::string token;    // a secret of this run, to be sent as the API key
    };
    struct Events {
        std::function<void(Endpoint)> onServing;  // requests are accepted
        std::function<void()> onEnd;              // it ended or could not be started
    };
    // A run of the program, which ends with this object; no event comes afterwards.
    class Run {
    public:
        virtual ~Run() = default;
    };

    virtual ~ServiceProgram() = default;

    // As last known, without blocking; starts a new look now and then. Observers are called when
    // the answer has changed.
    virtual bool isInstalled() = 0;
    [[nodiscard]] virtual Subscription onInstalledChange(std::function<void()> observer) = 0;

    // Starts it. The events come in later turns, onEnd at most once and as the last one. The
    // program ends with this process, however that ends.
    virtual std::unique_ptr<Run> start(Events events) = 0;
};

}  // namespace quorvi
