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

// Watches for up to a minute what the user makes of a verified paste, and hands a small spelling
// fix to the store once the user has paused. Main thread; the field is read on the executor, one
// read at a time and never while learning is off. Destroying the observer abandons the watch and
// any read that is still on its way.
class CorrectionObserver {
public:
    // Reads the text of a field, nothing when it can't or mustn't be read. Called on the executor,
    // possibly after the observer is gone.
    using ReadField =
        std::function<std::optional<std::string>(const InsertionTarget&, bool requireFocus)>;
    using IsFrontmost = std::function<bool(pid_t)>;
    using Now = std::function<TimePoint()>;  // monotonic, so that no clock change ends a watch

    // Without `now` the scheduler's time counts.
    CorrectionObserver(Scheduler& scheduler, Executor& queries, ReadField readField,
                       IsFrontmost isFrontmost, Now now = {});
    ~CorrectionObserver();

    // Begins to watch, after a last look at a watch that is still on. Does nothing more when
    // learning is off. `runTimer` false leaves the sampling to the caller. The store outlives the
    // observer.
    void start(const CorrectionContext& context, const InsertionTarget& target,
               CorrectionStore& store, std::vector<TextCorrection> appliedRules, bool runTimer,
               std::function<std::uint64_t()> inputGeneration);

    // Ends the watch. With `remember`, and if the user has typed or clicked since it began, after a
    // last look at what became of the text. That runs by itself; the caller may wait for its end
    // (`if (auto ending = observer.stop(true)) co_await *ending;`).
    std::optional<Task<void>> stop(bool remember);

    // One look at the field. Throws nothing but Cancelled, when `stopped` is triggered.
    Task<void> sample(std::stop_token stopped = {});

    // Whether nothing is watched and no last look is still to end.
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
