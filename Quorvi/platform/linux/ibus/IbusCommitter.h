#pragma once

#include <deque>
#include <functional>

#include "Quorvi/platform/TextCommitter.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"

namespace quorvi {

// Commits text as IBus's engine, which it is only while a field is held, on a thread of its own.
// Main thread; the scheduler outlives it, and it its fields.
class IbusCommitter final : public TextCommitter {
public:
    // Puts the user's engine back if a former process was killed while it held a field.
    explicit IbusCommitter(Scheduler& scheduler);

    // IBus knows at once whether a field has the focus, so its answer is waited for even if that
    // takes longer than `patience`, for up to 0.3 s.
    Task<std::unique_ptr<CommitField>> focusedField(Duration patience,
                                                    std::stop_token stop) override;

private:
    class Field;

    // Runs the job on the thread after those before it. Any thread.
    void run(std::function<void()> job);

    Scheduler& scheduler_;
    std::deque<std::function<void()>> jobs_;  // of the thread, as the next
    bool isRunning_ = false;
    GLibThread thread_;
};

}  // namespace quorvi
