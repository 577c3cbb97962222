#include "Quorvi/corrections/CorrectionObserver.h"

#include <utility>

#include "QuorviCore/async/Async.h"
#include "QuorviCore/corrections/CorrectionLearning.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration samplingInterval = 350ms;
constexpr Duration longestWatch = 60s;
constexpr Duration pauseOfUser = 2s;  // after which an edit is complete
constexpr Duration unreadablePatience = 2s;
constexpr Duration emptyPatience = 2s;

// Resolves the promise when the coroutine frame that holds it is destroyed.
class Completion {
public:
    explicit Completion(Promise<void> promise) : promise_(std::move(promise)) {}
    Completion(const Completion&) = delete;
    Completion& operator=(const Completion&) = delete;
    ~Completion() { promise_.resolve(); }

private:
    Promise<void> promise_;
};

Task<void> completionOf(Promise<void> promise) {
    auto ended = promise.future();
    co_await ended;
}

}  // namespace

// One watch. Shared by the observer, the sampling loop and the last read, which may outlive both.
struct CorrectionObserver::Session {
    CorrectionContext context;
    InsertionTarget target;
    CorrectionStore& store;
    std::function<std::uint64_t()> inputGeneration;
    std::uint64_t inputAtStart;
    std::vector<TextCorrection> appliedRules;  // and those that this watch has learned
    std::string baselineTranscript;            // the next edit is compared with it
    bool hasSaved = false;
    TimePoint deadline;
    std::string lastField;
    TimePoint lastChanged;
    std::optional<TimePoint> unreadableSince;
    std::optional<TimePoint> emptySince;
    std::string lastEvent;

    bool hasInput() const { return inputGeneration() != inputAtStart; }

    // Logs changes of state only.
    void record(std::string_view code) {
        if (code == lastEvent) return;
        lastEvent = code;
        store.recordLearningEvent(code, target.appName);
    }

    // A later failure does not hide a success.
    void explain(Message status) {
        if (!hasSaved) store.setLearningStatus(std::move(status));
    }

    void adopt(const std::vector<TextCorrection>& learned) {
        for (const auto& rule : learned) {
            std::erase_if(appliedRules, [&](const auto& applied) { return applied.id == rule.id; });
            appliedRules.push_back(rule);
        }
        hasSaved = hasSaved || !learned.empty();
    }
};

CorrectionObserver::CorrectionObserver(Scheduler& scheduler, Executor& queries, ReadField readField,
                                       IsFrontmost isFrontmost, Now now)
    : scheduler_(scheduler),
      queries_(queries),
      readField_(std::move(readField)),
      isFrontmost_(std::move(isFrontmost)),
      now_(now ? std::move(now) : [&scheduler] { return scheduler.now(); }),
      tasks_(scheduler) {}

CorrectionObserver::~CorrectionObserver() = default;

void CorrectionObserver::start(const CorrectionContext& context, const InsertionTarget& target,
                               CorrectionStore& store, std::vector<TextCorrection> appliedRules,
                               bool runTimer, std::function<std::uint64_t()> inputGeneration) {
    stop(true);
    if (!store.learnsAutomatically()) return;
    const auto began = now_();
    const auto input = inputGeneration();
    session_ = std::make_shared<Session>(Session{.context = context,
                                                 .target = target,
                                                 .store = store,
                                                 .inputGeneration = std::move(inputGeneration),
                                                 .inputAtStart = input,
                                                 .appliedRules = std::move(appliedRules),
                                                 .baselineTranscript = context.transcript(),
                                                 .deadline = began + longestWatch,
                                                 .lastField = context.expectedField(),
                                                 .lastChanged = began,
                                                 .unreadableSince = {},
                                                 .emptySince = {},
                                                 .lastEvent = {}});
    store.recordLearningEvent("observer.started", target.appName);
    store.setLearningStatus(say::learningIn(target.appName));
    if (runTimer)
        loop_ = tasks_.start(
            [this](std::stop_token stopped) { return run(session_, std::move(stopped)); });
}

Task<void> CorrectionObserver::run(std::shared_ptr<Session> session, std::stop_token stopped) {
    while (session_ == session) {
        auto pause = sleepFor(scheduler_, samplingInterval, stopped);
        co_await pause;
        if (session_ != session) co_return;
        auto sampling = sample(stopped);
        co_await sampling;
    }
}

std::optional<Task<void>> CorrectionObserver::stop(bool remember) {
    std::exchange(loop_, {}).cancel();
    const auto session = std::exchange(session_, nullptr);
    if (!session || !remember) return std::nullopt;
    if (!session->store.learnsAutomatically() || !session->hasInput()) return std::nullopt;
    Promise<void> ended(scheduler_);
    tasks_.start([&](const std::stop_token&) { return lastLook(session, ended); });
    return completionOf(std::move(ended));
}

Task<void> CorrectionObserver::lastLook(std::shared_ptr<Session> session, Promise<void> ended) {
    const Completion completion(std::move(ended));
    auto reading = read(session->target, false, {});
    const auto field = co_await reading;
    if (!session->store.learnsAutomatically()) co_return;
    if (field)
        remember(*field, *session, true);
    else if (isStable(*session))
        remember(session->lastField, *session, true);
    else
        session->explain(say::finalEditNotRead(session->target.appName));
}

// A failing read counts as an unreadable field.
Task<std::optional<std::string>> CorrectionObserver::read(InsertionTarget target, bool requireFocus,
                                                          std::stop_token stopped) {
    const auto readSafely = [read = readField_, target = std::move(target),
                             requireFocus]() -> std::optional<std::string> {
        try {
            return read(target, requireFocus);
        } catch (const std::exception&) {
            return std::nullopt;
        }
    };
    auto reading = inBackground(queries_, scheduler_, readSafely, std::move(stopped));
    co_return co_await reading;
}

Task<void> CorrectionObserver::sample(std::stop_token stopped) {
    const auto session = session_;
    if (!session) co_return;
    Next next = Next::goOn;
    if (!session->store.learnsAutomatically()) {
        next = Next::endAtOnce;
    } else if (!isFrontmost_(session->target.pid)) {
        session->record("observer.focusLeft");
        next = Next::endWithLastLook;
    } else {
        auto reading = read(session->target, true, stopped);
        const auto field = co_await reading;
        if (session_ != session) co_return;
        if (!session->store.learnsAutomatically())
            next = Next::endAtOnce;
        else
            next = field ? notice(*session, *field) : noticeUnreadable(*session);
    }
    // Callbacks of the store may have ended the watch.
    if (session_ != session || next == Next::goOn) co_return;
    auto ending = stop(next == Next::endWithLastLook);
    if (ending) co_await *ending;
}

CorrectionObserver::Next CorrectionObserver::noticeUnreadable(Session& session) {
    session.record("observer.unreadable");
    const auto now = now_();
    if (!session.unreadableSince) session.unreadableSince = now;
    const bool isOver =
        now - *session.unreadableSince >= unreadablePatience || now >= session.deadline;
    return isOver ? Next::endWithLastLook : Next::goOn;
}

CorrectionObserver::Next CorrectionObserver::notice(Session& session, const std::string& field) {
    session.unreadableSince.reset();
    const auto edited = session.context.editedTranscript(field);
    if (!edited) {
        session.record("observer.surroundingChanged");
        session.explain(say::surroundingsChanged());
        return Next::endAtOnce;
    }
    if (edited->empty()) return noticeEmpty(session);
    session.emptySince.reset();
    if (!text::equal(field, session.lastField)) {
        session.lastField = field;
        session.lastChanged = now_();
        session.record("observer.edited");
    }
    if (isStable(session)) remember(field, session, false);
    if (now_() < session.deadline) return Next::goOn;
    return isStable(session) ? Next::endWithLastLook : Next::endAtOnce;
}

CorrectionObserver::Next CorrectionObserver::noticeEmpty(Session& session) {
    const auto now = now_();
    if (!session.emptySince) {
        session.emptySince = now;
        session.record("observer.temporarilyEmpty");
    }
    if (now - *session.emptySince < emptyPatience && now < session.deadline) return Next::goOn;
    session.record("observer.cleared");
    session.explain(say::fieldCleared());
    return Next::endAtOnce;
}

bool CorrectionObserver::isStable(const Session& session) const {
    return now_() - session.lastChanged >= pauseOfUser;
}

void CorrectionObserver::remember(const std::string& field, Session& session, bool isFinal) {
    // Without input by the user, the application itself changed the text.
    if (!session.hasInput()) {
        session.record("observer.noInput");
        return;
    }
    const auto edited = session.context.editedTranscript(field);
    if (!edited || edited->empty()) return;
    if (text::equal(*edited, session.baselineTranscript)) {
        if (isFinal) session.explain(say::noSpellingChange());
        return;
    }
    const auto suggestion =
        CorrectionLearning::suggestion(session.baselineTranscript, *edited, scheduler_.date());
    if (!suggestion) {
        session.record("observer.rejectedEdit");
        if (isFinal) session.explain(say::editNeedsManualRule());
        return;
    }
    const auto learned = session.store.learn(*suggestion, session.appliedRules);
    session.record(learned.empty() ? "observer.ruleAlreadyExists" : "observer.saved");
    session.adopt(learned);
    session.baselineTranscript = *edited;
}

}  // namespace quorvi
