#include "Quorvi/dictation/PasteLearning.h"

#include <utility>

#include "Quorvi/insertion/FieldInspector.h"

namespace quorvi {
namespace {

// Some applications report a change a moment after they show it. Nobody corrects a word so soon.
constexpr Duration lateReports = std::chrono::milliseconds(200);

}  // namespace

PasteLearning::PasteLearning(Scheduler& scheduler, Executor& queries, Accessibility& accessibility,
                             const Workspace& workspace, CorrectionStore& store,
                             GlobalHotkey& hotkey)
    : scheduler_(scheduler),
      store_(store),
      hotkey_(hotkey),
      observer_(
          scheduler, queries,
          [inspector = FieldInspector(scheduler, accessibility, workspace)](const auto& target,
                                                                            bool focused) {
              return inspector.correctionField(target, focused);
          },
          [&workspace](pid_t pid) {
              const auto frontmost = workspace.frontmostApplication();
              return frontmost && frontmost->pid == pid;
          }) {}

TextInsertion::Request PasteLearning::request(const InsertionTarget& target,
                                              std::vector<TextCorrection> appliedRules,
                                              std::function<bool()> isCurrent) {
    TextInsertion::Request request;
    request.learnCorrections = store_.learnsAutomatically();
    request.currentInputGeneration = [this] { return hotkey_.inputGeneration(); };
    request.onVerifiedPaste = [this, target, rules = std::move(appliedRules),
                               isCurrent = std::move(isCurrent)](const CorrectionContext& context) {
        if (!isCurrent()) return;
        observer_.start(context, target, store_, rules, true, inputAfterPaste(target));
    };
    request.onLearningEvent = [this, app = target.appName](const std::string& code,
                                                           const TextInsertion::Counts& counts) {
        store_.recordLearningEvent(code, app, counts);
    };
    return request;
}

// The input as long as somebody holds the returned function, with what is typed into the field. The
// paste itself is over, and does not count.
std::function<std::uint64_t()> PasteLearning::inputAfterPaste(const InsertionTarget& target) {
    struct Watch {
        Timer begin;
        Subscription typing;
    };
    const auto watch = std::make_shared<Watch>();
    watch->begin = scheduler_.after(lateReports, [this, target, &typing = watch->typing] {
        if (target.element) typing = hotkey_.countTyping(*target.element);
    });
    return [this, watch] { return hotkey_.inputGeneration(); };
}

}  // namespace quorvi
