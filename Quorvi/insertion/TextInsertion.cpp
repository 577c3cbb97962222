#include "Quorvi/insertion/TextInsertion.h"

#include <algorithm>
#include <array>
#include <utility>

#include "Quorvi/insertion/PasteKeyboard.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Future.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration pollInterval = 50ms;
constexpr int modifierPolls = 40;
constexpr Duration verificationWindow = 900ms;
// How long the focused field may take to say that it takes text. Where the accessibility bus shows
// a field there is another way, and less reason to wait.
constexpr Duration fieldWait = 60ms;
constexpr Duration longFieldWait = 300ms;
constexpr Duration fieldPasteLimit = 500ms;
// How long a program that looks at a new clipboard before it can paste it may take for that.
constexpr Duration readerWait = 60ms;

// Restores the clipboard however the insertion ends, also if its frame is destroyed, unless told to
// leave it.
class ClipboardGuard {
public:
    explicit ClipboardGuard(TranscriptClipboard& clipboard) : clipboard_(clipboard) {}
    ~ClipboardGuard() {
        if (restores_) clipboard_.restore();
    }
    void leave() { restores_ = false; }
    ClipboardGuard(const ClipboardGuard&) = delete;
    ClipboardGuard& operator=(const ClipboardGuard&) = delete;

private:
    TranscriptClipboard& clipboard_;
    bool restores_ = true;
};

Task<std::unique_ptr<CommitField>> focusedField(TextCommitter* committer, Duration patience,
                                                std::stop_token stop) {
    if (!committer) co_return nullptr;
    auto looking = committer->focusedField(patience, std::move(stop));
    co_return co_await looking;
}

// Whether an input method may give it: a terminal takes the end of a line for the order to run it.
bool isCommittable(const std::string& text, CommitField::Kind kind) {
    return std::ranges::none_of(text, [kind](unsigned char c) {
        const bool isSpacing = c == '\n' || c == '\t';
        return c == 0x7F || (c < 0x20 && !(isSpacing && kind == CommitField::Kind::text));
    });
}

}  // namespace

// One insertion under way.
struct TextInsertion::Paste {
    std::string text;
    InsertionTarget target;
    Request request;

    Task<std::unique_ptr<CommitField>> looking;
    std::optional<std::string> fieldBefore;
    std::optional<CorrectionContext> expected;  // from the field before the paste
    std::optional<CorrectionContext> verified;  // from the field after it
    bool clipboardIsLost = false;
    CommitField::Delivery delivery = CommitField::Delivery::nothing;
    bool showsArrival = true;  // the field's text, if it can be read
    bool isUnchanged = false;  // the field, when it was read last
    std::int64_t lengthAfter = -1;
    std::string outcome;  // reported when nothing was verified

    void report(const std::string& code, const Counts& counts = {}) const {
        if (request.onLearningEvent) request.onLearningEvent(code, counts);
    }
    // Whether the field can be asked to paste: in place of no selection, and where it can be seen
    // what has become of it.
    bool fieldCanPaste() const {
        return expected && target.element && target.selection && target.selection->length == 0;
    }
    bool isCommitted() const { return delivery != CommitField::Delivery::nothing; }
    // Whether the commit has arrived, as far as anybody can tell.
    bool commitIsTaken() const {
        if (verified) return true;
        if (fieldBefore && showsArrival && lengthAfter >= 0) return !isUnchanged;
        return delivery == CommitField::Delivery::sent;
    }
};

TextInsertion::TextInsertion(Environment environment)
    : environment_(environment),
      inspector_(environment.scheduler, environment.accessibility, environment.workspace),
      clipboard_(environment.pasteboard) {}

Task<InsertionTarget> TextInsertion::capture(std::uint64_t inputGeneration, std::stop_token stop) {
    auto query = inBackground(
        environment_.queries, environment_.scheduler,
        [inspector = inspector_, inputGeneration] { return inspector.capture(inputGeneration); },
        stop);
    auto looking = focusedField(environment_.committer, fieldWait, stop);
    looking.start();
    auto target = co_await query;
    auto field = co_await looking;
    if (!field && !target.element) {
        auto lookingAgain = focusedField(environment_.committer, longFieldWait, stop);
        field = co_await lookingAgain;
    }
    if (field && field->kind() == CommitField::Kind::secret)
        throw QuorviError::message(say::selectRegularField());
    target.takesText = field && !target.isNoText;
    co_return target;
}

Task<TranscriptClipboard::Copy> TextInsertion::copyClipboardAhead(InsertionTarget target,
                                                                  std::stop_token stop) {
    if (target.takesText) co_return TranscriptClipboard::Copy{};
    auto copying = clipboard_.copyAhead(std::move(stop));
    co_return co_await copying;
}

Task<InsertionTarget> TextInsertion::completed(InsertionTarget target, std::stop_token stop) {
    auto query = inBackground(
        environment_.queries, environment_.scheduler,
        [inspector = inspector_, target = std::move(target)] {
            return inspector.completed(target);
        },
        std::move(stop));
    co_return co_await query;
}

Task<std::optional<std::string>> TextInsertion::correctionField(InsertionTarget target,
                                                                bool requireFocus,
                                                                std::stop_token stop) {
    auto query = inBackground(
        environment_.queries, environment_.scheduler,
        [inspector = inspector_, target = std::move(target), requireFocus] {
            return inspector.correctionField(target, requireFocus);
        },
        std::move(stop));
    co_return co_await query;
}

Task<bool> TextInsertion::copyForManualPaste(std::string text, std::stop_token stop) {
    auto copying = clipboard_.copyPermanently(std::move(text), std::move(stop));
    co_return co_await copying;
}

bool TextInsertion::modifiersArePressed() const {
    return PasteKeyboard::physicalModifiersArePressed(
        [this](KeyCode key) { return environment_.keyState.keyIsDown(key); });
}

Task<TextInsertion::Outcome> TextInsertion::insert(std::string text, InsertionTarget target,
                                                   Request request, std::stop_token stop) {
    Paste paste{
        .text = std::move(text), .target = std::move(target), .request = std::move(request)};

    auto released = waitForModifiers(stop);
    co_await released;
    // Beside the check, since it may take a while to learn that there is none. Some programs have
    // an input method while the focus is on a button, where the text would be lost.
    paste.looking = focusedField(paste.target.isNoText ? nullptr : environment_.committer,
                                 paste.target.takesText ? longFieldWait : fieldWait, stop);
    paste.looking.start();
    auto firstCheck = validate(paste, stop);
    co_await firstCheck;
    if (modifiersArePressed()) throw QuorviError::message(say::modifierHeld());
    auto before = readBefore(paste, stop);
    co_await before;

    auto committing = commit(paste, stop);
    co_await committing;
    if (!paste.isCommitted()) {
        auto pasting = pasteText(paste, std::move(stop));
        co_return co_await pasting;
    }
    auto arrival = watchArrival(paste, stop);
    co_await arrival;
    const bool isTaken = paste.commitIsTaken();
    if (!isTaken) {
        auto leaving = leaveOnClipboard(paste, std::move(stop));
        co_await leaving;
    }
    co_return Outcome{std::move(paste.verified), isTaken, paste.clipboardIsLost, true};
}

// Gives the text to the field, if it takes that.
Task<void> TextInsertion::commit(Paste& paste, std::stop_token stop) {
    const auto field = co_await paste.looking;
    if (!field) co_return;
    if (field->kind() == CommitField::Kind::secret)
        throw QuorviError::message(say::notARegularField());
    if (!isCommittable(paste.text, field->kind())) co_return;
    // A terminal's text is its whole screen, and a prompt for a password shows nothing.
    paste.showsArrival = field->kind() == CommitField::Kind::text;
    auto lastCheck = validate(paste, std::move(stop));
    co_await lastCheck;
    refuseLateChanges(paste);
    auto committing = field->commit(paste.text);
    paste.delivery = co_await committing;
}

Task<TextInsertion::Outcome> TextInsertion::pasteText(Paste& paste, std::stop_token stop) {
    clipboard_.restore();
    ClipboardGuard guard(clipboard_);
    auto sending = sendPaste(paste, stop);
    co_await sending;
    auto arrival = watchArrival(paste, stop);
    co_await arrival;
    const bool isTaken = paste.verified || clipboard_.wasTakenBy(paste.target.pid);
    if (!isTaken) {
        guard.leave();
        auto keeping = clipboard_.keepTranscript(paste.text);
        co_await keeping;
    }
    co_return Outcome{std::move(paste.verified), isTaken, paste.clipboardIsLost};
}

// For the user to paste, who sees whether a part of it has arrived after all.
Task<void> TextInsertion::leaveOnClipboard(Paste& paste, std::stop_token stop) {
    clipboard_.restore();
    auto taking = clipboard_.snapshot(std::nullopt, stop);
    auto backup = co_await taking;
    paste.clipboardIsLost = !backup.items;
    auto installing = clipboard_.installTemporary(paste.text, std::move(backup), std::move(stop));
    co_await installing;
    auto keeping = clipboard_.keepTranscript(paste.text);
    co_await keeping;
}

Task<void> TextInsertion::waitForModifiers(std::stop_token stop) {
    for (int polls = 0; polls < modifierPolls && modifiersArePressed(); ++polls) {
        auto pause = sleepFor(environment_.scheduler, pollInterval, stop);
        co_await pause;
    }
}

Task<void> TextInsertion::validate(const Paste& paste, std::stop_token stop) {
    const auto generation = paste.request.currentInputGeneration();
    auto query = inBackground(
        environment_.queries, environment_.scheduler,
        [inspector = inspector_, target = paste.target, generation] {
            inspector.validate(target, generation);
        },
        std::move(stop));
    co_await query;
    refuseChangedInput(paste);
}

// The user may have typed or clicked while this waited for a query or the clipboard.
void TextInsertion::refuseChangedInput(const Paste& paste) const {
    const auto frontmost = environment_.workspace.frontmostApplication();
    if (paste.request.currentInputGeneration() != paste.target.inputGeneration || !frontmost ||
        frontmost->pid != paste.target.pid)
        throw QuorviError::message(say::destinationChanged());
}

// The last check before the keystroke; does not wait for anything.
void TextInsertion::refuseLateChanges(const Paste& paste) const {
    refuseChangedInput(paste);
    if (modifiersArePressed()) throw QuorviError::message(say::releaseModifiers());
}

Task<void> TextInsertion::readBefore(Paste& paste, std::stop_token stop) {
    const auto& selection = paste.target.selection;
    if (!paste.request.learnCorrections) {
        paste.outcome = selection ? "paste.beforeUnavailable" : "paste.noSelection";
        co_return;
    }
    if (!selection) {
        auto asking = completed(paste.target, stop);
        paste.target = co_await asking;
        refuseChangedInput(paste);
    }
    auto reading = correctionField(paste.target, true, std::move(stop));
    paste.fieldBefore = co_await reading;
    if (!selection) {
        paste.outcome = "paste.noSelection";
    } else if (!paste.fieldBefore) {
        paste.outcome = "paste.beforeUnavailable";
    } else {
        paste.expected = CorrectionContext::make(*paste.fieldBefore, *selection, paste.text);
        paste.outcome = paste.expected ? "paste.afterUnavailable" : "paste.invalidRange";
        paste.report("paste.before", {{"length", text::utf16Length(*paste.fieldBefore)},
                                      {"selection", selection->location},
                                      {"selectedLength", selection->length},
                                      {"transcriptLength", text::utf16Length(paste.text)}});
    }
}

Task<void> TextInsertion::sendPaste(Paste& paste, std::stop_token stop) {
    auto preparing = environment_.poster.prepare(stop);
    preparing.start();
    auto taking = clipboard_.snapshot(std::move(paste.request.clipboard), stop);
    auto backup = co_await taking;
    co_await preparing;
    const bool hasKeys = environment_.poster.isAvailable() || !paste.fieldCanPaste();
    std::array<TapEvent, 4> events{};
    if (hasKeys) events = PasteKeyboard::pasteEvents(environment_.poster);
    auto looking = environment_.poster.looksBeforePasting(paste.target.pid, stop);
    const bool looksFirst = co_await looking;
    auto lastCheck = validate(paste, stop);
    co_await lastCheck;
    refuseLateChanges(paste);
    paste.clipboardIsLost = !backup.items;
    auto installing = clipboard_.installTemporary(paste.text, std::move(backup), stop);
    co_await installing;
    if (looksFirst) {
        auto attention = waitForReader(paste, stop);
        co_await attention;
    }
    refuseLateChanges(paste);
    if (!hasKeys) {
        auto asking = askFieldToPaste(paste, std::move(stop));
        co_await asking;
        co_return;
    }
    if (!environment_.poster.isAvailable()) throw QuorviError::message(say::couldNotPaste());
    environment_.poster.post(events, paste.target.pid);
}

// Where no keys can be posted. The field is read later, since its answer is not to be relied on.
Task<void> TextInsertion::askFieldToPaste(const Paste& paste, std::stop_token stop) {
    auto query = inBackground(
        environment_.queries, environment_.scheduler,
        [&accessibility = environment_.accessibility, field = *paste.target.element] {
            accessibility.setAttribute(field, "AXPaste", true, fieldPasteLimit);
        },
        std::move(stop));
    co_await query;
}

Task<void> TextInsertion::waitForReader(const Paste& paste, std::stop_token stop) {
    const auto pid = paste.target.pid;
    if (clipboard_.wasAskedBy(pid)) co_return;
    Promise<void> ready(environment_.scheduler);
    auto future = ready.future(std::move(stop));
    const auto timer =
        environment_.scheduler.after(readerWait, [ready]() mutable { ready.resolve(); });
    const auto reads = clipboard_.onRead([this, pid, ready]() mutable {
        if (clipboard_.wasAskedBy(pid)) ready.resolve();
    });
    co_await future;
}

Task<void> TextInsertion::watchArrival(Paste& paste, std::stop_token stop) {
    const bool learns = paste.request.learnCorrections;
    const auto deadline = environment_.scheduler.now() + verificationWindow;
    // A transcript that is pasted stays on the clipboard for the whole window, even after it has
    // arrived; one that is committed is on its way when there is nothing to see.
    const auto isCertain = [&] {
        return paste.isCommitted() && (paste.verified || !learns || !paste.fieldBefore);
    };
    while (environment_.scheduler.now() < deadline && !isCertain()) {
        auto pause = sleepFor(environment_.scheduler, pollInterval, stop);
        co_await pause;
        if (!learns || paste.verified) continue;
        auto reading = correctionField(paste.target, true, stop);
        const auto after = co_await reading;
        if (!after) continue;
        paste.lengthAfter = text::utf16Length(*after);
        paste.isUnchanged = after == paste.fieldBefore;
        paste.outcome = "paste.valueMismatch";
        if (auto context = CorrectionContext::verified(paste.fieldBefore, paste.target.selection,
                                                       paste.text, *after))
            reportArrival(paste, std::move(*context));
    }
    if (!paste.verified && learns) {
        const auto expectedLength =
            paste.expected ? text::utf16Length(paste.expected->expectedField()) : -1;
        paste.report(paste.outcome,
                     {{"afterLength", paste.lengthAfter}, {"expectedLength", expectedLength}});
    }
}

void TextInsertion::reportArrival(Paste& paste, CorrectionContext context) {
    const bool asExpected =
        paste.expected && text::equal(paste.expected->expectedField(), context.expectedField());
    paste.report(asExpected ? "paste.verified" : "paste.verifiedWholeField");
    paste.verified = std::move(context);
    if (paste.request.onVerifiedPaste) paste.request.onVerifiedPaste(*paste.verified);
}

}  // namespace quorvi
