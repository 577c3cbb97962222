#pragma once

#include <sys/types.h>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/corrections/CorrectionStore.h"
#include "Quorvi/insertion/InsertionTarget.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Future.h"
#include "QuorviCore/async/TaskScope.h"
#include "QuorviCore/corrections/CorrectionContext.h"

namespace quorvi {

// Watches the field of a verified paste for up to a minute and gives small spelling fixes to the
// store once the user pauses. Main thread; reads the field on the executor, one read at a time and
// never while learning is off. The destructor abandons the watch and any pending read.
class CorrectionObserver {
public:
    // Returns the text of a field; nullopt if it cannot or must not be read. Called on the
    // executor, possibly after the observer is destroyed.
    using ReadField =
        std::function<std::optional<std::string>(const InsertionTarget&, bool requireFocus)>;
    using IsFrontmost = std::function<bool(pid_t)>;
    using Now = std::function<TimePoint()>;  // monotonic, so that clock changes do not end a watch

    // `now` defaults to the time of the scheduler.
    CorrectionObserver(Scheduler& scheduler, Executor& queries, ReadField readField,
                       IsFrontmost isFrontmost, Now now = {});
    ~CorrectionObserver();

    // Starts a watch; one that is still running ends with a last read. Does nothing else if
    // learning is off. With `runTimer` false the caller calls sample(). The store outlives the
    // observer.
    void start(const CorrectionContext& context, const InsertionTarget& target,
               CorrectionStore& store, std::vector<TextCorrection> appliedRules, bool runTimer,
               std::function<std::uint64_t()> inputGeneration);

    // Ends the watch. With `remember`, and if the user typed or clicked since the start, reads the
    // field a last time. That happens on its own; await the returned task only to wait for it (`if
    // (auto ending = observer.stop(true)) co_await *ending;`).
    std::optional<Task<void>> stop(bool remember);

    // Reads the field once. Throws only Cancelled, if stopped.
    Task<void> sample(std::stop_token stopped = {});

    // Whether there is neither a watch nor a pending last read.
    bool isIdle() const { return !session_ && tasks_.isEmpty(); }

private:
    struct Session;
    enum class Next { goOn, endAtOnce, endWithLastLook };

    Task<void> run(std::shared_ptr<Session> session, std::stop_token stopped);
    Task<std::optional<std::string>> read(InsertionTarget target, bool requireFocus,
                                          std::stop_token stopped);
    Next notice(Session& session, const std::string& field);
    Next noticeUnreadable(Session& session);
    Next noticeEmpty(Session& session);
    Task<void> lastLook(std::shared_ptr<Session> session, Promise<void> ended);
    void remember(const std::string& field, Session& session, bool isFinal);
    bool isStable(const Session& session) const;

    Scheduler& scheduler_;
    Executor& queries_;
    ReadField readField_;
    IsFrontmost isFrontmost_;
    Now now_;
    std::shared_ptr<Session> session_;
    TaskHandle loop_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
