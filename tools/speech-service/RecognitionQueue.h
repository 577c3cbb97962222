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

// Takes recordings in and recognises them one after another on a thread of its own, so that the
// thread of the connections never waits for the recogniser. Few jobs wait at a time; one too many
// is answered with 503, and so is everything that waits when the queue ends.
class RecognitionQueue {
public:
    struct Job {
        Bytes file;
        std::function<bool()> isWanted;      // whether anybody still waits for the reply
        std::function<void(Reply)> deliver;  // called exactly once, on any thread
    };

    RecognitionQueue(Recognizer& recognizer, std::chrono::milliseconds delay);
    ~RecognitionQueue();

    void add(Job job);

    // Waits until the last job is answered. Jobs that are added later are refused.
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
