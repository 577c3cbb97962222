#include "Quorvi/dictation/PasteLearning.h"

#include <utility>

#include "Quorvi/insertion/FieldInspector.h"

namespace quorvi {

PasteLearning::PasteLearning(Scheduler& scheduler, Executor& queries, Accessibility& accessibility,
                             const Workspace& workspace, CorrectionStore& store,
                             const GlobalHotkey& hotkey)
    : store_(store),
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
        observer_.start(context, target, store_, rules, true,
                        [this] { return hotkey_.inputGeneration(); });
    };
    request.onLearningEvent = [this, app = target.appName](const std::string& code,
                                                           const TextInsertion::Counts& counts) {
        store_.recordLearningEvent(code, app, counts);
    };
    return request;
}

}  // namespace quorvi
