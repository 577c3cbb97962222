#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

#include "QuorviCore/base/Bytes.h"
#include "tools/speech-service/Recognizer.h"
#include "tools/speech-service/Reply.h"

namespace quorvi::speech {

// Recognises recordings one after another on a thread of its own, so that the server's thread never
// waits for the recogniser. A job is answered with 503 if the queue is full or ends before its
// turn.
class RecognitionQueue {
public:
    struct Job {
        Bytes file;
        std::function<bool()> isWanted;      // false if the client is gone
        std::function<void(Reply)> deliver;  // called exactly once, on any thread
    };

    RecognitionQueue(Recognizer& recognizer, std::chrono::milliseconds delay);
    ~RecognitionQueue();

    void add(Job job);

    // Returns when every job is answered. Later jobs are refused.
    void end();

private:
    struct Waiting {
        Job job;
        std::chrono::steady_clock::time_point due;
    };

    void work();
    bool isEnding();
    Reply replyTo(Job& job);

    Recognizer& recognizer_;
    const std::chrono::milliseconds delay_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Waiting> waiting_;
    bool ending_ = false;
    std::thread thread_;
};

}  // namespace quorvi::speech
