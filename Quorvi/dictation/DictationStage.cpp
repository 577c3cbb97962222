#include "Quorvi/dictation/DictationStage.h"

namespace quorvi {

Message title(DictationStage stage) {
    switch (stage) {
        case DictationStage::idle:
            return say::stageIdle();
        case DictationStage::recording:
            return say::stageRecording();
        case DictationStage::transcribing:
            return say::stageTranscribing();
        case DictationStage::inserting:
            return say::stageInserting();
        case DictationStage::success:
            return say::stageDone();
        case DictationStage::clipboard:
            return say::stageReadyToPaste();
        case DictationStage::failure:
            return say::stageFailed();
        case DictationStage::learned:
            return say::stageLearned();
    }
    return {};
}

}  // namespace quorvi
