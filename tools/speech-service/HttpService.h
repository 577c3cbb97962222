#pragma once

#include <memory>
#include <string>

#include "tools/speech-service/Options.h"
#include "tools/speech-service/RecognitionQueue.h"

namespace quorvi::speech {

// The listening side. One thread serves all connections, and a request waits for the recogniser as
// a suspended connection. Memory is bounded by the number of connections and by a common budget of
// uploads. Ends the queue at its own destruction, so that no connection stays suspended.
class HttpService {
public:
    // Throws std::runtime_error with a sentence when the address can't be listened on.
    HttpService(const Options& options, RecognitionQueue& queue);
    ~HttpService();

    // Where it listens.
    std::string url() const;

private:
    class Server;
    std::unique_ptr<Server> server_;
};

}  // namespace quorvi::speech
