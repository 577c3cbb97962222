#include "tools/speech-service/RecognitionQueue.h"

#include <exception>
#include <utility>

#include "tools/speech-service/AudioDecoder.h"

namespace quorvi::speech {

namespace {

constexpr std::size_t maximumWaiting = 8;

Reply ended() {
    return failure(503, "The service is shutting down.", "");
}

}  // namespace

RecognitionQueue::RecognitionQueue(Recognizer& recognizer, std::chrono::milliseconds delay)
    : recognizer_(recognizer), delay_(delay), thread_([this] { work(); }) {}

RecognitionQueue::~RecognitionQueue() {
    end();
}

void RecognitionQueue::end() {
    {
        std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wake_.notify_one();
    if (thread_.joinable()) thread_.join();
}

void RecognitionQueue::add(Job job) {
    {
        std::lock_guard lock(mutex_);
        if (!ending_ && waiting_.size() < maximumWaiting) {
            waiting_.push_back({std::move(job), std::chrono::steady_clock::now() + delay_});
            wake_.notify_one();
            return;
        }
    }
    job.deliver(failure(503, "The service is busy or shutting down.", ""));
}

void RecognitionQueue::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        // The delay is the same for all jobs, so the first in the queue is due first.
        wake_.wait_until(lock, waiting_.front().due, [this] { return ending_; });
        auto job = std::move(waiting_.front().job);
        waiting_.pop_front();
        lock.unlock();
        auto reply = replyTo(job);
        job.deliver(std::move(reply));
        lock.lock();
    }
}

bool RecognitionQueue::isEnding() {
    std::lock_guard lock(mutex_);
    return ending_;
}

Reply RecognitionQueue::replyTo(Job& job) {
    const auto isWanted = [&] { return !isEnding() && job.isWanted(); };
    if (!isWanted()) return ended();
    try {
        const auto samples = decodeAudio(std::exchange(job.file, {}));
        auto text = recognizer_.recognize(samples, isWanted);
        return isEnding() ? ended() : transcript(text);
    } catch (const DecodeError& error) {
        return failure(400, error.what(), "invalid_value");
    } catch (const std::exception&) {
        return failure(500, "The recording could not be recognised.", "");
    }
}

}  // namespace quorvi::speech
