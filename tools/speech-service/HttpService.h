#pragma once

#include <memory>
#include <string>

#include "tools/speech-service/Options.h"
#include "tools/speech-service/RecognitionQueue.h"

namespace quorvi::speech {

// The HTTP server. One thread of its own serves all connections; a request that waits for the
// recogniser is a suspended connection. The number of connections and the total size of uploads are
// limited. The destructor ends the queue, so that no connection stays suspended.
class HttpService {
public:
    // Throws std::runtime_error with a sentence if the address can't be listened on.
    HttpService(const Options& options, RecognitionQueue& queue);
    ~HttpService();

    // Returns the address that it listens on.
    std::string url() const;

private:
    class Server;
    std::unique_ptr<Server> server_;
};

}  // namespace quorvi::speech
